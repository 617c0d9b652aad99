# shellcheck shell=bash
# Sourced by ./run, ./test and the other scripts here: where things are, and how progress is told.
set -u
export LC_ALL=C.UTF-8

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$top/build

step() { printf '== %s\n' "$*"; }
note() { printf '   %s\n' "$*"; }
die() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# quietly LOG COMMAND...: runs a command with its output in a log, which is shown when it fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    "$@" >"$log" 2>&1 </dev/null || {
        tail -n 60 "$log" >&2
        die "failed: $* (all of its output: $log)"
    }
}

# build_patiently FOLDER [ARGUMENT...]: builds; goes on where the compiler found the address at which
# it maps a precompiled header taken. That happens at random, once in thousands of sources, and says
# nothing about the source.
build_patiently() {
    local folder=$1 try
    shift
    for try in 1 2 3; do
        cmake --build "$folder" "$@" 2>&1 | tee "$folder/build-$try.log"
        ((PIPESTATUS[0] == 0)) && return
        grep -q 'PCH allocation failure' "$folder/build-$try.log" || return 1
    done
    return 1
}

# build_preset PRESET [TARGET...]: configures the preset once and builds all of it, or the targets.
# Only one build at a time works in a tree.
build_preset() {
    local preset=$1 started=$SECONDS targets=()
    shift
    (($#)) && targets=(--target "$@")
    step "Building preset $preset"
    mkdir -p "$build"
    (
        flock 9
        [ -f "$build/$preset/build.ninja" ] ||
            (cd "$top" && quietly "$build/logs/configure-$preset.log" cmake --preset "$preset") ||
            exit 1
        quietly "$build/logs/build-$preset.log" build_patiently "$build/$preset" "${targets[@]}"
    ) 9>"$build/build.lock" || exit 1
    note "done in $((SECONDS - started)) s"
}

# take_room FOLDER: makes the folder, for one run at a time to work in. Descriptor 8 holds the lock, so
# what is left running in the background does without it.
take_room() {
    { mkdir -p "$1" && exec 8>"$1/lock"; } 2>/dev/null || die "cannot write to $1"
    flock -n 8 || die "another run is at work in $1"
}

# make_packages: the zip and the installer, from the program that preset windows has built. Prints
# what was made.
make_packages() {
    local folder=$build/windows/packages package
    step "Making the packages"
    rm -rf "$folder"
    quietly "$build/logs/package.log" cpack --config "$build/windows/CPackConfig.cmake"
    for package in "$folder"/*.*; do
        note "${package#"$top"/}: $(stat -c %s "$package") bytes"
    done
}

# run_checks CHECK...: runs each function check_CHECK, which prints what it finds; printing nothing is
# passing. Tells which failed, and fails with them.
run_checks() {
    local check found failed=0
    for check in "$@"; do
        declare -F "check_$check" >/dev/null || die "no check $check; there are:" \
            "$(declare -F | sed -n 's/^declare -f check_//p' | tr '\n' ' ')"
    done
    for check in "$@"; do
        found=$("check_$check")
        [ -n "$found" ] || continue
        printf '%s:\n%s\n' "$check" "$found"
        failed=1
    done
    return "$failed"
}
