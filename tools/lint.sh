#!/usr/bin/env bash
# Checks of the source as it stands. CTest knows each as a test of preset `host`. They read the
# compile commands of the presets, so all three have to be configured and `windows` built.
#
# usage: tools/lint.sh [CHECK...]     (all checks when none is named)
#        tools/lint.sh list           names them
. "$(dirname "$0")/common.sh"
cd "$top" || exit 1

mapfile -t sources < <(find src tests benchmarks -name '*.cpp' -o -name '*.h' | sort)
scripts=(run test package bench .ci/run tools/*.sh benchmarks/*.sh)
work=$build/lint
mkdir -p "$work"

# listed PATTERN: the sources whose paths match.
listed() { printf '%s\n' "${sources[@]}" | grep -E "$1"; }

# Each check prints what it finds; printing nothing is passing.

check_format() { printf '%s\n' "${sources[@]}" | xargs clang-format --dry-run -Werror 2>&1; }

# Includes point down only. One line for each folder of src/: what it may include besides itself.
layer_table='
app         mainwindow errors controls ui settings engine lists platform platform/win32
mainwindow  errors controls ui settings engine lists platform platform/win32
errors      controls ui settings engine lists platform platform/win32
controls    ui settings engine lists platform platform/win32
ui          settings engine lists platform platform/win32
engine      lists platform
settings    platform
lists       platform
platform/win32   platform
platform/memory  platform
platform
'
check_layers() {
    listed '^src/' | xargs grep -nE '^#include "' /dev/null |
        awk -v table="$layer_table" '
            function layer(path) {
                if (path ~ /^platform\/(win32|memory)\//) return substr(path, 1, 14) ~ /win32/ ? \
                    "platform/win32" : "platform/memory"
                sub(/\/.*/, "", path)
                return path
            }
            BEGIN {
                rows = split(table, lines, "\n")
                for (i = 1; i <= rows; ++i) {
                    words = split(lines[i], word, " ")
                    for (j = 1; j <= words; ++j) allowed[word[1], word[j]] = 1
                }
            }
            {
                split($0, part, ":")
                from = layer(substr(part[1], 5))
                split($0, quoted, "\"")
                to = layer(quoted[2])
                if (quoted[2] !~ /\//) print part[1] ":" part[2] ": name the folder: " quoted[2]
                else if (!((from, to) in allowed))
                    print part[1] ":" part[2] ": " from " must not include " to
            }'
}

# No two headers include each other, by whatever way round.
check_include_cycles() {
    listed '^src/.*\.h$' | xargs grep -oE '^#include "[^"]+' /dev/null |
        sed -E 's|^src/([^:]+):#include "|\1 |' | tsort 2>&1 >/dev/null | sed 's/^tsort: -: //'
}

# The folders that also compile natively stay free of the system's headers.
check_window_free_folders() {
    listed '^(src|tests)/(platform|engine|lists|settings)/' | grep -v /win32/ | xargs grep -nE \
        '^#include <(windows|win[a-z]+|commctrl|commdlg|shl[a-z_]+|shellapi|ole2|objbase|dde)\.h>' \
        /dev/null
}

# What ./test and ./bench ask for, not what some target that nobody builds names.
check_every_source_is_built() {
    local preset source
    for preset in host windows windows32; do
        ninja -C "$build/$preset" -t inputs all || echo "preset $preset cannot be asked"
    done >"$work/inputs"
    ninja -C "$build/windows" -t inputs bench >>"$work/inputs" || echo "no target bench"
    grep 'cannot be asked$' "$work/inputs"
    for source in "${sources[@]}"; do
        [[ $source == *.cpp ]] || continue
        grep -qxF "$top/$source" "$work/inputs" || echo "$source: nothing builds it"
    done
}

check_file_length() { wc -l "${sources[@]}" | awk '$2 != "total" && $1 > 500 { print $2 ": " $1 " lines" }'; }

