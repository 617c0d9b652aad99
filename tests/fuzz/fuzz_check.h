#pragma once

#include <cstdio>
#include <cstdlib>

// Ends the fuzzer, which keeps the input, when a promise is broken.
#define FUZZ_CHECK(promise)                                                    \
    do {                                                                       \
        if (!(promise)) {                                                      \
            std::fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #promise); \
            std::abort();                                                      \
        }                                                                      \
    } while (false)
