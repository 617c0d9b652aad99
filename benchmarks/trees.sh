# shellcheck shell=bash
# Sourced by ./bench: the folders that the benchmarks work on.

# make_tree FOLDER OUTER INNER FILES: OUTER folders with INNER folders each, and FILES files in each
# of these. With 0 outer folders, all files are in the one folder. A tree that stands is kept.
make_tree() {
    local tree=$1 outer=$2 inner=$3 files=$4 names
    [ ! -e "$tree.is-complete" ] || return 0
    rm -rf "$tree"
    mkdir -p "$tree" || die "cannot write to $tree"
    if ((outer == 0)); then
        (cd "$tree" && seq -f 'file-%07.0f.txt' "$files" | xargs touch) || die "no tree in $tree"
    else
        names=$(seq -f '%%s/file-%03.0f.txt' "$files" | tr '\n' ' ')
        (
            cd "$tree" || exit 1
            folders=$(for ((o = 1; o <= outer; ++o)); do
                seq -f "outer-$(printf %03d "$o")/inner-%03.0f" "$inner"
            done)
            xargs mkdir -p <<<"$folders"
            awk -v names="$names" '
                BEGIN { count = split(names, name, " ") }
                { for (i = 1; i <= count; ++i) print $0 substr(name[i], 3) }' <<<"$folders" |
                xargs touch
        ) || die "no tree in $tree"
    fi
    : >"$tree.is-complete"
}
