#include "settings/stored_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace tidemark {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kDecimalDigits = "0123456789";

char UpperCase(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

bool EqualsIgnoringCase(std::string_view text, std::string_view upper_case) {
    return std::equal(text.begin(), text.end(), upper_case.begin(), upper_case.end(),
                      [](char letter, char upper) { return UpperCase(letter) == upper; });
}

struct NumberAtStart {
    double value = 0;
    std::size_t length = 0;  // zero when the text does not start with a number
};

// How many characters of the text, from `at` on, are decimal digits.
std::size_t DigitsAt(std::string_view text, std::size_t at) {
    const std::size_t end = text.find_first_not_of(kDecimalDigits, at);
    return (end == std::string_view::npos ? text.size() : end) - at;
}

std::size_t SignAt(std::string_view text, std::size_t at) {
    return at < text.size() && (text[at] == '+' || text[at] == '-') ? 1 : 0;
}

NumberAtStart ReadNumber(std::string_view text) {
    std::size_t at = SignAt(text, 0);
    std::size_t digits = DigitsAt(text, at);
    at += digits;
    if (at < text.size() && text[at] == '.') {
        const std::size_t fraction = DigitsAt(text, at + 1);
        digits += fraction;
        at += 1 + fraction;
    }
    if (digits == 0) {
        return {};
    }
    if (at < text.size() && UpperCase(text[at]) == 'E') {
        const std::size_t start = at + 1 + SignAt(text, at + 1);
        const std::size_t exponent = start < text.size() ? DigitsAt(text, start) : 0;
        at = exponent > 0 ? start + exponent : at;
    }
    // Nothing but a well-formed decimal number goes in, so nothing else that strtod knows comes
    // out.
    return {std::strtod(std::string(text.substr(0, at)).c_str(), nullptr), at};
}

}  // namespace

std::optional<bool> TruthValue(std::string_view text) {
    if (EqualsIgnoringCase(text, "TRUE")) {
        return true;
    }
    if (EqualsIgnoringCase(text, "FALSE")) {
        return false;
    }
    const std::size_t start = text.find_first_not_of(kBlanks);
    if (start == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view trimmed = text.substr(start, text.find_last_not_of(kBlanks) + 1 - start);
    const NumberAtStart number = ReadNumber(trimmed);
    if (number.length != trimmed.size() || std::isinf(number.value)) {
        return std::nullopt;
    }
    return number.value != 0;
}

std::string TextFromTruth(bool value) {
    return value ? "True" : "False";
}

double LeadingNumber(std::string_view text) {
    const std::size_t start = std::min(text.find_first_not_of(kBlanks), text.size());
    return ReadNumber(text.substr(start)).value;
}

std::optional<std::int32_t> RoundHalvesToEven(double value) {
    double whole = std::floor(value);
    const double rest = value - whole;
    if (rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2) != 0)) {
        whole += 1;
    }
    // Written so that a value that is no number fails, too.
    if (!(whole >= INT32_MIN && whole <= INT32_MAX)) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(whole);
}

std::string TextFromSingle(float value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.7G", static_cast<double>(value));
    return text.data();
}

}  // namespace tidemark
