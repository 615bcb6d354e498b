#compdef wren

_wren_commands() {
    local -a commands=(
        'lookup:print where a symbol is declared and defined'
        'tags:make the tags files in which symbols are looked up'
        'complete:complete the word at a place, or print what it could become'
        'script:run the plug-in without a display, driven by JSON lines'
    )
    _describe -t commands command commands
}

_wren_first() {
    _alternative 'commands:command:_wren_commands' 'files:file:_files'
}

_wren_lookup() {
    _arguments -s \
        '(- *)'{-h,--help}'[print what can be given, and exit]' \
        '(:)--symbol[look up this name instead]:name:' \
        '--in[use the tags that serve this directory]:directory:_directories' \
        '(--definition)--declaration[declarations only]' \
        '(--declaration)--definition[definitions only]' \
        "--system-tags[use this file as the system's tags]:file:_files" \
        '--home[the home directory]:directory:_directories' \
        "--bundle[the plug-in's bundle]:directory:_directories" \
        ':FILE\:LINE[\:COLUMN]:_files'
}

_wren_tags() {
    _arguments -s \
        '(- *)'{-h,--help}'[print what can be given, and exit]' \
        "--system[make the tags of the system's headers]" \
        '--jobs[parse that many files at a time]:number (1 to 1024):' \
        '--dry-run[print the command lines, and change nothing]' \
        '--verbose[say what is run]' \
        '--settings[the file of stored settings]:file:_files' \
        '--home[the home directory]:directory:_directories' \
        "--bundle[the plug-in's bundle]:directory:_directories" \
        ':directory:_directories'
}

_wren_complete() {
    _arguments -s \
        '(- *)'{-h,--help}'[print what can be given, and exit]' \
        '(--edit)--auto[ask as it is done while typing]' \
        '(--auto)--edit[print the whole completed line]' \
        "--system-tags[use this file as the system's tags]:file:_files" \
        '--home[the home directory]:directory:_directories' \
        "--bundle[the plug-in's bundle]:directory:_directories" \
        ':FILE\:LINE[\:COLUMN]:_files'
}

_wren_script() {
    _arguments -s \
        '(- *)'{-h,--help}'[print what can be given, and exit]' \
        "--bundle[the plug-in's bundle]:directory:_directories" \
        '--home[the home directory]:directory:_directories' \
        '--settings[the file of stored settings]:file:_files' \
        "--guarded[run the plug-in's command lines as the editor does]"
}

_wren_editor() {
    _arguments -s \
        '(- *)'{-h,--help}'[print what can be given, and exit]' \
        '(- *)--version[print the version and exit]' \
        '1:: :_wren_first' \
        '*:file:_files'
}

_wren() {
    case $words[2] in
        lookup|tags|complete|script)
            (( CURRENT > 2 )) || { _wren_editor; return }
            local command=$words[2]
            shift words
            (( CURRENT-- ))
            _wren_$command ;;
        *) _wren_editor ;;
    esac
}

_wren "$@"
