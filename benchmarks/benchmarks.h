#pragma once

#include <string>
#include <vector>

namespace tidemark {

// What a benchmark is told on the command line.
struct BenchArguments {
    std::vector<std::string> trees;  // Windows paths of folders that stand ready
    int rounds = 1;
};

// Counting and stamping one tree, engine and floor in turns.
void WalkBench(const BenchArguments& arguments);
// Stamping the first 5,000 files of the tree, each listed by itself, and the bare calls in turns.
void FilesBench(const BenchArguments& arguments);
// Time per entry in each tree but the first, which they are compared with; in microseconds.
void ScaleBench(const BenchArguments& arguments);
// The same for the folders of the first tree, listed together and one of them alone.
void SmallBench(const BenchArguments& arguments);
// How long messages wait while the first tree is counted and stamped, and how soon a press of
// Cancel ends the work on the second one.
void AnswerBench(const BenchArguments& arguments);
// Work on a list of the files of each tree.
void ListBench(const BenchArguments& arguments);
// The errors window with a record for each file of each tree.
void ErrorsBench(const BenchArguments& arguments);
// The popup of all files of each tree, which are in one folder, beside the shell calls it takes.
void PopupBench(const BenchArguments& arguments);
// Memory that items and error records of the first tree take, and that a stamp of the last one
// does.
void MemoryBench(const BenchArguments& arguments);

}  // namespace tidemark
