# Completion of wren in bash. It needs nothing of bash-completion, and so works wherever it is sourced.

_wren_commands='definition declaration references implementations find outline graph explain index lookup tags
    complete lsp script'

_wren_options()
{
    case $1 in
        definition | declaration | implementations) echo -h --help --json --limit --in --fresh --no-system ;;
        references) echo -h --help --symbol --json --limit --in --fresh --no-system ;;
        find) echo -h --help --json --limit --in --fresh --system ;;
        outline) echo -h --help --language --json ;;
        graph) echo -h --help --up --depth --limit --format --in --fresh --system ;;
        explain) echo -h --help --in --fresh --no-system ;;
        index) echo -h --help --system --status --watch --remove --import --export ;;
        lookup) echo -h --help --symbol --in --declaration --definition --system-tags --home --bundle ;;
        tags) echo -h --help --system --jobs --dry-run --from-index --verbose --settings --home --bundle ;;
        complete) echo -h --help --auto --edit --system-tags --home --bundle ;;
        lsp) echo -h --help --root --tags --no-index --log --home ;;
        script) echo -h --help --bundle --home --settings --guarded ;;
        *) echo -h --help --new-instance --version --wait ;;
    esac
}

# The words that the value of an option, or the first word of a command, can be.
_wren_values()
{
    case $1 in
        --format) echo dot svg png ;;
        --language) echo C C++ Objective-C Objective-C++ ;;
        graph) echo includes calls classes ;;
    esac
}

# What the value of an option, or a word that is none, can be: the option of compgen for it, "" for free text.
_wren_kind()
{
    case $1 in
        --in | --home | --bundle | --root | tags | index) echo -d ;;
        --system-tags | --tags | --log | --settings | --import | --export | lookup | complete | definition | declaration | references) echo -f ;;
        implementations | outline | explain | graph | editor) echo -f ;;
    esac
}

_wren()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=editor subject words='' kind
    COMPREPLY=()
    # The line and column behind a file's name are nobody's to guess.
    [[ $current != : && $previous != : ]] || return 0
    if ((COMP_CWORD > 1)) && [[ " ${_wren_commands//[[:space:]]/ } " == *" ${COMP_WORDS[1]} "* ]]; then
        command=${COMP_WORDS[1]}
    fi
    subject=$command
    case $previous in
        --symbol | --jobs | --limit | --depth) return 0 ;;
        --in | --home | --bundle | --root | --tags | --log | --system-tags | --settings | --import | --export) subject=$previous ;;
        --format | --language) subject=$previous ;;
    esac
    if [[ $subject == "$command" && $current == -* ]]; then
        words=$(_wren_options "$command")
    elif ((COMP_CWORD == 1)); then
        words=$_wren_commands
    elif [[ $subject != "$command" ]] || ((COMP_CWORD == 2)); then
        words=$(_wren_values "$subject")
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
