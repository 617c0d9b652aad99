#!/usr/bin/env bash
# Builds the fuzzers and runs each on RUNS inputs (ten million unless said); see docs/fuzzing.md.
#
# usage: tools/fuzz.sh [RUNS [FUZZER...]]
. "$(dirname "$0")/common.sh"
. "$top/tools/install.sh"

runs=${1:-10000000}
shift $(($# > 0 ? 1 : 0))
fuzzers=("$@")

# length_for FUZZER: how many bytes an input may have. Lists of names and identifiers have a header
# or two bytes to a letter; of the texts of single values long ones say nothing that short ones do not.
length_for() {
    case $1 in
    drop_files_fuzzer | file_dialog_fuzzer | shell_item_ids_fuzzer) echo 512 ;;
    *) echo 64 ;;
    esac
}

install_packages "${packages_to_fuzz[@]}"
programs=$build/fuzz/tests/fuzz
# One that is not made any more is not run either.
((${#fuzzers[@]})) || rm -f "$programs"/*_fuzzer
(build_preset fuzz "${fuzzers[@]:-fuzzers}") || die "the fuzzers do not build"
if ((${#fuzzers[@]} == 0)); then
    fuzzers=("$programs"/*_fuzzer)
    fuzzers=("${fuzzers[@]##*/}")
fi
for fuzzer in "${fuzzers[@]}"; do
    # What is found goes to the build tree; the seeds stay small and are only read.
    found=$build/fuzz/corpus/$fuzzer
    log=$build/fuzz/$fuzzer.log
    started=$SECONDS
    mkdir -p "$found"
    if ! "$programs/$fuzzer" -runs="$runs" -max_len="$(length_for "$fuzzer")" -timeout=10 \
        -print_final_stats=1 -dict="$top/tests/fuzz/stored_text.dict" -artifact_prefix="$build/fuzz/" \
        "$found" "$top/tests/fuzz/seeds" >"$log" 2>&1; then
        tail -n 40 "$log"
        die "$fuzzer: FAILED, see $log"
    fi
    note "$fuzzer: $(grep -oE '^Done [0-9]+ runs' "$log") in $((SECONDS - started)) s"
done
