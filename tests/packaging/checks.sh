# What an installed tree has to do, wherever it stands. 'installed' is the directory that has bin/ in it.
source "$(dirname "${BASH_SOURCE[0]}")/../tools/sandbox.sh"

# Runs a program of the tree as a user would whose machine has nothing else of ours.
Run() {
    local program=$1
    shift
    output=$(cd "$sandbox" && env -i PATH=/usr/local/bin:/usr/bin:/bin HOME="$sandbox/home" LC_ALL=C.UTF-8 \
        ${ASAN_OPTIONS+"ASAN_OPTIONS=$ASAN_OPTIONS"} ${TSAN_OPTIONS+"TSAN_OPTIONS=$TSAN_OPTIONS"} \
        ${UBSAN_OPTIONS+"UBSAN_OPTIONS=$UBSAN_OPTIONS"} \
        "$installed/bin/$program" "$@" 2>"$sandbox/errors" </dev/null) && status=0 || status=$?
    errors=$(<"$sandbox/errors")
}

CheckLookups() {
    mkdir -p "$sandbox/home" "$sandbox/own" "$sandbox/made"
    echo 'int Twelve(int eleven);' | tee "$sandbox/own/given.h" >"$sandbox/made/given.h"
    printf 'Twelve\tgiven.h\t1;"\tp\n' >"$sandbox/own/tags"

    Run wren lookup --symbol Twelve --in own
    Expect "a lookup in a tags file that is there" "$output" "$sandbox/own/given.h:1: Twelve - given.h"
    Expect "a lookup in a tags file that is there: its status" $status 0

    Run wren tags made
    Expect "tags are made" "$status $errors" "0 "
    Run wren lookup made/given.h:1:5
    Expect "a lookup in the tags made" "$output" "$sandbox/made/given.h:1: Twelve - given.h"

    Run cplustags --version
    ExpectHas "the tags program" "$output" "cplustags "
    Run cplustags -f - own/given.h --c-kinds=+p
    ExpectHas "the tags program makes tags" "$output" "$(printf 'Twelve\t')"

    ln -s "$installed/bin/wren" "$sandbox/called"
    output=$("$sandbox/called" lookup --symbol Twelve --in "$sandbox/own" 2>&1)
    Expect "by a link from elsewhere" "$output" "$sandbox/own/given.h:1: Twelve - given.h"
}

# Nothing of the build tree is used, and nothing is missing.
CheckLibraries() {
    local build=$1 program libraries
    local library=$installed/lib/wren
    local programs=("$installed/bin/wren" "$library/Declaration.bundle/Contents/Linux/Declaration")
    [[ $WREN_DESKTOP != ON ]] || programs+=("$library/wren-desktop")
    for program in "${programs[@]}"; do
        libraries=$(ldd "$program" 2>&1)
        Expect "$program: libraries that are missing" "$(grep 'not found' <<<"$libraries")" ""
    done
    libraries=$(ldd "${programs[@]:0:2}" | sed -n 's/.*libvetch.so => \(.*\) (0x.*/\1/p' | tr '\n' '\0' |
        xargs -0 realpath | sort -u)
    Expect "the framework is the installed one" "$libraries" "$(realpath "$library/libvetch.so")"
    Expect "no run path leads to the build" "$(RunPaths "${programs[@]}" | grep -F "$build")" ""
    CheckRunPaths "${programs[@]}"
}

RunPaths() { readelf --dynamic "$@" | sed -n 's/.*(R.*PATH).*\[\(.*\)\]/\1/p'; }

# An empty one is the current directory, where anybody may have put a library.
CheckRunPaths() {
    ExpectHas "run paths" "$(RunPaths "$@")" "\$ORIGIN"
    Expect "run paths to elsewhere" "$(RunPaths "$@" | tr : '\n' | grep -cv '^\$ORIGIN')" 0
}

CheckPermissions() {
    Expect "what others cannot read" "$(find "$1" -mindepth 1 ! -type l ! -perm -o=r)" ""
    Expect "directories that others cannot enter" "$(find "$1" -mindepth 1 -type d ! -perm -o=x)" ""
    Expect "programs that others cannot run" "$(find "$1" -type f -perm -u=x ! -perm -o=x)" ""
}

CheckDesktop() {
    local entry=$installed/share/applications/wren.desktop size
    if [[ $WREN_DESKTOP != ON ]]; then
        Expect "no entry in menus for an editor that is not there" "$(find "$installed" -name '*.desktop')" ""
        return
    fi
    if command -v desktop-file-validate >/dev/null; then
        Expect "the desktop entry is valid" "$(desktop-file-validate "$entry" 2>&1)" ""
    fi
    Expect "the desktop entry opens files" "$(sed -n 's/^Exec=//p' "$entry")" "wren %F"
    for size in 16 22 24 32 48 64 128 256; do
        ExpectHas "the icon of $size" "$(file "$installed/share/icons/hicolor/${size}x$size/apps/wren.png" 2>&1)" \
            "PNG image data, $size x $size,"
    done
}
