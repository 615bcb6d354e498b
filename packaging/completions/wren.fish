# Completion of wren in fish.

set -l commands lookup tags complete script
set -l first "not __fish_seen_subcommand_from $commands"

complete -c wren -n "$first" -a lookup -d 'Print where a symbol is declared and defined'
complete -c wren -n "$first" -a tags -d 'Make the tags files in which symbols are looked up'
complete -c wren -n "$first" -a complete -d 'Complete the word at a place'
complete -c wren -n "$first" -a script -d 'Run the plug-in without a display'
complete -c wren -n "$first" -l version -d 'Print the version and exit'
complete -c wren -s h -l help -d 'Print what can be given, and exit'

set -l in '__fish_seen_subcommand_from'
complete -c wren -n "$in $commands" -l bundle -xa '(__fish_complete_directories)' -d "The plug-in's bundle"
complete -c wren -n "$in $commands" -l home -xa '(__fish_complete_directories)' -d 'The home directory'
complete -c wren -n "$in lookup complete" -l system-tags -rF -d "Use this file as the system's tags"
complete -c wren -n "$in script" -l guarded -d "Run the plug-in's command lines as the editor does"
complete -c wren -n "$in tags script" -l settings -rF -d 'The file of stored settings'

complete -c wren -n "$in lookup" -l symbol -x -d 'Look up this name instead'
complete -c wren -n "$in lookup" -l in -xa '(__fish_complete_directories)' -d 'Use the tags that serve this directory'
complete -c wren -n "$in lookup" -l declaration -d 'Declarations only'
complete -c wren -n "$in lookup" -l definition -d 'Definitions only'

complete -c wren -n "$in tags" -f -a '(__fish_complete_directories)'
complete -c wren -n "$in tags" -l system -d "Make the tags of the system's headers"
complete -c wren -n "$in tags" -l jobs -x -d 'Parse that many files at a time'
complete -c wren -n "$in tags" -l dry-run -d 'Print the command lines, and change nothing'
complete -c wren -n "$in tags" -l verbose -d 'Say what is run'

complete -c wren -n "$in complete" -l auto -d 'Print the list that typing opens'
complete -c wren -n "$in complete" -l edit -d 'Print the whole completed line'

complete -c wren -n "$in script" -f
