#include "settings/stored_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace tidemark {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kDecimalDigits = "0123456789";
constexpr std::string_view kHexadecimalDigits = "0123456789ABCDEF";

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

// Digits after &H or &O.
NumberAtStart ReadRadixNumber(std::string_view text) {
    if (text.size() < 3 || text[0] != '&') {
        return {};
    }
    const char kind = UpperCase(text[1]);
    if (kind != 'H' && kind != 'O') {
        return {};
    }
    const std::string_view digits = kHexadecimalDigits.substr(0, kind == 'H' ? 16 : 8);
    NumberAtStart number;
    std::size_t at = 2;
    for (; at < text.size(); ++at) {
        const std::size_t digit = digits.find(UpperCase(text[at]));
        if (digit == std::string_view::npos) {
            break;
        }
        number.value =
            number.value * static_cast<double>(digits.size()) + static_cast<double>(digit);
    }
    number.length = at > 2 ? at : 0;
    return number;
}

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
        return ReadRadixNumber(text);
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
    std::string packed;
    std::copy_if(text.begin(), text.end(), std::back_inserter(packed),
                 [](char letter) { return kBlanks.find(letter) == std::string_view::npos; });
    return ReadNumber(packed).value;
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
