#!/usr/bin/env bash
# Runs a Windows program, for CTest: in the Wine prefix and on the display that ./test has set up, or
# in its own when nobody has.
#
# usage: tools/run_windows_program.sh PROGRAM [ARGUMENT...]
. "$(dirname "$0")/common.sh"
. "$top/tools/wine.sh"

if [ "${TIDEMARK_WINE_IS_READY:-}" != yes ]; then
    take_room "$build/test"
    unset DISPLAY WAYLAND_DISPLAY
    trap end_wine EXIT
    trap 'exit 130' INT TERM HUP
    use_prefix "$build/test"
    start_display
    start_wine
fi
log=$(mktemp)
wine "$@" </dev/null >"$log" 2>&1 8>&-
code=$?
tr -d '\r' <"$log"
rm -f "$log"
# A test program ends with 0 or 1 by itself.
((code <= 1)) || echo "ended with code $code"
exit "$code"
