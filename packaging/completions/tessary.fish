# Completion of tessary(1) for fish. It never runs the program.

function __tessary_has_no_verb
    test (count (commandline -opc)) -eq 1
end

function __tessary_verb_is # __tessary_verb_is VERB...: the verb is one of these; a tag may be called like one
    set -l words (commandline -opc)
    test (count $words) -ge 2; and contains -- $words[2] $argv
end

complete -c tessary -f
complete -c tessary -s h -l help -d 'Show help'
complete -c tessary -n __tessary_has_no_verb -s v -l version -d 'Show the version'
complete -c tessary -n __tessary_has_no_verb -l background -d 'Start, or leave the one that runs alone'

complete -c tessary -n __tessary_has_no_verb -a toggle -d 'Show or hide the panel'
complete -c tessary -n __tessary_has_no_verb -a settings -d 'Show the settings'
complete -c tessary -n __tessary_has_no_verb -a pause -d 'Stop recording'
complete -c tessary -n __tessary_has_no_verb -a resume -d 'Record again'
complete -c tessary -n __tessary_has_no_verb -a status -d 'Print what the program does at present'
complete -c tessary -n __tessary_has_no_verb -a search -d 'Print the items that match'
complete -c tessary -n __tessary_has_no_verb -a show -d 'Print the content of an item'
complete -c tessary -n __tessary_has_no_verb -a copy -d 'Put an item on the clipboard'
complete -c tessary -n __tessary_has_no_verb -a paste -d 'Paste an item into the window in front'
complete -c tessary -n __tessary_has_no_verb -a import -d 'Store pictures in the library'
complete -c tessary -n __tessary_has_no_verb -a tag -d 'Replace the tags of an item'
complete -c tessary -n __tessary_has_no_verb -a note -d 'Replace the note of an item'
complete -c tessary -n __tessary_has_no_verb -a favorite -d 'Make items favourites'
complete -c tessary -n __tessary_has_no_verb -a unfavorite -d 'Make items no favourites any longer'
complete -c tessary -n __tessary_has_no_verb -a pin -d 'Pin items to the top of lists'
complete -c tessary -n __tessary_has_no_verb -a unpin -d 'Pin items no longer'
complete -c tessary -n __tessary_has_no_verb -a trash -d 'Move items to the trash'
complete -c tessary -n __tessary_has_no_verb -a export -d 'Write the whole library into a folder'
complete -c tessary -n __tessary_has_no_verb -a restore -d 'Add an exported library'
complete -c tessary -n __tessary_has_no_verb -a purge -d 'Remove for good what is in the trash'
complete -c tessary -n __tessary_has_no_verb -a usage -d 'Print how much space the library takes'
complete -c tessary -n __tessary_has_no_verb -a watch -d 'Print the changes of the library'
complete -c tessary -n __tessary_has_no_verb -a recognize -d 'Print the text in a region of the screen or in a picture'

complete -c tessary -n '__tessary_verb_is search' -x -l scope -d 'Which items' \
    -a 'all recentlyUsed today last7Days last30Days favorites landscape portrait largeImages images textItems trash'
complete -c tessary -n '__tessary_verb_is search' -x -l sort -d 'In which order' \
    -a 'relevance newest oldest recentlyUsed fileSize'
complete -c tessary -n '__tessary_verb_is search' -x -l limit -d 'At most so many'
complete -c tessary -n '__tessary_verb_is search' -x -l offset -d 'Leave so many out'
complete -c tessary -n '__tessary_verb_is search show status usage recognize' -l json -d 'Print JSON'
complete -c tessary -n '__tessary_verb_is show' -r -F -l output -d 'Write to a file'
complete -c tessary -n '__tessary_verb_is purge' -l all -d 'All of the trash'
complete -c tessary -n '__tessary_verb_is recognize' -l fast -d 'Read fast rather than accurately'
complete -c tessary -n '__tessary_verb_is import recognize' -F
complete -c tessary -n '__tessary_verb_is export restore' -x -a '(__fish_complete_directories)'
