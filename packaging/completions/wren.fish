# Completion of wren in fish.

set -l commands definition declaration references implementations find outline graph explain index lookup tags \
    complete lsp script
set -l first "not __fish_seen_subcommand_from $commands"

complete -c wren -n "$first" -a definition -d 'Print where the name at a place is defined'
complete -c wren -n "$first" -a declaration -d 'Print where the name at a place is declared'
complete -c wren -n "$first" -a references -d 'Print where the name at a place is used'
complete -c wren -n "$first" -a implementations -d 'Print derived classes, or overriding methods'
complete -c wren -n "$first" -a find -d 'Print the symbols whose names match a few letters'
complete -c wren -n "$first" -a outline -d 'Print the symbols of a source file as a tree'
complete -c wren -n "$first" -a graph -d 'Draw what includes, calls or derives from what'
complete -c wren -n "$first" -a explain -d 'Print how the name at a place was understood'
complete -c wren -n "$first" -a index -d "Make the index of a project's symbols"
complete -c wren -n "$first" -a lookup -d 'Print where a symbol is declared and defined'
complete -c wren -n "$first" -a tags -d 'Make the tags files in which symbols are looked up'
complete -c wren -n "$first" -a complete -d 'Complete the word at a place'
complete -c wren -n "$first" -a lsp -d 'Serve an editor by the Language Server Protocol'
complete -c wren -n "$first" -a script -d 'Run the plug-in without a display'
complete -c wren -n "$first" -l wait -d 'End when the files are closed in the editor'
complete -c wren -n "$first" -l new-instance -d 'Open an editor of its own, even if one is running'
complete -c wren -n "$first" -l version -d 'Print the version and exit'
complete -c wren -s h -l help -d 'Print what can be given, and exit'

set -l in '__fish_seen_subcommand_from'
complete -c wren -n "$in lookup tags complete script" -l bundle -xa '(__fish_complete_directories)' \
    -d "The plug-in's bundle"
complete -c wren -n "$in lookup tags complete lsp script" -l home -xa '(__fish_complete_directories)' \
    -d 'The home directory'
complete -c wren -n "$in lookup complete" -l system-tags -rF -d "Use this file as the system's tags"
complete -c wren -n "$in script" -l guarded -d "Run the plug-in's command lines as the editor does"
complete -c wren -n "$in tags script" -l settings -rF -d 'The file of stored settings'

set -l places definition declaration references implementations
complete -c wren -n "$in $places find outline" -l json -d 'Print JSON, an object a line'
complete -c wren -n "$in $places find graph" -l limit -x -d 'Print at most that many'
complete -c wren -n "$in $places find explain graph" -l in -xa '(__fish_complete_directories)' \
    -d "Use the index of this directory's project"
complete -c wren -n "$in $places find explain graph" -l fresh -d 'Wait until all changed files are found'
complete -c wren -n "$in $places explain" -l no-system -d 'Leave out the headers of the system'
complete -c wren -n "$in references" -l symbol -x -d 'The uses of this name instead'

complete -c wren -n "$in find" -f
complete -c wren -n "$in find graph" -l system -d 'Also the headers of the system'

complete -c wren -n "$in lsp" -f
complete -c wren -n "$in lsp" -l root -xa '(__fish_complete_directories)' -d 'The project, whatever the editor says'
complete -c wren -n "$in lsp" -l tags -rF -d 'Answer from this tags file, too'
complete -c wren -n "$in lsp" -l no-index -d 'Answer from open texts and tags files only'
complete -c wren -n "$in lsp" -l log -rF -d 'Append the log to this file'

complete -c wren -n "$in outline" -l language -xa 'C C++ Objective-C Objective-C++' -d 'How the text is read'

complete -c wren -n "$in graph; and not $in includes calls classes" -a 'includes calls classes'
complete -c wren -n "$in graph" -l up -d 'In the other direction'
complete -c wren -n "$in graph" -l depth -x -d 'The number of steps'
complete -c wren -n "$in graph" -l format -xa 'dot svg png' -d 'What is printed'

complete -c wren -n "$in index" -f -a '(__fish_complete_directories)'
complete -c wren -n "$in index" -l system -d "The index of the system's headers instead"
complete -c wren -n "$in index" -l status -d 'Only print what the index holds'
complete -c wren -n "$in index" -l watch -d 'Keep it up to date until interrupted'
complete -c wren -n "$in index" -l import -rF -d 'First take over the index in this file'
complete -c wren -n "$in index" -l export -rF -d 'Then write the index to this file'
complete -c wren -n "$in index" -l remove -d 'Remove its files'

complete -c wren -n "$in lookup" -l symbol -x -d 'Look up this name instead'
complete -c wren -n "$in lookup" -l in -xa '(__fish_complete_directories)' -d 'Use the tags that serve this directory'
complete -c wren -n "$in lookup" -l declaration -d 'Declarations only'
complete -c wren -n "$in lookup" -l definition -d 'Definitions only'

complete -c wren -n "$in tags" -f -a '(__fish_complete_directories)'
complete -c wren -n "$in tags" -l system -d "Make the tags of the system's headers"
complete -c wren -n "$in tags" -l jobs -x -d 'Parse that many files at a time'
complete -c wren -n "$in tags" -l dry-run -d 'Print the command lines, and change nothing'
complete -c wren -n "$in tags" -l from-index -d 'Make them from the index or not at all'
complete -c wren -n "$in tags" -l verbose -d 'Say what is run'

complete -c wren -n "$in complete" -l auto -d 'Print the list that typing opens'
complete -c wren -n "$in complete" -l edit -d 'Print the whole completed line'

complete -c wren -n "$in script" -f