# A header with a source of its own name is compiled alone by being that source's first include;
# every other one by the header_checks target.
check_headers_stand_alone() {
    local header source name
    for header in "${sources[@]}"; do
        [[ $header == *.h ]] || continue
        grep -q '^#pragma once$' "$header" || echo "$header: no #pragma once"
        source=${header%.h}.cpp
        [ -e "$source" ] || continue
        # Includes start at src/ or tests/, for the benchmarks at the root.
        name=${header#src/}
        name=${name#tests/}
        [ "$(grep -m1 '^#include' "$source")" = "#include \"$name\"" ] ||
            echo "$source: the first include is to be its own header"
    done
    flock "$build/build.lock" \
        cmake --build "$build/windows" --target header_checks -- -k 0 >"$work/headers.log" 2>&1 ||
        grep -E 'error|Error' "$work/headers.log"
}

check_nothing_is_switched_off() {
    grep -nE '\bDISABLED_' "${sources[@]}"
    grep -nE '\bGTEST_SKIP\(\) *;' "${sources[@]}"
    # A suppressed check says which one and, behind it, why; a suppressed warning in a comment above.
    grep -nE 'NOLINT' "${sources[@]}" | grep -vE 'NOLINT[A-Z]*\([^)]+\):? .+'
    grep -nE 'cppcheck-suppress' "${sources[@]}" |
        grep -vE 'cppcheck-suppress[a-z-]* \[?[A-Za-z_, ]+\]? *(;|//) *.+'
    grep -nE '# *shellcheck disable' "${scripts[@]}" | grep -vE 'disable=[A-Z0-9,]+ +# .+'
    awk '/^ *# *pragma (GCC|clang) diagnostic ignored/ && !explained {
            print FILENAME ":" FNR ": no comment above says why"
        }
        !/^ *# *pragma (GCC|clang) diagnostic/ { explained = /^ *\/\// }' "${sources[@]}"
}

check_shell_scripts() { shellcheck -f gcc "${scripts[@]}"; }

# They route; what they route to is elsewhere.
check_window_procedures() {
    awk '
        FILENAME !~ /^src\/.*\.cpp$/ { next }
        /^[^ ]/ && /LRESULT.*\(.*UINT message/ { name = $0; first = FNR }
        /^}/ && name {
            ++found
            if (FNR - first + 1 > 100) print FILENAME ":" first ": " FNR - first + 1 " lines"
            name = ""
        }
        END { if (!found) print "no window procedure is found" }' "${sources[@]}"
}

# Streams would add most of their weight to the program for nothing.
check_no_iostreams() {
    listed '^src/' |
        xargs grep -nE '^#include <(iostream|fstream|sstream|ostream|istream|iomanip)>' /dev/null
}

# Every picture in the resource scripts is loaded by the program, every file in res/ is named by
# what builds or renders it, and every picture of the docs is shown by a page.
check_every_resource_is_used() {
    local name file
    while IFS= read -r name; do
        grep -rqE "L\"$name\"|MAKEINTRESOURCEW\($name\)" src || echo "resource $name: never loaded"
    done < <(awk '$2 == "ICON" || $2 == "BITMAP" { print $1 }' res/*.rc.in)
    while IFS= read -r file; do
        # One name stands for the style sheets of all sizes.
        name=$(basename "$file" | sed -E "s/^icon-[0-9]+\./icon-\$size./")
        grep -rqF -- "$name" cmake packaging res/*.in tools || echo "$file: nothing uses it"
    done < <(find res -type f)
    while IFS= read -r file; do
        grep -qF "images/${file##*/}" README.md docs/*.md || echo "$file: no page shows it"
    done < <(find docs/images -type f)
}

# Colours are the system's, so that high contrast reaches everything; the splash writes on a picture
# of its own. And no window takes the foreground from what the user is at: a form comes to the front
# when the user is in the program anyway.
check_windows_manners() {
    listed '^src/' | xargs grep -nE '\bRGB\(' /dev/null | grep -v '^src/app/frm_splash\.cpp:'
    listed '^src/' | xargs grep -nE '\b(SetForegroundWindow|AllowSetForegroundWindow|SetActiveWindow|BringWindowToTop|SwitchToThisWindow|MB_SETFOREGROUND|MB_SYSTEMMODAL)\b' /dev/null |
        grep -v '^src/ui/form\.cpp:[0-9]*: *::SetForegroundWindow(Handle());$'
}

# Links between the pages of the docs lead to files that are there.
check_links_of_docs() {
    local page link
    for page in *.md docs/*.md; do
        while IFS= read -r link; do
            [ -e "$(dirname "$page")/$link" ] || echo "$page: $link is not there"
        done < <(grep -oE '\]\([^)#]+' "$page" | sed 's/^](//' | grep -v ':')
    done
}

# The program that ships brings no libraries of its own and stays small.
check_shipped_program() {
    local program=$build/windows/tidemark.exe size
    [ -e "$program" ] || { echo "$program is not built"; return; }
    x86_64-w64-mingw32-objdump -p "$program" >"$work/imports" || echo "its imports cannot be read"
    sed -n 's/.*DLL Name: //p' "$work/imports" |
        grep -viE '^(advapi32|comctl32|comdlg32|gdi32|kernel32|msvcrt|ole32|oleaut32|shell32|shlwapi|user32|uuid|uxtheme|version|winmm)\.dll$' |
        sed 's/^/imports /'
    x86_64-w64-mingw32-strip -o "$work/tidemark.exe" "$program" || echo "it cannot be stripped"
    size=$(stat -c %s "$work/tidemark.exe")
    ((size < 1500000)) || echo "$size bytes without symbols"
}

# sources_of PRESET: those of src that it compiles.
sources_of() {
    grep -oE '"file": "[^"]+' "$build/$1/compile_commands.json" | sed 's/.*"//' |
        grep "^$top/src/" | sort -u
}

# What clang needs to compile for Windows as the cross-compiler does: its headers, but for those that
# come with the compiler itself.
windows_arguments() {
    printf -- '--extra-arg=%s\n' --target=x86_64-w64-mingw32
    x86_64-w64-mingw32-g++-posix -x c++ -E -v - 2>&1 </dev/null |
        sed -n '/^#include </,/^End of search/s/^ //p' | xargs realpath |
        grep -vE '/gcc/[^ ]+/include(-fixed)?$' |
        sed 's/^/--extra-arg=-isystem/'
}

# What the work at hand or one of the last commits changed, with the sources that include a changed
# header; everything where there is no history.
changed_lately() {
    local file
    if git rev-parse --git-dir >/dev/null 2>&1; then
        { git log -20 --name-only --format= && git diff --name-only HEAD; } | grep ^src/ | sort -u |
            while read -r file; do
                echo "$file"
                [[ $file != *.h ]] || grep -rlF "\"${file#src/}\"" src --include='*.cpp'
            done | sort -u
    else
        listed '^src/'
    fi | sed "s,^,$top/,"
}

# What changed lately, for all of them take minutes (clang_tidy_of_all).
check_clang_tidy() { tidy < <(changed_lately); }
check_clang_tidy_of_all() { tidy < <(listed '^src/' | sed "s,^,$top/,"); }

# tidy: looks at the sources that standard input lists, those that compile natively as they compile
# there and the others as on Windows. What was found clean is not looked at again until it, a header or
# the list of checks changes.
tidy() {
    local preset source stamp candidates native on_windows pending=()
    mapfile -t candidates
    [ -n "$(sources_of host)" ] || echo "preset host compiles no sources of src"
    [ -n "$(sources_of windows)" ] || echo "preset windows compiles no sources of src"
    mapfile -t native < <(sources_of host | grep -xF -f <(printf '%s\n' "${candidates[@]}"))
    mapfile -t on_windows < <(sources_of windows | grep -xF -f <(printf '%s\n' "${candidates[@]}") |
        grep -vxF -f <(sources_of host))
    mkdir -p "$work/tidy"
    windows_arguments >"$work/tidy.windows"
    : >"$work/tidy.host"
    for source in "${native[@]}" "${on_windows[@]}"; do
        preset=host
        [[ " ${native[*]} " == *" $source "* ]] || preset=windows
        stamp=$work/tidy/$(tr / + <<<"${source#"$top"/}")
        if [ ! -e "$stamp" ] ||
            [ -n "$(find src .clang-tidy "$source" \( -name '*.h' -o -name .clang-tidy -o \
                -path "$source" \) -newer "$stamp" -print -quit)" ]; then
            pending+=("$preset" "$source" "$stamp")
        fi
    done
    ((${#pending[@]})) || return 0
    # shellcheck disable=SC2016 # the inner shell expands its own arguments
    printf '%s\n' "${pending[@]}" | xargs -P "$(nproc)" -n 3 bash -c '
        touch "$5.new"
        mapfile -t arguments <"$2.$3"
        if clang-tidy -p "$1/$3" --quiet "${arguments[@]}" "$4" >"$5.log" 2>&1; then
            mv "$5.new" "$5"
        else
            rm -f "$5.new" "$5"
            grep -vE "warnings? (generated|treated)" "$5.log"
            echo "$4: not clean"
        fi' tidy "$build" "$work/tidy"
}

# It needs none of the system's headers.
check_cppcheck() {
    listed '^src/.*\.cpp$' |
        xargs cppcheck --quiet --std=c++20 --language=c++ --inline-suppr -j "$(nproc)" -I src \
            --enable=warning,performance 2>&1
}

# Whatever way a test ends, ./test counts it right and tells why.
check_results_are_counted_right() {
    local folder=$work/results
    rm -rf "$folder"
    mkdir -p "$folder"
    cat >"$folder/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.25)
project(results NONE)
enable_testing()
add_test(NAME passes COMMAND true)
add_test(NAME skips COMMAND printf "a.cpp:3: Skipped\nnot here\n\n[  SKIPPED ] skips (0 ms)\n")
set_tests_properties(skips PROPERTIES SKIP_REGULAR_EXPRESSION SKIPPED)
add_test(NAME fails COMMAND sh -c "echo why; exit 1")
add_test(NAME hangs COMMAND sleep 60)
set_tests_properties(hangs PROPERTIES TIMEOUT 1)
add_test(NAME crashes COMMAND sh -c "kill -SEGV $$")
add_test(NAME is_missing COMMAND "${CMAKE_BINARY_DIR}/nothing")
END
    (cd "$folder" && cmake . && ctest --output-junit ctest.xml) >"$folder/log" 2>&1
    cat >"$folder/googletest.xml" <<'END'
<testsuites><testsuite>
<testcase name="Passes" status="run" result="completed" classname="Suite"/>
<testcase name="Skips" status="run" result="skipped" classname="Suite">
<skipped message="a.cpp:3&#x0A;not here"/></testcase>
<testcase name="Fails" status="run" result="completed" classname="Suite">
<failure message="a.cpp:4&#x0A;why"/></testcase>
</testsuite></testsuites>
END
    {
        xsltproc tools/results.xsl "$folder/ctest.xml"
        xsltproc tools/results.xsl "$folder/googletest.xml"
    } 2>&1 | sed "/^$/d; s,$folder/nothing,NOTHING," >"$folder/found"
    diff "$folder/found" - <<'END'
   skipped: skips: not here
   FAILED: fails
why
   FAILED: hangs
   FAILED: crashes
   FAILED: is_missing
Unable to find executable
Unable to find executable: NOTHING
1 4 1
   skipped: Suite.Skips: not here
   FAILED: Suite.Fails
a.cpp:4
why
1 1 1
END
}

all_checks=(format layers include_cycles window_free_folders every_source_is_built file_length
    window_procedures headers_stand_alone nothing_is_switched_off no_iostreams
    every_resource_is_used windows_manners links_of_docs shell_scripts results_are_counted_right
    shipped_program clang_tidy cppcheck)
case ${1:-} in
'') run_checks "${all_checks[@]}" ;;
list) printf '%s\n' "${all_checks[@]}" ;;
*) run_checks "$@" ;;
esac
