# shellcheck shell=bash
# Sourced by whatever starts Windows programs, ./run, ./test and ./bench among it: a Wine prefix and
# a virtual display that belong to this tree alone.
#
# Everything lives under the folder given to use_prefix, the home folder that Wine links to
# included, so that nothing reaches the user's own prefix, registry, menus or documents. Wine's
# output always goes to files: its services inherit standard output and would keep a pipe open.
# Descriptor 8 is closed for what may outlive its starter: whoever works here holds a lock with it.

# use_prefix FOLDER: sets the environment for FOLDER/wine.
use_prefix() {
    wine_room=$1
    mkdir -p "$wine_room/home" || die "cannot write to $wine_room"
    # An X server with access control is still found from the other home folder.
    [ -z "${DISPLAY:-}" ] || export XAUTHORITY=${XAUTHORITY:-$HOME/.Xauthority}
    unset XDG_CONFIG_HOME XDG_DATA_HOME XDG_CACHE_HOME XDG_CONFIG_DIRS
    export HOME=$wine_room/home WINEPREFIX=$wine_room/wine WINEARCH=win64 WINEDEBUG=-all
    # No downloads for what the program does not use, and no entries in the desktop's menus.
    export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
}

# Makes the prefix when there is none yet, and keeps its server alive until end_wine.
start_wine() {
    if [ -e "$WINEPREFIX" ] && [ ! -O "$WINEPREFIX" ]; then
        die "$WINEPREFIX belongs to another user; remove it or run as that user"
    fi
    if [ ! -e "$wine_room/prefix-is-complete" ]; then
        step "Making a Wine prefix in ${WINEPREFIX#"$top"/}"
        rm -rf "$WINEPREFIX"
        # The server stays for a few seconds after the last program; the wait ends when it has
        # written the registry.
        quietly "$wine_room/wineboot.log" timeout -k 5 180 wine wineboot -u 8>&-
        timeout 60 wineserver -w </dev/null >/dev/null 2>&1
        : >"$wine_room/prefix-is-complete"
    fi
    wineserver -p </dev/null >/dev/null 2>&1 8>&-
}

# Starts a display with a window manager and sets DISPLAY. Without a window manager windows have no
# title bars and every hide of a window would block its program for seconds.
start_display() {
    local number=$wine_room/display ready=$wine_room/window-manager-is-ready
    rm -f "$number" "$ready"
    Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp 3>"$number" \
        </dev/null >"$wine_room/xvfb.log" 2>&1 8>&- &
    xvfb_pid=$!
    wait_until 20 test -s "$number" || die "the virtual display did not start ($wine_room/xvfb.log)"
    DISPLAY=:$(cat "$number")
    export DISPLAY
    unset XAUTHORITY WAYLAND_DISPLAY
    openbox --startup "touch $(printf %q "$ready")" </dev/null >"$wine_room/openbox.log" 2>&1 8>&- &
    openbox_pid=$!
    wait_until 20 test -e "$ready" || die "the window manager did not start ($wine_room/openbox.log)"
}

# wait_until SECONDS COMMAND...: polls until the command succeeds; fails when the time is over.
wait_until() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < deadline)) || return 1
        sleep 0.05
    done
}

# run_wine SECONDS LOG PROGRAM [ARGUMENT...]: a Windows program under a time limit; its exit code,
# or 124 when the time was over.
run_wine() {
    local seconds=$1 log=$2
    shift 2
    timeout -k 5 "$seconds" wine "$@" </dev/null >"$log" 2>&1 8>&-
}

# Ends the prefix's programs and server, and the display, and nothing else: before use_prefix
# WINEPREFIX may be the user's own.
end_wine() {
    [ -n "${wine_room:-}" ] && [ -d "$WINEPREFIX" ] &&
        timeout 30 wineserver -k </dev/null >/dev/null 2>&1
    [ -n "${openbox_pid:-}" ] && kill "$openbox_pid" 2>/dev/null
    [ -n "${xvfb_pid:-}" ] && kill "$xvfb_pid" 2>/dev/null
    return 0
}

# The Windows form of a path of this system.
windows_path() {
    local path
    path=$(realpath -m -s -- "$1")
    printf 'Z:%s' "${path//\//\\}"
}
