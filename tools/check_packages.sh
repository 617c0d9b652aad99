#!/usr/bin/env bash
# Checks what ./package makes, as a user meets it: the zip, and the installer from a silent
# installation to an uninstallation that leaves nothing. CTest knows each check as a test of preset
# `windows`; `./test packages` runs them in the Wine prefix and on the display that it has started.
#
# usage: tools/check_packages.sh CHECK...    `setup` makes the packages and comes first
#        tools/check_packages.sh list        names the checks
. "$(dirname "$0")/common.sh"
. "$top/tools/wine.sh"

packages=$build/windows/packages
program=$build/windows/tidemark.exe
driver=$build/windows/tests/drive_tidemark.exe
work=$build/test/packages

# Each check goes on from where the one before it has left the prefix, so one named alone may lack
# what those before it make.
all_checks=(zip_holds_the_program programs_tell_version_and_icon installs_silently_for_one_user
    program_started_from_the_start_menu_stamps running_program_is_not_replaced
    uninstall_keeps_the_settings send_to_entry_is_an_option unknown_switches_are_refused
    uninstall_leaves_nothing a_folder_with_other_files_is_left_as_it_is
    removing_one_copy_leaves_the_other program_from_the_zip_stamps)
if [ "${1:-}" = list ]; then
    printf '%s\n' "${all_checks[@]}"
    exit 0
fi
[ "${TIDEMARK_WINE_IS_READY:-}" = yes ] || die "run me with ./test packages"

drive=$WINEPREFIX/drive_c
roaming=$(echo "$drive"/users/*/AppData/Roaming/Microsoft/Windows)
home=${roaming%/AppData/*}
installed="$home/AppData/Local/Programs/tidemark clock"
elsewhere="$drive/another folder"
readme=tidemark-readme.txt
uninstaller=tidemark-uninstall.exe
installed_on_windows="C:\\users\\${home##*/}\\AppData\\Local\\Programs\\tidemark clock"
start_menu="$roaming/Start Menu/Programs/tidemark clock.lnk"
send_to="$roaming/SendTo/Tidemark Clock.lnk"
uninstall_key='HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Uninstall\tidemark clock'
settings_key='HKEY_CURRENT_USER\Software\Tidemark'
app_paths_key='HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\App Paths\tidemark.exe'

there() { [ -e "$1" ] || echo "missing: $1"; }
gone() { [ ! -e "$1" ] || echo "still there: $1"; }
# uninstalled PATH KEY...: the path and the Start menu link are gone, and the keys, which go last.
uninstalled() {
    [ ! -e "$1" ] && [ ! -e "$start_menu" ] || return 1
    local key
    for key in "${@:2}"; do
        ! run_wine 20 "$work/output" reg query "$key" || return 1
    done
}

# expect_exit CODE PROGRAM [ARGUMENT...]
expect_exit() {
    local expected=$1 code
    shift
    run_wine 60 "$work/output" "$@"
    code=$?
    ((code == expected)) || echo "ended with $code, not $expected: $* $(cat "$work/output")"
}
# expect_exit_of_line CODE LINE: the same for a whole command line; the installer's switches that
# name a folder are read to the end of the line, without quotes.
expect_exit_of_line() {
    printf '@%s\r\n' "$2" >"$work/line.cmd"
    expect_exit "$1" cmd /c "$(windows_path "$work/line.cmd")"
}

# registry: what is in the parts of the registry that a program and its installer write to, but for
# what Wine notes for itself and the empty key that holds the list of installed programs.
registry() {
    local part
    for part in 'HKCU\Software' 'HKLM\Software\Microsoft\Windows\CurrentVersion'; do
        run_wine 60 "$work/output" reg export "$part" "$(windows_path "$work/part.reg")" /y ||
            echo "cannot be read: $part"
        # Each value with its key, so that every line can stand alone.
        iconv -f UTF-16 -t UTF-8 "$work/part.reg" | tr -d '\r' | grep -v '^$' |
            awk '/^\[/ { key = $0; print; next } { print key $0 }'
    done | grep -vE '^\[HKEY_CURRENT_USER\\Software\\(Wine\\|[^]"]*\\Uninstall\]$)' | sort
}
# files: what is on drive C, but for the system's folder of a user's programs itself and the folder
# of temporary files: an uninstaller runs from there and is deleted at the system's next start.
files() {
    find "$drive" -path "$home/Temp" -prune -o ! -path "${installed%/*}" -print | sort
}

# uninstall FOLDER [ARGUMENT...]: the uninstaller goes on in a copy of itself when its own process
# has ended.
uninstall() {
    local folder=$1
    shift
    expect_exit 0 "$folder/$uninstaller" /S "$@"
    wait_until 20 uninstalled "$folder" "$uninstall_key" || echo "$folder is still there: $(ls "$folder")"
}

