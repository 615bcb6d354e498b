#compdef wren

_wren_commands() {
    local -a commands=(
        'definition:print where the name at a place is defined'
        'declaration:print where the name at a place is declared'
        'references:print where the name at a place is used'
        'implementations:print derived classes, or overriding methods'
        'find:print the symbols whose names match a few letters'
        'outline:print the symbols of a source file as a tree'
        'graph:draw what includes, calls or derives from what'
        'explain:print how the name at a place was understood'
        "index:make the index of a project's symbols, or bring it up to date"
        'lookup:print where a symbol is declared and defined'
        'tags:make the tags files in which symbols are looked up'
        'complete:complete the word at a place, or print what it could become'
        'lsp:serve an editor by the Language Server Protocol'
        'script:run the plug-in without a display, driven by JSON lines'
    )
    _describe -t commands command commands
}

_wren_first() {
    _alternative 'commands:command:_wren_commands' 'files:file:_files'
}

_wren_place() {
    _arguments -s \
        '(- *)'{-h,--help}'[print what can be given, and exit]' \
        '--json[print JSON, an object a line]' \
        '--limit[print at most that many]:number:' \
        "--in[use the index of this directory's project]:directory:_directories" \
        '--fresh[wait until all changed files are found]' \
        '--no-system[leave out the headers of the system]' \
        ':FILE\:LINE[\:COLUMN]:_files'
}

_wren_definition() {
    _wren_place
}

_wren_declaration() {
    _wren_place
}

_wren_implementations() {
    _wren_place
}

_wren_references() {
    _arguments -s \
        '(- *)'{-h,--help}'[print what can be given, and exit]' \
        '(:)--symbol[the uses of this name instead]:name:' \
        '--json[print JSON, an object a line]' \
        '--limit[print at most that many]:number:' \
        "--in[use the index of this directory's project]:directory:_directories" \
        '--fresh[wait until all changed files are found]' \
        '--no-system[leave out the headers of the system]' \
        ':FILE\:LINE[\:COLUMN]:_files'
}

_wren_find() {
    _arguments -s \
        '(- *)'{-h,--help}'[print what can be given, and exit]' \
        '--json[print JSON, an object a line]' \
        '--limit[print at most that many]:number:' \
        "--in[use the index of this directory's project]:directory:_directories" \
        '--fresh[wait until all changed files are found]' \
        '--system[also find symbols in the headers of the system]' \
        ':pattern:'
}

_wren_outline() {
    _arguments -s \
        '(- *)'{-h,--help}'[print what can be given, and exit]' \
        '--language[how the text is read]:language:(C C++ Objective-C Objective-C++)' \
        '--json[print JSON, an object a line]' \
        ':file:_files'
}

_wren_graph() {
    _arguments -s \
        '(- *)'{-h,--help}'[print what can be given, and exit]' \
        '--up[in the other direction]' \
        '--depth[the number of steps]:number:' \
        '--limit[at most that many boxes]:number:' \
        '--format[what is printed]:format:(dot svg png)' \
        "--in[use the index of this directory's project]:directory:_directories" \
        '--fresh[wait until all changed files are found]' \
        '--system[also with the headers of the system]' \
        ':what:(includes calls classes)' \
        ':file or name:_files'
}

_wren_explain() {
    _arguments -s \
        '(- *)'{-h,--help}'[print what can be given, and exit]' \
        "--in[use the index of this directory's project]:directory:_directories" \
        '--fresh[wait until all changed files are found]' \
        '--no-system[leave out the headers of the system]' \
        ':FILE\:LINE[\:COLUMN]:_files'
}

_wren_index() {
    _arguments -s \
        '(- *)'{-h,--help}'[print what can be given, and exit]' \
        "--system[the index of the system's headers instead]" \
        '(--watch --remove)--status[only print what the index holds]' \
        '(--status --remove)--watch[keep it up to date until interrupted]' \
        '(--status --watch)--remove[remove its files]' \
        '(--status --remove)--import[first take over the index in this file]:file:_files' \
        '(--status --remove --watch)--export[then write the index to this file]:file:_files' \
        ':directory:_directories'
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
        '--from-index[make them from the index or not at all]' \
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

_wren_lsp() {
    _arguments -s \
        '(- *)'{-h,--help}'[print what can be given, and exit]' \
        '--root[the project, whatever the editor says]:directory:_directories' \
        '*--tags[answer from this tags file, too]:file:_files' \
        '--no-index[answer from open texts and tags files only]' \
        '--log[append the log to this file, not to standard error]:file:_files' \
        '--home[keep indexes in .cache below this directory]:directory:_directories'
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
        '--new-instance[open an editor of its own, even if one is running]' \
        '(- *)--version[print the version and exit]' \
        '--wait[end when the files are closed in the editor]' \
        '1:: :_wren_first' \
        '*:file:_files'
}

_wren() {
    case $words[2] in
        definition|declaration|references|implementations|find|outline|graph|explain|index|lookup|tags|complete|lsp| \
            script)
            (( CURRENT > 2 )) || { _wren_editor; return }
            local command=$words[2]
            shift words
            (( CURRENT-- ))
            _wren_$command ;;
        *) _wren_editor ;;
    esac
}

_wren "$@"
