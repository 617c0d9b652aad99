#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tidemark {

// One file or folder that could not be stamped.
struct StampError {
    // Full path; a folder's ends in "\". A name that no path can hold is written with look-alikes
    // (ReadableComponent), so that nobody reaches something else by it.
    std::string ItemName;
    bool CountError = false;       // an error of counting; counting records none so far
    std::int32_t ErrorNumber = 0;  // the system's code, or the program's own (error_number)
    std::string ErrorDescription;  // its text without a line break; empty when there is none
};

// Records in the order the failures happened. Records are shared between lists, never copied, and
// never changed once they are in one.
using StampErrorList = std::vector<std::shared_ptr<const StampError>>;

}  // namespace tidemark
