#!/usr/bin/env bash
# Takes the pictures in docs/images/ and writes the page that shows them, docs/screenshots.md.
# The results are committed: run this after a change of what the program looks like, look at every
# picture, commit them.
#
# usage: tools/screenshots.sh
#
# The program that ships runs on a virtual display and in a Wine prefix of its own, on folders made
# up for the pictures.
. "$(dirname "$0")/common.sh"
. "$top/tools/install.sh"
. "$top/tools/wine.sh"

room=$build/screenshots
program=$build/windows/tidemark.exe
poser=$build/windows/tests/pose_tidemark.exe
images=$top/docs/images
page=$top/docs/screenshots.md
# Of the main window: left, top, width, height. In the middle, where messages come up.
place=(340 300 600 300)
errors_place=(400 400 720 220)
themes='HKCU\Software\Microsoft\Windows\CurrentVersion\ThemeManager'

# start PATH...: starts the program on paths of the Wine drive, and in it, which is where its window
# to choose files looks first.
start() {
    (cd "$drive" && exec wine "$program" "$@") </dev/null >"$room/program.log" 2>&1 8>&- &
}

# start_afresh PATH...: with the options of a first run, and waits until the window stands.
start_afresh() {
    run_wine 30 "$room/reg.log" reg delete 'HKCU\Software\Tidemark' /f
    start "$@"
    pose ready "${place[@]}"
}

# pose COMMAND [ARGUMENT...]
pose() { run_wine 90 "$room/pose.log" "$poser" "$@" || die "$(cat "$room/pose.log")"; }

look() { import -window root "$1" || die "no picture of the display could be taken"; }
# Two looks that see the same: nothing is half painted.
display_is_still() {
    mv "$room/now.ppm" "$room/before.ppm"
    look "$room/now.ppm"
    cmp -s "$room/now.ppm" "$room/before.ppm"
}

# picture NAME TEXT [moving]: takes what is on the display, without the nothing around it, and adds
# it to the page under the text. What moves is taken as it is at the moment.
picture() {
    local now=$room/now.ppm
    look "$now"
    [ "${3:-}" = moving ] || wait_until 10 display_is_still || die "$1 does not come to rest"
    convert "$now" -bordercolor black -border 1 -alpha set -fill none -draw 'matte 0,0 floodfill' \
        -trim +repage +dither -colors 128 -define png:exclude-chunks=date,time -strip \
        "PNG8:$images/$1.png" || die "the picture $1 could not be written"
    printf '\n%s\n\n![%s](images/%s.png)\n' "$2" "$2" "$1" >>"$page"
    note "$1"
}

chapter() {
    printf '\n## %s\n' "$1" >>"$page"
    step "$1"
}

# set_registry KEY VALUE TYPE DATA
set_registry() {
    run_wine 30 "$room/reg.log" reg add "$1" /v "$2" /t "$3" /d "$4" /f || die "$(cat "$room/reg.log")"
}

# What the desktop looks like is read when the system's services start.
restart_wine() {
    timeout 60 wineserver -k </dev/null >/dev/null 2>&1
    timeout 60 wineserver -w </dev/null >/dev/null 2>&1
    wineserver -p </dev/null >/dev/null 2>&1 8>&-
}

# dense_desktop DPI
dense_desktop() {
    set_registry 'HKCU\Control Panel\Desktop' LogPixels REG_DWORD "$1"
    restart_wine
}

# The system colours of a scheme that is white and bright on black, without a theme over them.
high_contrast_desktop() {
    local colour
    for colour in Window ButtonFace ButtonAlternateFace Menu MenuBar Scrollbar InfoWindow AppWorkSpace; do
        set_registry 'HKCU\Control Panel\Colors' "$colour" REG_SZ '0 0 0'
    done
    for colour in WindowText ButtonText MenuText InfoText TitleText WindowFrame ButtonLight \
        ButtonDkShadow; do
        set_registry 'HKCU\Control Panel\Colors' "$colour" REG_SZ '255 255 255'
    done
    set_registry 'HKCU\Control Panel\Colors' GrayText REG_SZ '63 242 63'
    # Of these two Wine makes the text of a button that is off.
    set_registry 'HKCU\Control Panel\Colors' ButtonShadow REG_SZ '128 128 128'
    set_registry 'HKCU\Control Panel\Colors' ButtonHilight REG_SZ '0 0 0'
    set_registry 'HKCU\Control Panel\Colors' HotTrackingColor REG_SZ '255 255 0'
    set_registry 'HKCU\Control Panel\Colors' Hilight REG_SZ '26 235 255'
    set_registry 'HKCU\Control Panel\Colors' MenuHilight REG_SZ '26 235 255'
    set_registry 'HKCU\Control Panel\Colors' HilightText REG_SZ '0 0 0'
    set_registry 'HKCU\Control Panel\Desktop' LogPixels REG_DWORD 96
    set_registry "$themes" ThemeActive REG_SZ 0
    restart_wine
}

# make_folder NAME FILES EXTENSION: a folder of the Wine drive with files in it.
make_folder() {
    local number
    mkdir -p "$drive/$1"
    for number in $(seq "$2"); do
        : >"$drive/$1/$(printf '%03d' "$number").$3"
    done
}

