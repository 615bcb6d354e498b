# Completion of wren in bash. It needs nothing of bash-completion, and so works wherever it is sourced.

_wren_options()
{
    case $1 in
        lookup) echo -h --help --symbol --in --declaration --definition --system-tags --home --bundle ;;
        tags) echo -h --help --system --jobs --dry-run --verbose --settings --home --bundle ;;
        complete) echo -h --help --auto --edit --system-tags --home --bundle ;;
        script) echo -h --help --bundle --home --settings --guarded ;;
        *) echo -h --help --version ;;
    esac
}

# What the value of an option, or a word that is none, can be: the option of compgen for it, "" for free text.
_wren_kind()
{
    case $1 in
        --in | --home | --bundle | tags) echo -d ;;
        --system-tags | --settings | lookup | complete | editor) echo -f ;;
    esac
}

_wren()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=editor subject words='' kind
    COMPREPLY=()
    # The line and column behind a file's name are nobody's to guess.
    [[ $current != : && $previous != : ]] || return 0
    if ((COMP_CWORD > 1)) && [[ " lookup tags complete script " == *" ${COMP_WORDS[1]} "* ]]; then
        command=${COMP_WORDS[1]}
    fi
    subject=$command
    case $previous in
        --symbol | --jobs) return 0 ;;
        --in | --home | --bundle | --system-tags | --settings) subject=$previous ;;
    esac
    if [[ $subject == "$command" && $current == -* ]]; then
        words=$(_wren_options "$command")
    elif ((COMP_CWORD == 1)); then
        words='lookup tags complete script'
    fi
    local IFS=$' \t\n'
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    kind=$(_wren_kind "$subject")
    if [[ $kind && ( $subject != "$command" || $current != -* ) ]]; then
        local files
        mapfile -t files < <(compgen "$kind" -- "$current")
        COMPREPLY+=("${files[@]}")
        ((${#files[@]} == 0)) || compopt -o filenames 2>/dev/null
    fi
    return 0
}

complete -F _wren wren
