// The number at the start of a text, its rounding, and the text of a number.

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

#include "fuzz/fuzz_check.h"
#include "settings/stored_text.h"

namespace {

// The standard library's opinion; only asked where no word (inf, nan) can stand.
void CheckAgainstStandardLibrary(const std::string& text, double number) {
    const std::string from_start =
        text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    const std::size_t sign = from_start.starts_with('-') ? 1 : 0;
    const char first = sign < from_start.size() ? from_start[sign] : '\0';
    if ((first < '0' || first > '9') && first != '.') {
        return;
    }
    double expected = 0;
    const auto result =
        std::from_chars(from_start.data(), from_start.data() + from_start.size(), expected);
    if (result.ec == std::errc::result_out_of_range) {
        FUZZ_CHECK(std::isinf(number) || std::fabs(number) < 1e-300);
    } else {
        FUZZ_CHECK(number == (result.ec == std::errc() ? expected : 0));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const double number = tidemark::LeadingNumber(text);
    FUZZ_CHECK(!std::isnan(number));
    CheckAgainstStandardLibrary(text, number);
    FUZZ_CHECK(tidemark::LeadingNumber(text + "x") == number);
    FUZZ_CHECK(tidemark::LeadingNumber("\n " + text) == number);

    if (const auto whole = tidemark::RoundHalvesToEven(number)) {
        const double distance = std::fabs(*whole - number);
        FUZZ_CHECK(distance < 0.5 || (distance == 0.5 && *whole % 2 == 0));
        // Up to seven digits a single-precision number keeps its value in its text.
        if (std::abs(static_cast<double>(*whole)) < 1e7) {
            const std::string written = tidemark::TextFromSingle(static_cast<float>(*whole));
            FUZZ_CHECK(tidemark::LeadingNumber(written) == *whole);
        }
    } else {
        FUZZ_CHECK(std::fabs(number) >= 2147483647.5);
    }

    float single = 0;
    if (size >= sizeof single) {
        std::memcpy(&single, data, sizeof single);
        if (std::isfinite(single)) {
            const double back = tidemark::LeadingNumber(tidemark::TextFromSingle(single));
            FUZZ_CHECK(std::fabs(back - static_cast<double>(single)) <=
                       std::fabs(static_cast<double>(single)) * 1e-6 + 1e-44);
        }
    }
    return 0;
}
