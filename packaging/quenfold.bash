# shellcheck shell=bash
# Bash completion for quenfold. Needs nothing but bash 4.
#
# The functions share the variables of _quenfold: current, the word to complete; taker, the letter of
# the option whose argument that word is (empty if none); and conversion, packing and source_dir, as
# the words before say.

_quenfold_unquoted() {
  local text=${1//[\"\'\\]/}
  [[ $text != \~/* ]] || text=$HOME${text#\~}
  printf '%s' "$text"
}

# Walks the words before the cursor as the program will.
_quenfold_read_words() {
  local i word letters value
  for ((i = 1; i < COMP_CWORD; i++)); do
    word=${COMP_WORDS[i]}
    value=
    if [[ -n $taker ]]; then
      value=$word
    elif [[ $word == -- ]]; then
      taker=none
      return
    elif [[ $word == -* ]]; then
      for ((letters = 1; letters < ${#word}; letters++)); do
        case ${word:letters:1} in
          p) packing=pack ;;
          u) packing=unpack ;;
          [fiods])
            taker=${word:letters:1}
            value=${word:letters+1}
            break
            ;;
        esac
      done
    fi
    [[ -n $value ]] || continue
    case $taker in
      f) conversion=$value ;;
      s) source_dir=$(_quenfold_unquoted "$value") ;;
    esac
    taker=
  done
}

_quenfold_words() {
  mapfile -t COMPREPLY < <(compgen -W "$*" -- "$current")
}

# _quenfold_files BASE PATTERN...: the directories in BASE (the current one if empty), and the files
# whose names match a pattern.
_quenfold_files() {
  local base=${1:+${1%/}/} path name pattern
  shift
  compopt -o filenames 2>/dev/null
  while IFS= read -r path; do
    name=${path#"$base"}
    if [[ -d $path ]]; then
      COMPREPLY+=("$name/")
      compopt -o nospace 2>/dev/null
      continue
    fi
    for pattern in "$@"; do
      # shellcheck disable=SC2053 # a pattern is meant
      if [[ ${name##*/} == $pattern ]]; then
        COMPREPLY+=("$name")
        break
      fi
    done
  done < <(compgen -f -- "$base$(_quenfold_unquoted "$current")")
}

_quenfold_input() {
  case $conversion-$packing in
    matrices-pack) _quenfold_files "$source_dir" matrices.json ;;
    logicalio-pack) _quenfold_files '' '*sources.json' '*destinations.json' ;;
    logicalio-unpack) _quenfold_words logicalSources logicalDestinations ;;
  esac
}

# The names that the list does not have yet.
_quenfold_legacy_matrices() {
  local listed='' name
  local -a left=()
  [[ $current != *,* ]] || listed=${current%,*},
  for name in matrices.json availableInputs.json availableOutputs.json portLabels.json \
    userPortLabels.json; do
    [[ ,$listed == *,$name,* ]] || left+=("$listed$name")
  done
  compopt -o nospace 2>/dev/null
  _quenfold_words "${left[*]}"
}

# Nothing for packing: there the option is of no use, and for matrices it empties the file.
_quenfold_output() {
  case $conversion-$packing in
    matrices-unpack) _quenfold_legacy_matrices ;;
    logicalio-unpack) _quenfold_words sources.json destinations.json ;;
  esac
}

_quenfold() {
  local current=${COMP_WORDS[COMP_CWORD]} taker='' conversion='' packing=unpack source_dir=''
  COMPREPLY=()
  _quenfold_read_words
  case $taker in
    f) _quenfold_words logicalio matrices ;;
    s | d) _quenfold_files '' ;;
    i) _quenfold_input ;;
    o) _quenfold_output ;;
    '') _quenfold_words -f -p -u -s -i -d -o -v -h ;;
  esac
}

complete -F _quenfold quenfold
