#!/usr/bin/env bash
# Builds the fuzzers and runs each on RUNS inputs (ten million unless said); see docs/fuzzing.md.
#   tools/fuzz.sh [RUNS [FUZZER...]]
set -euo pipefail
cd "$(dirname "$0")/.."
runs=${1:-10000000}
shift $(($# > 0 ? 1 : 0))
fuzzers=("$@")
[ ${#fuzzers[@]} -gt 0 ] || fuzzers=(
    command_line_fuzzer file_dialog_fuzzer drop_files_fuzzer shell_item_ids_fuzzer
    truth_value_fuzzer placement_fuzzer options_fuzzer leading_number_fuzzer)

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target "${fuzzers[@]}"
for fuzzer in "${fuzzers[@]}"; do
    # What is found goes to the build tree; the seeds stay small and are only read.
    found=build/fuzz/corpus/$fuzzer
    log=build/fuzz/$fuzzer.log
    started=$SECONDS
    mkdir -p "$found"
    if ! build/fuzz/tests/fuzz/"$fuzzer" -runs="$runs" -max_len=64 -timeout=10 -print_final_stats=1 \
        -dict=tests/fuzz/stored_text.dict -artifact_prefix=build/fuzz/ \
        "$found" tests/fuzz/seeds >"$log" 2>&1; then
        tail -n 40 "$log"
        echo "$fuzzer: FAILED, see $log"
        exit 1
    fi
    echo "$fuzzer: $(grep -oE '^Done [0-9]+ runs' "$log") in $((SECONDS - started)) s"
done
