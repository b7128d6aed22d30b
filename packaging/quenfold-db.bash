# shellcheck shell=bash
# Bash completion for quenfold-db. Needs nothing but bash 4.

_quenfold_db_words() {
  mapfile -t COMPREPLY < <(compgen -W "$*" -- "$current")
}

_quenfold_db_folders() {
  local text=${current//[\"\'\\]/}
  [[ $text != \~/* ]] || text=$HOME${text#\~}
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -d -- "$text")
}

# Those that the command can be refused for and that the list does not have yet.
_quenfold_db_kinds() {
  local listed='' kinds kind
  local -a left=()
  if [[ $1 == pack ]]; then
    kinds='reading-stops port-added port-lost port-repeated label-lost matrix-changed serial-shared
           list-unreadable port-unknown port-ambiguous port-changed id-repeated category-lost
           field-lost'
  else
    kinds='file-missing fingerprint-differs name-missing name-unused category-unused id-repeated
           port-undefined device-unknown label-unused range-empty'
  fi
  [[ $current != *,* ]] || listed=${current%,*},
  for kind in $kinds; do
    [[ ,$listed == *,$kind,* ]] || left+=("$listed$kind")
  done
  compopt -o nospace 2>/dev/null
  _quenfold_db_words "${left[*]}"
}

_quenfold_db_options() {
  case $1 in
    check) _quenfold_db_words --all --help --json --quiet --strict ;;
    pack | unpack) _quenfold_db_words --accept --dry-run --help --quiet --remove-stale --verbose ;;
    diff) _quenfold_db_words --all --help --json --quiet ;;
    show) _quenfold_db_words --help --json --quiet ;;
    *) _quenfold_db_words --help --version ;;
  esac
}

_quenfold_db() {
  local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command=''
  COMPREPLY=()
  # The shell takes words apart at these: --accept=KIND, legacy:FOLDER.
  if [[ $current == [=:] ]]; then
    current=
  elif [[ $before == = ]]; then
    before=${COMP_WORDS[COMP_CWORD-2]}
  fi
  [[ $COMP_CWORD == 1 ]] || command=${COMP_WORDS[1]}
  if [[ $before == --accept ]]; then
    _quenfold_db_kinds "$command"
  elif [[ $current == -* ]]; then
    _quenfold_db_options "$command"
  elif [[ -z $command ]]; then
    _quenfold_db_words check pack unpack diff show
  else
    _quenfold_db_folders
  fi
}

complete -F _quenfold_db quenfold-db
