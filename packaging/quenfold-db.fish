# Fish completion for quenfold-db.

function __quenfold_db_folders
    set -l mark (commandline -ct | string match -r '^(?:legacy|packed):')
    set -l folder (commandline -ct | string unescape | string replace -r '^(legacy|packed):' '')
    printf '%s\n' $mark(__fish_complete_directories "$folder" '')
    # Without a mark there is nothing to put in front.
    test -n "$mark"; or __fish_complete_directories "$folder" ''
end

# __quenfold_db_kinds KIND...: those that the list does not have yet.
function __quenfold_db_kinds
    set -l listed (commandline -ct | string replace -r '^--accept=' '' | string replace -r '[^,]*$' '')
    for kind in $argv
        string match -q "*,$kind,*" ",$listed"; or echo $listed$kind
    end
end

complete -c quenfold-db -f
complete -c quenfold-db -n __fish_use_subcommand -a check -d 'Tell what packing would lose'
complete -c quenfold-db -n __fish_use_subcommand -a pack -d 'Pack a legacy database'
complete -c quenfold-db -n __fish_use_subcommand -a unpack -d 'Unpack a packed database'
complete -c quenfold-db -n __fish_use_subcommand -a diff -d 'Tell what differs between two'
complete -c quenfold-db -n __fish_use_subcommand -a show -d 'Tell what is in a database'
complete -c quenfold-db -n __fish_use_subcommand -l version -d 'Print the version'
complete -c quenfold-db -s h -l help -d 'Print help'
complete -c quenfold-db -n 'not __fish_use_subcommand' -s q -l quiet -d 'Print no results'
complete -c quenfold-db -n 'not __fish_use_subcommand' -a '(__quenfold_db_folders)'

complete -c quenfold-db -n '__fish_seen_subcommand_from check diff show' -l json -d 'Print JSON'
complete -c quenfold-db -n '__fish_seen_subcommand_from check diff' -l all -d 'Show every place'
complete -c quenfold-db -n '__fish_seen_subcommand_from check' -l strict -d 'Count notes'

set -l convert '__fish_seen_subcommand_from pack unpack'
complete -c quenfold-db -n $convert -l dry-run -d 'Show what would be done'
complete -c quenfold-db -n $convert -l remove-stale -d 'Take away what the source does not have'
complete -c quenfold-db -n $convert -s v -l verbose -d 'Report the stages'
# Those that the command can be refused for.
complete -c quenfold-db -n '__fish_seen_subcommand_from pack' -l accept -x \
    -d 'Convert in spite of findings' \
    -a '(__quenfold_db_kinds reading-stops port-added port-lost port-repeated label-lost \
         matrix-changed serial-shared list-unreadable port-unknown port-ambiguous port-changed \
         id-repeated category-lost field-lost)'
complete -c quenfold-db -n '__fish_seen_subcommand_from unpack' -l accept -x \
    -d 'Convert in spite of findings' \
    -a '(__quenfold_db_kinds file-missing fingerprint-differs name-missing name-unused \
         category-unused id-repeated port-undefined device-unknown label-unused range-empty)'
