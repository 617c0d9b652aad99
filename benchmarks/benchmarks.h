#pragma once

#include <string>
#include <vector>

namespace tidemark {

// What a benchmark is told on the command line.
struct BenchArguments {
    std::vector<std::string> trees;  // Windows paths of folders that stand ready
    int rounds = 1;
};

// Counting and stamping one tree, engine in the window and floor in turns.
void WalkBench(const BenchArguments& arguments);

}  // namespace tidemark
