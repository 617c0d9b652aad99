#pragma once

#include <cstdint>
#include <string>

namespace tidemark {

// The day that benchmarks stamp with, as a day number.
inline constexpr double kStampDate = 43800.5;

// Milliseconds on the performance counter.
[[nodiscard]] double NowMs();

// Prints one measured figure. The reader collects all figures of a name.
void PrintFigure(const std::string& name, double value);

// Prints why the benchmark cannot go on, and ends the process with code 1.
[[noreturn]] void GiveUp(const std::string& why);

// Bytes of memory that this process has for itself and uses.
[[nodiscard]] std::uint64_t OwnMemory();

// Milliseconds that `body` takes.
template <typename Body>
[[nodiscard]] double TimeOf(Body&& body) {
    const double start = NowMs();
    body();
    return NowMs() - start;
}

}  // namespace tidemark