make_folders() {
    drive=$WINEPREFIX/drive_c
    rm -rf "$drive"/{Photos,Letters,Music,Archive,Endless,Large}
    make_folder 'Photos/Harbour' 62 jpg
    make_folder 'Photos/Storm tides' 28 jpg
    make_folder Letters 26 txt
    make_folder Music 11 mp3
    mkdir -p "$drive/Archive"
    : >"$drive/Archive/tide tables.txt"
    : >"$drive/Archive/logbook.txt"
    # Each link leads back: a count in here goes on and on.
    make_folder Endless 7 txt
    ln -s . "$drive/Endless/again"
    ln -s . "$drive/Endless/and again"
    local number
    for number in $(seq 40); do
        make_folder "Large/Year $((1980 + number))" 250 txt
    done
}
listed=('C:\Photos' 'C:\Letters' 'C:\Music' 'C:\Archive\tide tables.txt' 'C:\Archive\logbook.txt')

install_packages "${packages_to_run[@]}"
take_room "$room"
build_preset windows tidemark pose_tidemark
unset DISPLAY WAYLAND_DISPLAY
use_prefix "$room"
trap end_wine EXIT
trap 'exit 130' INT TERM HUP
start_display
start_wine
make_folders
mkdir -p "$images"
cat >"$page" <<'END'
# Screenshots

The program's windows, its menus and popups as they stand, and the system's own in which files and
folders are chosen, taken from the program itself under Wine by `tools/screenshots.sh`. Fonts, icons
and the shell's entries are Wine's. The layout is in pixels, for the fonts of Windows, which are
narrower: with Wine's, "Last Modified:" reaches from the window's edge to the picker.
END

chapter "Start"
start
pose splash
picture splash "The splash, while the program starts." moving
pose ready "${place[@]}"
picture empty-list "Nothing listed yet: the place to drop files on."
pose close

chapter "Layouts"
start_afresh "${listed[@]}"
pose counted 5
picture controls-on-top "Controls on top."
pose choose v 2
picture controls-on-top-date-created "Controls on top, with Date Created."
pose choose v 1
picture controls-at-the-bottom-date-created "Controls at the bottom, with Date Created."
pose choose v 2
picture controls-at-the-bottom "Controls at the bottom."
pose choose v 0

chapter "Menus"
pose select 1
for menu in file edit view options help; do
    pose menu "${menu:0:1}"
    picture "menu-$menu" "The ${menu^} menu."
    pose close-menu
done
pose popup 1
picture popup-shell "The popup of a selected item: the shell's entries below the program's own."
pose close-menu
pose select 1 3
pose popup 1
picture popup-item "The popup of items from several folders."
pose close-menu
pose select
pose popup -1
picture popup-nothing "The popup with nothing selected."
pose close-menu

chapter "Stamping"
pose stamp
pose box
picture end-of-stamp "The end of a stamp."
pose answer 7 # No
pose status "Stamp Complete"
picture main-window "A stamp is complete."
pose close
start_afresh 'C:\Endless' "${listed[@]}"
pose counting
picture counting "Counting what the items contain." moving
pose close
start_afresh 'C:\Large' "${listed[@]}"
pose counted 6
pose stamp
pose progress 30
picture stamping "Stamping: what remains, and how far it is." moving
pose close

chapter "Other windows"
start_afresh "${listed[@]}"
pose counted 5
wine "$poser" hold 'C:\Archive\logbook.txt' 'C:\Photos\Harbour\017.jpg' \
    'C:\Photos\Harbour\018.jpg' 'C:\Music\004.mp3' </dev/null >"$room/hold.log" 2>&1 8>&- &
wait_until 30 grep -q held "$room/hold.log" || die "$(cat "$room/hold.log")"
pose stamp
pose box
pose answer 6 # Yes
pose errors "${errors_place[@]}"
picture errors "The errors of a stamp; items without errors have left the list."
pose errors-popup 1
picture popup-error "The popup of an error: the shell's entries below the program's own."
pose close-menu
pose close
start_afresh
pose choose h 0
pose about
picture about "About the program."
pose close-about
pose choose f 1
pose box
picture choose-files "The system's window to choose files."
pose answer 2 # Cancel
pose choose f 2
pose box
picture choose-folder "The system's window to choose a folder."
pose answer 2 # Cancel
pose choose o 6
pose box
picture reset-options "The question before all options are reset."
pose answer 7 # No
pose choose o 5
pose box
picture send-to "The shortcut on the Send To menu is made."
pose answer 1 # OK
pose close

chapter "Dense screens and high contrast"
cat >>"$page" <<'END'

Windows draws the whole window larger on a dense screen, as the manifest asks. Wine enlarges only
menus, borders, scroll bars and icons; the pictures show that the layout has room for that. High
contrast is a scheme of system colours without a theme; Wine's window manager draws the title bars.
END
# The next run makes a new prefix, with the usual desktop.
rm -f "$room/prefix-is-complete"
for dpi in 120 144; do
    dense_desktop "$dpi"
    start_afresh "${listed[@]}"
    pose counted 5
    pose choose v 2
    picture "dots-$dpi" "$dpi dots per inch."
    pose close
done
high_contrast_desktop
start_afresh "${listed[@]}"
pose counted 5
pose choose v 2
pose select 1
pose popup 1
picture high-contrast "High contrast: a selected row with its popup."
pose close-menu
pose close
start_afresh
picture high-contrast-empty "High contrast, nothing listed yet."
pose close
note "look at docs/screenshots.md"
