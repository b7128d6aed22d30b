# shellcheck shell=bash
# shellcheck disable=SC2034 # whoever sources this reads the results
# The text of a case, which run-case describes, and the files in it. A character is a byte here.
export LC_ALL=C

# UTF-8 that is seen: no control characters, no byte order mark. T is a byte behind a first one.
kSequences='[\xc3-\xdf]T|\xc2[\xa0-\xbf]|\xe0[\xa0-\xbf]T|[\xe1-\xec\xee]TT|\xed[\x80-\x9f]T'
kSequences+='|\xef([\x80-\xba\xbc-\xbf]T|\xbb[\x80-\xbe])'
kSequences+='|\xf0[\x90-\xbf]TT|[\xf1-\xf3]TTT|\xf4[\x80-\x8f]TT'
printf -v kSeen '%b' "^([\\t -~]|${kSequences//T/[\\x80-\\xbf]})*\$"
# Escaped text, and the mark of a line end that is missing.
kEscaped='^(([^\]|\\\\|\\x[0-9a-f][0-9a-f])*)(\\?)$'

# refuse MESSAGE: ends the program.
refuse() {
  echo "${0##*/}: $1" >&2
  exit 2
}

# read_case FILE: its runs in `runs`, its sections and the shared ones that it names in `kinds`,
# `paths`, `forms` (text, escaped, folder, link, none) and `texts` (a link's is its target).
read_case() {
  local told=
  runs=() kinds=() paths=() forms=() texts=()
  add_sections "$1"
}

add_sections() {
  local lines line section='' has_lines=
  [ -f "$1" ] || refuse "$1: no such file"
  mapfile -t lines <"$1"
  for line in "${lines[@]}"; do
    if [[ $line == '=== '* ]]; then
      section=${line#=== }
      add_section "$1" "$section"
    elif [ -n "$has_lines" ]; then
      texts[-1]+=$line$'\n'
    elif [ -z "$section" ]; then
      [[ -z $line || $line == '#'* ]] || runs+=("$line")
    else
      refuse "$1: \"$section\" has no lines, as \"$line\""
    fi
  done
}

# add_section FILE SECTION: also says whether lines may follow, in `has_lines`.
add_section() {
  local kind=${2%% *}
  local name=${2#"$kind"} form=text text=
  case $kind in
    with | before) [ -z "$told" ] || refuse "$1: \"$2\" stands behind what came out" ;;
    after | gone | stdout | stderr | status) told=1 ;;
    *) refuse "$1: no kind of section: \"$kind\"" ;;
  esac
  has_lines=
  if [ "$kind" = with ]; then
    add_shared "$1" "${name# }"
    return
  fi
  [[ $name != *' (escaped)' ]] || form=escaped
  name=${name% (escaped)}
  name=${name# }
  case "$kind $name" in
    gone\ * | status\ *) form=none ;;
    *' -> '*)
      unescape "${name#* -> }"
      form=link text=$unescaped name=${name%% -> *}
      ;;
    */) form=folder name=${name%/} ;;
    *) has_lines=1 ;;
  esac
  unescape "$name"
  kinds+=("$kind") paths+=("$unescaped") forms+=("$form") texts+=("$text")
}

# add_shared FILE NAME: the starting files that FILE shares with others.
add_shared() {
  local own_runs=${#runs[@]}
  add_sections "${1%/*}/../$2"
  [[ -z $told && ${#runs[@]} = "$own_runs" ]] || refuse "$2: more than starting files"
}

# unescape WORD: gives `unescaped`
unescape() {
  [[ $1 =~ $kEscaped && -z ${BASH_REMATCH[3]} ]] || refuse "no escaped name: \"$1\""
  printf -v unescaped '%b' "$1"
}

# print_text INDEX: the bytes of a section's text
print_text() {
  local text=${texts[$1]%$'\n'}
  if [ "${forms[$1]}" = escaped ]; then
    [[ $text =~ $kEscaped ]] || refuse "no escaped text: \"$text\""
    printf '%b' "${BASH_REMATCH[1]}"
    [ -n "${BASH_REMATCH[3]}" ] || printf '%s' "${texts[$1]:${#text}}"
  elif [[ $text == *\\ ]]; then
    printf '%s' "${text%\\}"
  else
    printf '%s' "${texts[$1]}"
  fi
}

# escape TEXT: gives `escaped`
escape() {
  local index char
  escaped=
  for ((index = 0; index < ${#1}; index++)); do
    char=${1:index:1}
    case $char in
      \\) char=\\\\ ;;
      [$'\t\n '-~]) ;;
      *) printf -v char '\\x%02x' "'$char" ;;
    esac
    escaped+=$char
  done
}

# escape_path PATH: gives `escaped`, without blanks
escape_path() {
  escape "$1"
  escaped=${escaped//' '/\\x20}
  escaped=${escaped//$'\t'/\\x09}
  escaped=${escaped//$'\n'/\\x0a}
}

# is_seen TEXT: whether it can stand in a case as it is
is_seen() {
  local line lines
  [[ $1 != *[[:blank:]] && $1 != *[[:blank:]]$'\n'* ]] || return 1
  [[ $1 != *\\ && $1 != *\\$'\n' && $'\n'$1 != *$'\n=== '* ]] || return 1
  [[ $1 == *[!$'\t\n '-~]* ]] || return 0
  mapfile -t lines <<<"$1"
  for line in "${lines[@]}"; do
    [[ $line =~ $kSeen ]] || return 1
  done
}

# escape_text TEXT...: the texts with a zero byte between each two; gives `escaped`
escape_text() {
  local text='' piece
  for piece in "$@"; do
    escape "$piece"
    text+='\x00'$escaped
  done
  text=$'\n'${text#'\x00'}$'\n'
  text=${text//' '$'\n'/'\x20'$'\n'}
  text=${text//$'\t\n'/'\x09'$'\n'}
  text=${text//$'\n=== '/$'\n''\x3d== '}
  text=${text#$'\n'}
  escaped=${text%$'\n'}
}

# show FILE: what a case says of a file behind its name; gives `shown`
show() {
  local text form='' pieces=()
  while IFS= read -r -d '' text; do # up to a zero byte
    pieces+=("$text")
  done <"$1"
  if [ ${#pieces[@]} -gt 0 ] || ! is_seen "$text"; then
    escape_text "${pieces[@]}" "$text"
    text=$escaped form=' (escaped)'
  fi
  [[ -z $text || $text == *$'\n' ]] || text+=\\$'\n'
  shown=$form$'\n'$text
}
