# Reads figures ("MODE NAME VALUE" a line) and writes docs/benchmarks.md: medians, ratios, and whether
# each target is met. A figure that is missing is said to be.
#
# awk -f benchmarks/report.awk -f benchmarks/tables.awk -v kind=full|quick -v room=FOLDER -v small=N
#     -v large=N -v scaled='N ...' -v popups='N ...' -v machine=TEXT [-v again='NAME ...' -v today=DATE] figures...
#
# FOLDER holds the versions of the peers; small, large, scaled and popups name the trees measured.

{
    key = $1 SUBSEP $2
    values[key, ++count[key]] = $3
}

# The n-th smallest of what is collected under the key.
function median(key,    n, i, j, sorted, value) {
    n = count[key]
    for (i = 1; i <= n; ++i) {
        value = values[key, i]
        for (j = i - 1; j >= 1 && sorted[j] > value; --j) sorted[j + 1] = sorted[j]
        sorted[j + 1] = value
    }
    if (n == 0) return "none"
    return n % 2 ? sorted[(n + 1) / 2] : (sorted[n / 2] + sorted[n / 2 + 1]) / 2
}

function largest(key,    n, i, value) {
    n = count[key]
    if (n == 0) return "none"
    value = values[key, 1]
    for (i = 2; i <= n; ++i) if (values[key, i] > value) value = values[key, i]
    return value
}

# The median of the ratios of turns that followed each other.
function median_ratio(above, below,    i, n) {
    n = count[above] < count[below] ? count[above] : count[below]
    ++scratch
    for (i = 1; i <= n; ++i)
        if (values[below, i] > 0)
            values["ratio" scratch, ++count["ratio" scratch]] = values[above, i] / values[below, i]
    return median("ratio" scratch)
}

function shown(value, format) { return value == "none" ? "not measured" : sprintf(format, value) }

function met(value, limit) {
    if (value == "none") return "not measured"
    if (value <= limit) return "met"
    ++missed
    return "**not met**"
}

function head(title) {
    printf "\n## %s\n\n| what | target | pinned | | split | |\n|---|---|---|---|---|---|\n", title
}

# What is measured in turns against something else; without a limit, nothing is to be met. The format
# is of the ratio and of both medians.
function turns_row(what, above, below, limit, format,    m, line, value) {
    line = "| " what " | " (limit ? "at most " limit "x" : "-") " |"
    for (m = 1; m <= 2; ++m) {
        value = median_ratio(modes[m] SUBSEP above, modes[m] SUBSEP below)
        line = line " " (value == "none" ? "not measured" : sprintf(format, value, \
            median(modes[m] SUBSEP above), median(modes[m] SUBSEP below))) " | " \
            (limit ? met(value, limit) " " : "") "|"
    }
    print line
}

# Ours against the floor.
function ratio_row(what, name, limit) {
    turns_row(what, name ".ours", name ".floor", limit, "%.2fx (%.0f against %.0f ms)")
}

# A tree against the one of 10,000 entries.
function scale_row(what, name, limit) {
    turns_row(what, name ".ours", name ".base", limit, "%.2fx (%.4g against %.4g)")
}

# A figure by itself, its median or (of what must never be exceeded) the worst of all rounds. The
# target of a "pinned" one does not hold for split cores.
function plain_row(what, name, limit, format, worst, which,    m, line, value) {
    line = "| " what " | at most " sprintf(format, limit) (which == "pinned" ? ", pinned" : "") " |"
    for (m = 1; m <= 2; ++m) {
        value = worst ? largest(modes[m] SUBSEP name) : median(modes[m] SUBSEP name)
        line = line " " shown(value, format) " | " \
            (which == "pinned" && modes[m] != "pinned" ? "" : met(value, limit)) " |"
    }
    print line
}

# A figure that is measured once, however the cores are fixed.
function head_of_singles(title) { printf "\n## %s\n\n| what | target | | |\n|---|---|---|---|\n", title }
function single_row(what, name, limit,    value) {
    value = median("pinned" SUBSEP name)
    print "| " what " | at most " limit " | " shown(value, "%.0f") " | " met(value, limit) " |"
}

# How many times as long one takes as the other.
function growth_row(what, above, below, limit,    m, line, value, a, b) {
    line = "| " what " | at most " limit "x |"
    for (m = 1; m <= 2; ++m) {
        a = median(modes[m] SUBSEP above)
        b = median(modes[m] SUBSEP below)
        value = a == "none" || b == "none" || b == 0 ? "none" : a / b
        line = line " " (value == "none" ? "not measured" : \
            sprintf("%.2fx (%.4g against %.4g)", value, a, b)) " | " met(value, limit) " |"
    }
    print line
}

# The worst of all rounds, without a target.
function worst_row(what, name, format,    m, line) {
    line = "| " what " | - |"
    for (m = 1; m <= 2; ++m) line = line " " shown(largest(modes[m] SUBSEP name), format) " | |"
    print line
}

function peer_row(what, name,    file, version) {
    file = room "/peer-" name
    version = "not installed"
    if ((getline version < file) <= 0) version = "not installed"
    sub(/\r$/, "", version)
    close(file)
    print "| " what " | " version " | " shown(median("pinned" SUBSEP "peer." name), "%.0f") " |"
}

function split_names(text, into) { split(text, into, " ") }

# How the text names a tree.
function named(tree) {
    return tree == "together" ? "1,000, ten folders in a row" : \
        tree == "alone" ? "1,000, one folder after a rest" : \
        tree == "flat-100000" ? "100,000 in one folder" : \
        tree == "100000" ? "100,000" : tree == "1000000" ? "1,000,000" : tree
}

BEGIN {
    modes[1] = "pinned"
    modes[2] = "split"
}
