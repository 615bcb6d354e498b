# Completion of cplustags in fish.

complete -c cplustags -l help -d 'Print this help and exit'
complete -c cplustags -l version -d 'Print the version and exit'
complete -c cplustags -s f -rF -d 'The tags file to write, - for standard output'
complete -c cplustags -s L -rF -d 'Read names of sources from this file, - for standard input'
complete -c cplustags -s I -x -d 'Macros to ignore'
complete -c cplustags -l append -xa 'yes no' -d 'Keep what the tags file has of other sources'
complete -c cplustags -l c-kinds -xa '+p' -d 'Tag prototypes too'
complete -c cplustags -l excmd -xa number -d 'Positions are line numbers'
complete -c cplustags -l language-force -xa 'C C++ ObjectiveC' -d 'Take all sources for this language'
complete -c cplustags -l follow-links -d 'Write the file that a link at -f points to'
complete -c cplustags -l totals -d 'Say at the end how much was done'
