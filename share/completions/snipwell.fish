# Completion of snipwell for fish: its options up to the compiler, behind it the compiler's own words.

# True when the compiler has not been named yet.
function __snipwell_needs_command
    set -l values -p -o -j --jobs --test --wrong-code --match --accepted-by --repeat --timeout \
        --limit --launch --work --stages --html --json --trace
    set -l words (commandline -opc)
    set -l skip 0
    for word in $words[2..-1]
        if test $skip = 1
            set skip 0
        else if contains -- $word $values
            set skip 1
        else if not string match -q -- '-*' $word
            return 1
        end
    end
    return 0
end

set -l own -n __snipwell_needs_command
complete -c snipwell -n 'not __snipwell_needs_command' -a '(__fish_complete_subcommand)'
complete -c snipwell $own -a '(__fish_complete_command)'
complete -c snipwell $own -s p -r -a '(__fish_complete_directories)' -d 'Folder of compile_commands.json'
complete -c snipwell $own -l test -r -d 'Ends with 0 when a program is interesting'
complete -c snipwell $own -l wrong-code -r -d 'Built with this too, it behaves in another way'
complete -c snipwell $own -l match -x -d 'The line of the output that holds a text'
complete -c snipwell $own -l list -d 'List the lines to choose from, and end'
complete -c snipwell $own -l accepted-by -r -d 'A compiler that has to accept it'
complete -c snipwell $own -l allow-errors -d 'Errors may come to stand before a crash'
complete -c snipwell $own -l repeat -x -d 'A program has to fail so many times'
complete -c snipwell $own -s j -l jobs -x -d 'Compilations at a time'
complete -c snipwell $own -l timeout -x -d 'Stop then, with the best so far'
complete -c snipwell $own -l limit -x -d 'A compilation that takes longer hangs'
complete -c snipwell $own -l launch -r -d 'Put before every compilation'
complete -c snipwell $own -l work -r -a '(__fish_complete_directories)' -d 'Where the tries are made'
complete -c snipwell $own -l stages -x -a 'preprocess plain snip refine options layout' -d 'The stages to run'
complete -c snipwell $own -s o -r -d 'The result'
complete -c snipwell $own -l force -d 'Write over a file that is no earlier result'
complete -c snipwell $own -l resume -d 'Go on from the earlier result'
complete -c snipwell $own -l html -r -d 'The report as a page'
complete -c snipwell $own -l json -r -d 'The report for machines'
complete -c snipwell $own -l trace -r -d 'Each step'
complete -c snipwell $own -s q -l quiet -d 'No status'
complete -c snipwell $own -s v -l verbose -d 'Say more'
complete -c snipwell $own -s h -l help -d 'Tell the options'
complete -c snipwell $own -l version -d 'Tell the version'