# make_file, then the program started on stamped.txt, then expect_stamp: the file has got a new time.
make_file() {
    : >"$work/stamped.txt"
    touch -d '2001-02-03 04:05:06' "$work/stamped.txt"
    unstamped=$(stat -c %Y "$work/stamped.txt")
}
expect_stamp() {
    expect_exit 0 "$driver" stamp
    [ "$(stat -c %Y "$work/stamped.txt")" != "$unstamped" ] || echo "the file has kept its time"
}

# Each check prints what it finds wrong; printing nothing is passing.

# A run that was broken off may have left something, and other suites start the program too.
check_setup() {
    rm -rf "$work" "$installed" "$elsewhere" "$drive/tools" "$drive"/*' copy' \
        "$start_menu" "$send_to"
    mkdir -p "$work"
    (make_packages >"$work/packages.log" 2>&1) || cat "$work/packages.log"
    clean_registry
    registry >"$work/registry.before"
    files >"$work/files.before"
}

check_zip_holds_the_program() {
    (cd "$work" && cmake -E tar xf "$packages"/*.zip)
    cmp "$program" "$work"/tidemark-clock-*/tidemark.exe 2>&1
    (cd "$work"/tidemark-clock-* && find . -type f | sort) >"$work/in-zip"
    printf './README.txt\n./tidemark.exe\n' | diff - "$work/in-zip"
}

# What the system shows of a program's file. An icon without its smallest or largest picture is one
# that the system draws itself.
check_programs_tell_version_and_icon() {
    local version pictures file resources
    version=$(sed -n 's/^project(tidemark VERSION \([0-9.]*\) .*/\1/p' "$top/CMakeLists.txt")
    version+=.0.$(sed -n 's/^set(TIDEMARK_BUILD_NUMBER \([0-9]*\))/\1/p' "$top/CMakeLists.txt")
    pictures=$(od -A n -t u2 -j 4 -N 2 "$top/res/tidemark.ico")
    for file in "$program" "$packages"/*-setup.exe; do
        resources=$work/${file##*/}.rc
        x86_64-w64-mingw32-windres -J coff -O rc "$file" "$resources" 2>&1 ||
            echo "the resources of ${file##*/} cannot be read"
        grep -qF " FILEVERSION ${version//./, }" "$resources" ||
            echo "${file##*/} is not of version $version: $(grep FILEVERSION "$resources")"
        grep -qF "\"FileVersion\", \"$version\"" "$resources" ||
            echo "${file##*/} does not show version $version"
        grep -A 5 -F 'RT_GROUP_ICON' "$resources" | grep -qF "Has ${pictures// /} elements" ||
            echo "${file##*/} lacks the icon with its ${pictures// /} pictures"
    done
}

