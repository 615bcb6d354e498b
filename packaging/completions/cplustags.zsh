#compdef cplustags

_cplustags() {
    _arguments \
        '(- *)--help[print this help and exit]' \
        '(- *)--version[print the version and exit]' \
        '-f[the tags file to write, - for standard output]:tags file:_files' \
        '-L[read names of sources from this file, - for standard input]:list:_files' \
        '-I[macros to ignore]:names:' \
        '--append=[keep what the tags file has of other sources]:keep:(yes no)' \
        '--c-kinds=[tag prototypes too]:kinds:(+p)' \
        '--excmd=[positions are line numbers]:positions:(number)' \
        '--language-force=[take all sources for this language]:language:(C C++ ObjectiveC)' \
        '--follow-links[write the file that a link at -f points to]' \
        '--totals[say at the end how much was done]' \
        '*:source:_files'
}

_cplustags "$@"
