# For tests of the project's own commands: a directory to try them in, where the programs they call can be stood in for.
#
# Only what is in $sandbox/bin is found. Each stand-in notes its call in $sandbox/calls.

sandbox=$(mktemp -d)
trap 'rm -rf "$sandbox"' EXIT
failures=0
mkdir "$sandbox/bin"

# Lets the command find these programs of the system.
Provide() {
    local program
    for program in "$@"; do
        ln -sf "$(command -v "$program")" "$sandbox/bin/$program"
    done
}

# StandIn PROGRAM [COMMANDS]: what is run instead of a program.
StandIn() {
    rm -f "$sandbox/bin/$1"
    printf '#!/bin/bash\necho "%s $*" >>"%s/calls"\n%s\n' "$1" "$sandbox" "${2-}" >"$sandbox/bin/$1"
    chmod +x "$sandbox/bin/$1"
}

Remove() { rm -f "$sandbox/bin/$1"; }

# Runs a command with nothing but the sandbox's programs; leaves 'output', 'errors', 'status' and 'calls' behind.
Try() {
    : >"$sandbox/calls"
    output=$(PATH=$sandbox/bin "$@" 2>"$sandbox/errors" </dev/null) && status=0 || status=$?
    errors=$(<"$sandbox/errors")
    calls=$(<"$sandbox/calls")
}

# Expect WHY ACTUAL EXPECTED: the same text.
Expect() {
    [[ $2 == "$3" ]] || Failed "$1" "$2" "$3"
}

# ExpectHas WHY ACTUAL PART
ExpectHas() {
    [[ $2 == *"$3"* ]] || Failed "$1" "$2" "...$3..."
}

Failed() {
    failures=$((failures + 1))
    printf 'FAILED: %s\n  found:    %s\n  expected: %s\n' "$1" "${2@Q}" "${3@Q}" >&2
}
