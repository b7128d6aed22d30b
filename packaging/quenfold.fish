# Fish completion for quenfold.

# Prints the conversion that the words before the cursor ask for, such as matrices-pack, and then the
# source directory; the last of each counts.
function __quenfold_words
    set -l conversion
    set -l packing unpack
    set -l source_dir
    set -l taker
    for word in (commandline -opc)[2..]
        set -l value $word
        if test -z "$taker"
            set -l parts (string match -r -- '^-([puvh]*)([fiods]?)(.*)$' $word)
            or continue
            for letter in (string split '' -- $parts[2])
                switch $letter
                    case p
                        set packing pack
                    case u
                        set packing unpack
                end
            end
            set taker $parts[3]
            set value $parts[4]
            # Its argument is the next word.
            test -n "$taker" -a -z "$value"; and continue
        end
        switch "$taker"
            case f
                set conversion $value
            case s
                set source_dir $value
        end
        set taker
    end
    echo $conversion-$packing
    string replace -r '^~/' "$HOME/" -- "$source_dir"
end

# __quenfold_files BASE PATTERN...: the directories in BASE (the current one if empty), and the files
# whose names match a pattern.
function __quenfold_files
    set -l base (string replace -r '([^/])$' '$1/' -- "$argv[1]")
    set -l folder (commandline -ct | string unescape | string replace -r '[^/]*$' '')
    for path in $base$folder*
        set -l name (string sub -s (math (string length -- "$base") + 1) -- $path)
        if test -d $path
            echo $name/
            continue
        end
        for pattern in $argv[2..]
            string match -q -- $pattern (string replace -r '.*/' '' -- $name); and echo $name
        end
    end
end

function __quenfold_input
    set -l words (__quenfold_words)
    switch $words[1]
        case matrices-pack
            __quenfold_files "$words[2]" matrices.json
        case logicalio-pack
            __quenfold_files '' '*sources.json' '*destinations.json'
        case logicalio-unpack
            printf '%s\n' logicalSources logicalDestinations
    end
end

# Nothing for packing: there the option is of no use, and for matrices it empties the file.
function __quenfold_output
    switch (__quenfold_words)[1]
        case matrices-unpack
            set -l listed (commandline -ct | string replace -r '[^,]*$' '')
            for name in matrices.json availableInputs.json availableOutputs.json portLabels.json \
                userPortLabels.json
                string match -q "*,$name,*" ",$listed"; or echo $listed$name
            end
        case logicalio-unpack
            printf '%s\n' sources.json destinations.json
    end
end

complete -c quenfold -f
complete -c quenfold -s f -x -a 'logicalio matrices' -d 'What to convert'
complete -c quenfold -s p -d 'Pack: read legacy files, write packed ones'
complete -c quenfold -s u -d 'Unpack: read packed files, write legacy ones'
complete -c quenfold -s s -x -a '(__fish_complete_directories)' -d 'Source directory'
complete -c quenfold -s i -x -a '(__quenfold_input)' -d Input
complete -c quenfold -s d -x -a '(__fish_complete_directories)' -d 'Output directory'
complete -c quenfold -s o -x -a '(__quenfold_output)' -d Output
complete -c quenfold -s v -d 'Report stages, times and sizes'
complete -c quenfold -s h -d 'Print a short help'
