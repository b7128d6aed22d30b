#compdef quenfold
# Zsh completion for quenfold.

# Sets conversion, packing and source_dir as the words before the cursor say; the last of each counts.
_quenfold_read_words() {
  local letter OPTARG
  local -a before=("${(@Q)words[2,CURRENT-1]}")
  integer OPTIND=1
  while ((OPTIND <= $#before)); do
    while getopts :f:i:o:s:d:puvh letter "${(@)before}"; do
      case $letter in
        f) conversion=$OPTARG ;;
        p) packing=pack ;;
        u) packing=unpack ;;
        s) source_dir=${OPTARG/#\~\//$HOME/} ;;
      esac
    done
    # An argument that is no option is passed over.
    ((OPTIND++))
  done
}

_quenfold_input() {
  case $conversion-$packing in
    matrices-pack) _path_files -W "${${source_dir:-.}:a}/" -g 'matrices.json *(-/)' ;;
    logicalio-pack) _path_files -g '*sources.json *destinations.json *(-/)' ;;
    logicalio-unpack) _wanted stems expl 'packed table' compadd logicalSources logicalDestinations ;;
  esac
}

# Nothing for packing: there the option is of no use, and for matrices it empties the file.
_quenfold_output() {
  case $conversion-$packing in
    matrices-unpack)
      _values -s , 'legacy file' matrices.json availableInputs.json availableOutputs.json \
        portLabels.json userPortLabels.json
      ;;
    logicalio-unpack) _wanted tables expl 'legacy file' compadd sources.json destinations.json ;;
  esac
}

_quenfold() {
  local conversion packing=unpack source_dir expl
  _quenfold_read_words
  _arguments -s -S : \
    '*-f+[what to convert]:function:(logicalio matrices)' \
    '*-p[pack: read legacy files, write packed ones]' \
    '*-u[unpack: read packed files, write legacy ones]' \
    '*-s+[source directory]:source directory:_directories' \
    '*-i+[input]:input:_quenfold_input' \
    '*-d+[output directory]:output directory:_directories' \
    '*-o+[output]:output:_quenfold_output' \
    '*-v[report stages, times and sizes]' \
    '*-h[print a short help]' \
    '*:ignored argument: '
}

_quenfold "$@"
