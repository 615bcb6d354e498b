# Completion of cplustags in bash. It needs nothing of bash-completion, and so works wherever it is sourced.

_cplustags()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} option='' words='' files
    COMPREPLY=()
    # Bash takes "--append=y" for three words: an option, "=" and a value.
    if [[ $current == = ]]; then
        option=$previous current=''
    elif [[ $previous == = ]]; then
        option=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    case $option in
        --append) words='yes no' ;;
        --c-kinds) words=+p ;;
        --excmd) words=number ;;
        --language-force) words='C C++ ObjectiveC' ;;
    esac
    if [[ ! $option && $previous == -I ]]; then
        return 0
    elif [[ ! $option && $current == -* && $previous != -[fL] ]]; then
        words='--help --version -f -L -I --append= --c-kinds= --excmd= --language-force= --follow-links --totals'
    fi
    local IFS=$' \t\n'
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    [[ ${COMPREPLY-} != *= ]] || compopt -o nospace 2>/dev/null
    if [[ ! $words ]]; then
        mapfile -t files < <(compgen -f -- "$current")
        COMPREPLY=("${files[@]}")
        compopt -o filenames 2>/dev/null
    fi
    return 0
}

complete -F _cplustags cplustags
