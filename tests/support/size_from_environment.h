#pragma once

#include <cstdlib>

namespace tidemark {

// A number from the environment, with which the long form of a test is asked for; else the short
// form's.
[[nodiscard]] inline int SizeFromEnvironment(const char* name, int short_form) {
    const char* const text = std::getenv(name);
    return text != nullptr ? std::atoi(text) : short_form;
}

}  // namespace tidemark
