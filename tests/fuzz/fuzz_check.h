#pragma once

#include <stdexcept>
#include <string>

// What becomes of a broken promise: in the tests an exception that tells of it; in a fuzzer the
// end, after which it keeps the input.
#ifdef TIDEMARK_FUZZ_CHECK_THROWS
#define FUZZ_BROKEN(text) throw std::runtime_error(text)
#else
#include <cstdio>
#include <cstdlib>
#define FUZZ_BROKEN(text)                             \
    do {                                              \
        std::fprintf(stderr, "%s\n", (text).c_str()); \
        std::abort();                                 \
    } while (false)
#endif

#define FUZZ_CHECK(promise)                                                                      \
    do {                                                                                         \
        if (!(promise)) {                                                                        \
            FUZZ_BROKEN(std::string(__FILE__ ":") + std::to_string(__LINE__) + ": " + #promise); \
        }                                                                                        \
    } while (false)
