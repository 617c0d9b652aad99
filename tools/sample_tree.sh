# shellcheck shell=bash
# Sourced by ./run: a tree to try the program on.

# make_sample_tree FOLDER: makes it anew: a few hundred files with names in several scripts, one of
# them read-only, and a folder whose name begins with a dot, all with a time long ago.
make_sample_tree() {
    local tree=$1 folder number
    local folders=(photos 'letters and notes' 日本語 Ελληνικά русский עברית العربية emoji-🌊🕰️ empty)
    rm -rf "$tree"
    for folder in "${folders[@]}"; do
        mkdir -p "$tree/$folder"
        [ "$folder" = empty ] && continue
        for number in $(seq 40); do
            echo "$folder, file $number" >"$tree/$folder/$(printf '%s %02d.txt' "$folder" "$number")"
        done
    done
    mkdir -p "$tree/letters and notes/deep/deeper/deepest" "$tree/.kept-as-it-is"
    echo "far down" >"$tree/letters and notes/deep/deeper/deepest/far down.txt"
    echo "begins with a dot, yet is stamped" >"$tree/.a-file"
    echo "in a folder that is left alone" >"$tree/.kept-as-it-is/never stamped.txt"
    echo "read-only" >"$tree/photos/read-only.txt"
    chmod a-w "$tree/photos/read-only.txt"
    find "$tree" -exec touch -h -d '2001-02-03 04:05:06' {} +
}
