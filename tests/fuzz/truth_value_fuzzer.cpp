// Texts as truth values: told apart from another reader of numbers, and from themselves with
// blanks.

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_check.h"
#include "settings/stored_text.h"

namespace {

// The standard library's opinion on plain decimal numbers; it also knows words, which the program
// does not.
bool IsPlainDecimal(std::string_view text, double& value) {
    if (text.empty() || text.find_first_not_of("0123456789.eE+-") != std::string_view::npos) {
        return false;
    }
    if (text.front() == '+') {
        text.remove_prefix(1);
        if (text.empty() || text.front() == '-') {
            return false;
        }
    }
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto value = tidemark::TruthValue(text);

    double number = 0;
    if (IsPlainDecimal(text, number)) {
        FUZZ_CHECK(value == (number != 0));
    }
    if (!value) {
        // What is no truth value does not become one by blanks around it.
        FUZZ_CHECK(!tidemark::TruthValue(" " + text + "\t"));
        return 0;
    }
    FUZZ_CHECK(tidemark::TruthValue(tidemark::TextFromTruth(*value)) == *value);
    FUZZ_CHECK(!tidemark::TruthValue(text + "x"));
    const char first = text.front();
    if (first != 't' && first != 'T' && first != 'f' && first != 'F') {
        FUZZ_CHECK(tidemark::TruthValue(" " + text + "\t") == *value);
        const double leading = tidemark::LeadingNumber(text);
        FUZZ_CHECK(std::isfinite(leading) && (leading != 0) == *value);
    }
    return 0;
}
