// Runs one benchmark and prints its figures, one "name value" a line, for ./bench.
//
// tidemark_bench NAME ROUNDS TREE...

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>

#include "benchmarks/benchmarks.h"
#include "benchmarks/measure.h"

namespace tidemark {
namespace {

struct Benchmark {
    std::string_view name;
    void (*run)(const BenchArguments&);
};

constexpr Benchmark kBenchmarks[] = {
    {"walk", WalkBench},     {"files", FilesBench},   {"scale", ScaleBench},
    {"small", SmallBench},   {"answer", AnswerBench}, {"list", ListBench},
    {"errors", ErrorsBench}, {"popup", PopupBench},   {"memory", MemoryBench},
};

int Run(int count, char** values) {
    BenchArguments arguments;
    if (count >= 4) {
        arguments.rounds = std::atoi(values[2]);
        arguments.trees.assign(values + 3, values + count);
        for (const Benchmark& benchmark : kBenchmarks) {
            if (benchmark.name == values[1]) {
                benchmark.run(arguments);
                return 0;
            }
        }
    }
    std::printf("usage: tidemark_bench NAME ROUNDS TREE...\n");
    return 2;
}

}  // namespace
}  // namespace tidemark

int main(int count, char** values) {
    try {
        return tidemark::Run(count, values);
    } catch (const std::exception& failure) {
        tidemark::GiveUp(failure.what());
    }
}