check_installs_silently_for_one_user() {
    expect_exit 0 "$packages"/*-setup.exe /S
    cmp "$program" "$installed/tidemark.exe" 2>&1
    there "$installed/$readme"
    there "$installed/$uninstaller"
    there "$start_menu"
    there "$send_to"
    cp "$send_to" "$work/other.lnk"
    registry >"$work/registry.installed"
    comm -13 "$work/registry.before" "$work/registry.installed" >"$work/registry.added"
    grep -qF "[$uninstall_key]\"DisplayVersion\"" "$work/registry.added" ||
        echo "not in the list of installed programs"
    grep -vF "[$uninstall_key]" "$work/registry.added"
}

check_program_started_from_the_start_menu_stamps() {
    make_file
    expect_exit 0 start /unix "$start_menu" "$(windows_path "$work/stamped.txt")"
    expect_stamp
}

check_running_program_is_not_replaced() {
    expect_exit 2 "$packages"/*-setup.exe /S
    expect_exit_of_line 2 "\"$installed_on_windows\\$uninstaller\" /S _?=$installed_on_windows"
    cmp "$program" "$installed/tidemark.exe" 2>&1
    expect_exit 0 "$driver" close
}

check_uninstall_keeps_the_settings() {
    uninstall "$installed"
    gone "$send_to"
    registry >"$work/registry.kept"
    comm -13 "$work/registry.before" "$work/registry.kept" >"$work/registry.added"
    grep -qF "[$settings_key\\Options]\"ControlsOnTop\"" "$work/registry.added" ||
        echo "the settings are gone"
    grep -vF "[$settings_key" "$work/registry.added"
}

check_send_to_entry_is_an_option() {
    expect_exit_of_line 0 "$(windows_path "$packages"/*-setup.exe) /S /SENDTO=no /D=C:\\another folder"
    there "$elsewhere/tidemark.exe"
    gone "$send_to"
    # Neither does the next version bring the entry back, and it goes to the same folder.
    rm "$elsewhere/$readme"
    expect_exit 0 "$packages"/*-setup.exe /S
    there "$elsewhere/$readme"
    gone "$send_to"
}

check_unknown_switches_are_refused() {
    expect_exit 1 "$packages"/*-setup.exe /S /SENDTO=perhaps
    expect_exit_of_line 1 "\"C:\\another folder\\$uninstaller\" /S /SETTINGS=all _?=C:\\another folder"
    there "$elsewhere/tidemark.exe"
}

check_uninstall_leaves_nothing() {
    # What is not the installer's stays, and the folder with it.
    echo mine | tee "$elsewhere/mine.txt" >"$elsewhere/README.txt"
    # Another copy's Send To entry is not this one's to delete.
    cp "$work/other.lnk" "$send_to"
    expect_exit 0 "$elsewhere/$uninstaller" /S /SETTINGS=remove
    wait_until 20 uninstalled "$elsewhere/$uninstaller" "$uninstall_key" "$settings_key" ||
        ls "$elsewhere"
    there "$elsewhere/mine.txt"
    there "$elsewhere/README.txt"
    there "$send_to"
    rm -rf "$elsewhere" "$send_to"
    registry >"$work/registry.after"
    comm -13 "$work/registry.before" "$work/registry.after"
    files >"$work/files.after"
    comm -13 "$work/files.before" "$work/files.after"
}

# The user's own files may have any names, those of an earlier version's and of the zip's among them.
check_a_folder_with_other_files_is_left_as_it_is() {
    local own="$drive/tools/tidemark clock" setup
    setup=$(windows_path "$packages"/*-setup.exe)
    mkdir "$drive/tools"
    echo mine | tee "$drive/tools"/{README.txt,uninstall.exe,tidemark.exe} >"$work/mine"
    files_there() { (cd "$drive/tools" && sha256sum ./*.*); }
    files_there >"$work/tools.before"
    expect_exit_of_line 0 "$setup /S /D=C:\\tools"
    files_there | diff "$work/tools.before" -
    cmp "$program" "$own/tidemark.exe" 2>&1
    # The same again finds its own folder, and does not go below it.
    expect_exit_of_line 0 "$setup /S /D=C:\\tools"
    expect_exit 0 "$packages"/*-setup.exe /S
    gone "$own/tidemark clock"
    uninstall "$own"
    files_there | diff "$work/tools.before" -
    # An own folder that holds something else is the user's, too.
    mkdir "$own"
    echo mine >"$own/mine.txt"
    expect_exit_of_line 0 "$setup /S /D=C:\\tools"
    gone "$own/tidemark.exe"
    uninstall "$own/tidemark clock"
    there "$own/mine.txt"
    rm -rf "$drive/tools"
}

check_removing_one_copy_leaves_the_other() {
    local setup
    setup=$(windows_path "$packages"/*-setup.exe)
    expect_exit_of_line 0 "$setup /S /SENDTO=yes /D=C:\\first copy"
    expect_exit_of_line 0 "$setup /S /SENDTO=yes /D=C:\\second copy"
    run_wine 20 "$work/output" reg add "$app_paths_key" /ve /d 'C:\second copy\tidemark.exe' /f ||
        cat "$work/output"
    registry >"$work/registry.two"
    # Told where it is, the uninstaller ends when all is done, and leaves its own file.
    expect_exit_of_line 0 "\"C:\\first copy\\$uninstaller\" /S _?=C:\\first copy"
    rm -rf "$drive/first copy"
    registry | diff "$work/registry.two" -
    there "$start_menu"
    there "$send_to"
    uninstall "$drive/second copy"
    gone "$send_to"
    clean_registry
}

clean_registry() {
    printf 'Windows Registry Editor Version 5.00\r\n\r\n' >"$work/clean.reg"
    printf '[-%s]\r\n' "$uninstall_key" "$settings_key" "$app_paths_key" >>"$work/clean.reg"
    run_wine 60 "$work/output" regedit /S "$(windows_path "$work/clean.reg")" || cat "$work/output"
}

check_program_from_the_zip_stamps() {
    make_file
    wine "$work"/tidemark-clock-*/tidemark.exe "$(windows_path "$work/stamped.txt")" </dev/null \
        >"$work/program.log" 2>&1 8>&- &
    expect_stamp
    expect_exit 0 "$driver" close
    wait $! || echo "the program ended with $?: $(cat "$work/program.log")"
    clean_registry
}

run_checks "$@"
