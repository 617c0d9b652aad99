# The tables of docs/benchmarks.md: which figures stand in them, and their targets.

END {
    print "# Benchmarks"
    print ""
    print "Written by `./bench`; the text says what is measured, the figures are those of the last full run,"
    print "on " machine "."
    if (again != "")
        print "Of these, `" again "` was measured once more on " today "."
    if (kind == "quick") {
        print ""
        print "This was a quick run, on trees and lists of a tenth of these sizes and less: it shows that the"
        print "benchmarks work, and nothing else."
    }

    print ""
    print "The program's own classes do the work, on the real system and, where it says so, in the real window"
    print "with its poll armed; its windows are on a virtual display. What they are compared with is measured in"
    print "turns with them, again and again. A ratio is the median of those of single turns, a time the median"
    print "of all turns, and of waits and cancels the worst of all. There are five turns of each, and 25 of the"
    print "trees of 1,000 entries."
    print ""
    print "\"Pinned\" has the program and Wine's server on one core, \"split\" the server on the other one, where a"
    print "call to it takes many times as long. The display's own work runs on any core. Files are on the disk"
    print "that holds the build, in the cache of the system. A machine with one core measures nothing split."

    head("Counting and stamping against bare system calls")
    ratio_row("counting 20,000 files in 220 folders, in the real window", "count", 1.15)
    ratio_row("stamping them, both times, in the real window", "stamp", 1.10)
    ratio_row("the same with Clear Read-Only on, engine alone", "stamp-clearing", 1.15)
    ratio_row("the same with Sync Folder Created Date on and no Created, engine alone", "stamp-syncing", 1.15)
    print ""
    print "The floor of counting is FindFirstFile and FindNextFile; that of stamping opens each entry as well, sets"
    print "its two times and closes it. Above the floor come: the path of each entry, in the program's text and in"
    print "the system's; the questions whether messages wait, which are answered from a clock and reach the queue"
    print "every 10 ms; the conversion of the local times; and whatever messages come, the poll and its painting"
    print "among them. With Clear Read-Only each open entry is also asked for its attributes. Without Created"
    print "only folders get a second time, where the floor gives every entry two, and with Sync Folder Created"
    print "Date each is asked whether it is a folder."

    head("Stamping listed files against bare system calls")
    ratio_row("stamping 5,000 files that are listed one by one, in the real window", "files", 1.20)
    print ""
    print "From the press of Stamp to the last file. The floor opens each file, sets its two times and closes it."
    print "Above it come the question whether the path is a file, which folders need, the reading of the four"
    print "pickers for each file, and the messages that run every 10 ms. Left out is the poll that tells of the"
    print "end, up to 400 ms later."

    head("Time per entry as trees grow, against 10,000 entries")
    split_names(scaled, sizes)
    for (i = 1; i in sizes; ++i) scale_row("counting, us an entry: " named(sizes[i]), "scale.count." sizes[i], 1.2)
    for (i = 1; i in sizes; ++i) scale_row("stamping, us an entry: " named(sizes[i]), "scale.stamp." sizes[i], 1.2)
    for (i = 1; i in sizes; ++i) scale_row("the floor of counting, us an entry: " named(sizes[i]), "scale.floor." sizes[i])
    print ""
    print "In folders of 100 files, but for the flat one. Each turn of a tree follows one of 10,000 entries. A"
    print "processor that has rested is slower for a while, which a walk of few milliseconds does not outlast: so"
    print "ten folders of 1,000 entries are listed together and walked one after the other, and one of them alone,"
    print "after the pause of its timer. The last rows are the listing calls alone, after the same pause."

    head("How soon the window answers")
    plain_row("longest wait of a message while counting 20,000 files, ms", "wait.count", 30, "%.1f", 1)
    plain_row("longest wait of a message while stamping them, ms", "wait.stamp", 30, "%.1f", 1)
    worst_row("the same while nothing is done, ms", "wait.idle", "%.1f")
    plain_row("Cancel pressed to work stopped, in folders of 100 files, ms", "cancel", 100, "%.1f", 1)

    head("A list of 100,000 files, in the real window")
    plain_row("the call that drops them, ms", "list." large ".drop", 50, "%.0f")
    plain_row("poll, nothing changed, ms", "list." large ".poll-same", 25, "%.0f", 0, "pinned")
    plain_row("poll, everything changed, ms", "list." large ".poll-changed", 50, "%.0f", 0, "pinned")
    plain_row("select all, ms", "list." large ".select-all", 150, "%.0f")
    plain_row("sort by name, ms", "list." large ".sort-name", 150, "%.0f")
    plain_row("sort by name, the other way round, ms", "list." large ".sort-name-descending", 150, "%.0f")
    plain_row("sort by contents, ms", "list." large ".sort-contains", 150, "%.0f")
    plain_row("sort by status, ms", "list." large ".sort-status", 150, "%.0f")
    plain_row("remove 10,000 selected ones, every tenth, ms", "list." large ".remove-spread", 200, "%.0f")
    plain_row("remove 10,000 selected ones in a run, ms", "list." large ".remove-run", 200, "%.0f")
    plain_row("remove the other 80,000, ms", "list." large ".remove-all", 200, "%.0f")
    split_names("add poll-same poll-changed select-all sort-name sort-name-descending sort-contains sort-status remove-spread remove-run remove-all", steps)
    for (i = 1; i in steps; ++i) growth_row("growth from 10,000 files, ms: " steps[i], "list." large "." steps[i], "list." small "." steps[i], 15)
    print ""
    print "Each step is taken with the painting that it causes. Most of what select all and the removals cost is"
    print "the list control's own pass over the states of its rows, one for each change of all of them."

    head("The popup of files that are all selected, in the real window")
    split_names(popups, popup_sizes)
    for (i = 1; i in popup_sizes; ++i) ratio_row("for all files of a folder: " popup_sizes[i], "popup.flat-" popup_sizes[i], 1.3)
    for (i = 1; i in popup_sizes; ++i) plain_row("for " popup_sizes[i] " files, ms", "popup.flat-" popup_sizes[i] ".ours", popup_sizes[i] > 1000 ? 1000 : 100, "%.0f", 0, "pinned")
    print ""
    print "From the key that asks for the popup to the menu as it would come up; drawing it is left out. The floor"
    print "tests each file once, asks the folder for the identifier of each by its name, and asks the shell for its"
    print "menu and the entries of it."

    head("The errors window with 100,000 records")
    growth_row("filling it, from 10,000 records, ms", "errors." large ".fill", "errors." small ".fill", 12)
    worst_row("longest wait of a message meanwhile, ms", "errors." large ".wait", "%.0f")

    head("Start-up")
    ratio_row("start-up to rest without the waits it is to make, against `wine cmd /c exit`", "startup", 2.5)
    print ""
    print "From the call of Wine to a program with nothing more to do, warm. The waits are those for the splash:"
    print "its fade, half a second at least, and the pause before it goes."

    head_of_singles("Memory and size")
    single_row("a listed file, bytes", "memory.item", 1024)
    single_row("an error record beyond its texts, bytes", "memory.error", 512)
    single_row("its row in the errors window beyond these texts, bytes", "errors." large ".row-bytes", 512)
    single_row("a stamp of 1,000,000 files, KB in all", "memory.stamp-kb", 256)
    single_row("stripped executable, bytes", "size", 1500000)
    print ""
    print "Memory is what the process has for itself after the work, less what it had before; a stamp that adds"
    print "none still has room for the system's buffers. Each of these is measured once."

    printf "\n## Other ways to give 20,000 files new times\n\n"
    print "Each as a whole process on the program's core. The first ones run natively, for orientation: the program"
    print "pays for Wine's server with every file, and they do not. The Windows build of a script runtime does."
    printf "\n| what | version | ms |\n|---|---|---|\n"
    peer_row("`find TREE -exec touch -d @TIME {} +`", "touch")
    peer_row("`os.utime` in a loop over `os.walk`", "python")
    peer_row("`fs.utimesSync` in a loop over `fs.readdirSync`", "node")
    peer_row("the same script in the runtime's Windows build, under Wine", "node-windows")
    peer_row("that runtime doing nothing, under Wine", "node-windows-start")
    print "| the program's engine, in the real window, pinned | - | " shown(median("pinned" SUBSEP "stamp.ours"), "%.0f") " |"

    printf "\n%s\n", missed ? "Targets missed in this run: " missed "." : "Every target was met in this run."
}
