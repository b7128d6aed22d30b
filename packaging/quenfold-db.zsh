#compdef quenfold-db
# Zsh completion for quenfold-db.

_quenfold_db_folder() {
  compset -P '(legacy|packed):'
  _directories
}

# Those that the command can be refused for.
_quenfold_db_legacy_kinds() {
  _values -s , kind reading-stops port-added port-lost port-repeated label-lost matrix-changed \
    serial-shared list-unreadable port-unknown port-ambiguous port-changed id-repeated \
    category-lost field-lost
}
_quenfold_db_packed_kinds() {
  _values -s , kind file-missing fingerprint-differs name-missing name-unused category-unused \
    id-repeated port-undefined device-unknown label-unused range-empty
}

_quenfold_db_commands() {
  local -a commands=(
    'check:tell what packing would lose, or whether a packed database is whole'
    'pack:pack a legacy database'
    'unpack:unpack a packed database'
    'diff:tell what differs between two databases'
    'show:tell what is in a database'
  )
  _describe command commands
}

_quenfold_db() {
  local curcontext=$curcontext state line kinds=_quenfold_db_legacy_kinds
  local -A opt_args
  local -a every report convert
  _arguments -C : \
    '(- *)'{-h,--help}'[print help]' \
    '(- *)--version[print the version]' \
    '1:command:_quenfold_db_commands' \
    '*::argument:->command' && return
  [[ $words[1] != unpack ]] || kinds=_quenfold_db_packed_kinds
  every=('(- *)'{-h,--help}'[print help]' '(-q --quiet)'{-q,--quiet}'[print no results]')
  report=($every '--json[print JSON]')
  convert=(
    $every
    '*--accept=[convert in spite of findings]:kinds:'$kinds
    '--dry-run[show what would be done]'
    '--remove-stale[take away files that the source does not have]'
    '(-v --verbose)'{-v,--verbose}'[report the stages]'
    '1:source:_quenfold_db_folder'
    '2:target:_quenfold_db_folder'
  )
  case $words[1] in
    check)
      _arguments -s : $report '--all[show every place]' '--strict[count notes]' \
        '1:database:_quenfold_db_folder'
      ;;
    pack | unpack) _arguments -s : $convert ;;
    diff)
      _arguments -s : $report '--all[show every place]' '1:database:_quenfold_db_folder' \
        '2:database:_quenfold_db_folder'
      ;;
    show) _arguments -s : $report '1:database:_quenfold_db_folder' ;;
  esac
}

_quenfold_db "$@"
