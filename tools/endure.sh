#!/usr/bin/env bash
# Runs the long form of what ./test runs a short form of; see docs/reliability.md. Takes hours.
#
# usage: tools/endure.sh                 all of it
#        tools/endure.sh PART...         of: storm matrix stamps windows chain folder churn kills fuzz
. "$(dirname "$0")/common.sh"
. "$top/tools/install.sh"
. "$top/tools/wine.sh"

room=$build/endure
logs=$room/logs
programs=$room/programs
all_parts=(storm matrix stamps windows chain folder churn kills fuzz)
parts=("$@")
((${#parts[@]})) || parts=("${all_parts[@]}")
failed=0

# report PART SECONDS CODE LOG: a run without a test is no run.
report() {
    if (($3 == 0)) && grep -q '^\[  PASSED  \] [1-9]' "$4"; then
        note "$1: passed in $2 s"
    else
        tail -n 40 "$4" >&2
        note "$1: FAILED with code $3 after $2 s (all of its output: $4)"
        failed=1
    fi
}

# native PART FILTER [VARIABLE=VALUE...]: tests without windows, under the sanitizers.
native() {
    local part=$1 filter=$2 log=$logs/$1.log started=$SECONDS code
    shift 2
    step "$part"
    env "$@" "$programs/host/core_tests" "--gtest_filter=$filter" </dev/null >"$log" 2>&1
    code=$?
    report "$part" $((SECONDS - started)) "$code" "$log"
}

# windows PART SUITE FILTER [VARIABLE=VALUE...]: tests as Windows programs.
windows() {
    local part=$1 suite=$2 filter=$3 log=$logs/$1.log started=$SECONDS code setting
    shift 3
    step "$part"
    (
        for setting in "$@"; do export "${setting?}"; done
        run_wine 7200 "$log" "$programs/windows/tests/$suite.exe" "--gtest_filter=$filter" \
            "--gtest_output=xml:$(windows_path "$logs/$part.xml")"
    )
    code=$?
    # The figures that a test tells about itself.
    grep -oE '"[a-z_0-9]+" value="[0-9]+"' "$logs/$part.xml" 2>/dev/null |
        sed 's/"\([^"]*\)" value="\([0-9]*\)"/   \1: \2/'
    report "$part" $((SECONDS - started)) "$code" "$log"
}

# A folder with 100,000 files, made outside of Wine: there each new name costs a look at all others.
make_big_folder() {
    [ -e "$room/big-folder-is-complete" ] && return
    mkdir -p "$room/big"
    (cd "$room/big" && seq -f 'file %06g.txt' 100000 | tr '\n' '\0' | xargs -0 touch) ||
        die "the folder of 100,000 files could not be made"
    : >"$room/big-folder-is-complete"
}

# What runs for hours is a copy, so that a build in the meantime does not change it. The build's lock
# keeps one from changing it while it is copied.
copy_programs() {
    rm -rf "$programs"
    mkdir -p "$programs/host" "$programs/windows/tests"
    (
        flock 9
        cp "$build/host/tests/core_tests" "$programs/host" &&
            cp "$build/windows/tidemark.exe" "$programs/windows" &&
            cp "$build"/windows/tests/*.exe "$programs/windows/tests"
    ) 9>"$build/build.lock" || die "the programs cannot be copied to $programs"
}

run_part() {
    case $1 in
    storm) native storm 'ReentrancyStorm.*' TIDEMARK_STORM_SEEDS=100000 ;;
    matrix) native matrix 'FaultMatrixTest.*:ListingFaultsTest.*' TIDEMARK_FAULT_MATRIX=full ;;
    stamps)
        native stamps 'EnduranceTest.*' TIDEMARK_STAMPS=10000
        windows stamps-on-windows endtoend_tests 'Endurance.*' TIDEMARK_STAMPS=10000
        ;;
    windows) windows stamps-from-the-window gui_tests 'MainWindowEndurance.*' TIDEMARK_STAMPS=10000 ;;
    chain) windows chain endtoend_tests 'HardTrees.ALongChain*' TIDEMARK_CHAIN=1000 ;;
    folder)
        make_big_folder
        windows folder endtoend_tests 'HardTrees.AFolder*' TIDEMARK_BIG_FOLDER_FILES=100000 \
            "TIDEMARK_BIG_FOLDER=$(windows_path "$room/big")"
        ;;
    churn) windows churn endtoend_tests 'ChurnedTree.*' TIDEMARK_CHURN_SECONDS=120 ;;
    kills) windows kills endtoend_tests 'KilledEndToEnd.*' TIDEMARK_KILLS=100 ;;
    fuzz)
        step "fuzz"
        "$top/tools/fuzz.sh" || failed=1
        ;;
    esac
}

for part in "${parts[@]}"; do
    printf '%s\n' "${all_parts[@]}" | grep -qxF -- "$part" ||
        die "no part $part; there are: ${all_parts[*]}"
done
packages=("${packages_to_test[@]}")
[[ " ${parts[*]} " != *" fuzz "* ]] || packages+=("${packages_to_fuzz[@]}")
install_packages "${packages[@]}"

take_room "$room"
mkdir -p "$logs"
rm -f "$logs"/*
(build_preset host core_tests) || die "the native tests do not build"
(build_preset windows tidemark endtoend_tests gui_tests) || die "the Windows tests do not build"
copy_programs
trap end_wine EXIT
trap 'exit 130' INT TERM HUP
unset DISPLAY WAYLAND_DISPLAY
use_prefix "$room"
start_display
start_wine
for part in "${parts[@]}"; do
    run_part "$part"
done
exit "$failed"
