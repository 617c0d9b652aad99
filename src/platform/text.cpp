#include "platform/text.h"

#include <type_traits>

namespace tidemark {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

void AppendUtf8(std::string& out, char32_t point) {
    const auto append = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
    if (point < 0x80) {
        append(point);
    } else if (point < 0x800) {
        append(0xC0 | (point >> 6));
        append(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        append(0xE0 | (point >> 12));
        append(0x80 | ((point >> 6) & 0x3F));
        append(0x80 | (point & 0x3F));
    } else {
        append(0xF0 | (point >> 18));
        append(0x80 | ((point >> 12) & 0x3F));
        append(0x80 | ((point >> 6) & 0x3F));
        append(0x80 | (point & 0x3F));
    }
}

template <typename Unit>
void AppendUtf16(std::basic_string<Unit>& out, char32_t point) {
    if (point < 0x10000) {
        out.push_back(static_cast<Unit>(point));
    } else {
        point -= 0x10000;
        out.push_back(static_cast<Unit>(0xD800 + (point >> 10)));
        out.push_back(static_cast<Unit>(0xDC00 + (point & 0x3FF)));
    }
}

// Reads one code point (a surrogate counts as one) and advances `at`. A malformed sequence is
// consumed one byte at a time.
char32_t NextPoint(std::string_view text, std::size_t& at) {
    const auto byte = [&](std::size_t index) -> char32_t {
        return static_cast<unsigned char>(text[index]);
    };
    const char32_t lead = byte(at);
    std::size_t length = 0;
    char32_t point = 0;
    char32_t smallest = 0;
    if (lead < 0x80) {
        ++at;
        return lead;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2, point = lead & 0x1F, smallest = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3, point = lead & 0x0F, smallest = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4, point = lead & 0x07, smallest = 0x10000;
    } else {
        ++at;
        return kReplacement;
    }
    if (at + length > text.size()) {
        ++at;
        return kReplacement;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80) {
            ++at;
            return kReplacement;
        }
        point = (point << 6) | (byte(at + i) & 0x3F);
    }
    if (point < smallest || point > 0x10FFFF) {
        ++at;
        return kReplacement;
    }
    at += length;
    return point;
}

// Copies what is ASCII at the beginning of a text, which mostly is all of it; returns its length.
template <typename To, typename From>
std::size_t AssignAscii(std::basic_string<To>& out, std::basic_string_view<From> text) {
    out.resize(text.size());
    std::size_t length = 0;
    while (length < text.size() && static_cast<std::make_unsigned_t<From>>(text[length]) < 0x80) {
        out[length] = static_cast<To>(text[length]);
        ++length;
    }
    out.resize(length);
    return length;
}

}  // namespace

template <typename Unit>
void AssignUtf8(std::string& out, std::basic_string_view<Unit> text) {
    for (std::size_t i = AssignAscii(out, text); i < text.size(); ++i) {
        auto point = static_cast<char32_t>(text[i]);
        if (IsHighSurrogate(point) && i + 1 < text.size()) {
            const auto next = static_cast<char32_t>(text[i + 1]);
            if (IsLowSurrogate(next)) {
                point = 0x10000 + ((point - 0xD800) << 10) + (next - 0xDC00);
                ++i;
            }
        }
        AppendUtf8(out, point);
    }
}

template <typename Unit>
void AssignUtf16(std::basic_string<Unit>& out, std::string_view text) {
    for (std::size_t at = AssignAscii(out, text); at < text.size();) {
        AppendUtf16(out, NextPoint(text, at));
    }
}

template void AssignUtf8(std::string& out, std::u16string_view text);
template void AssignUtf8(std::string& out, std::wstring_view text);
template void AssignUtf16(std::u16string& out, std::string_view text);
template void AssignUtf16(std::wstring& out, std::string_view text);

std::string Utf8FromUtf16(std::u16string_view text) {
    std::string out;
    AssignUtf8(out, text);
    return out;
}

std::u16string Utf16FromUtf8(std::string_view text) {
    std::u16string out;
    AssignUtf16(out, text);
    return out;
}

std::string ZeroPadded(std::int64_t number, std::size_t digits) {
    std::string text = std::to_string(number);
    const std::size_t sign = number < 0 ? 1 : 0;
    if (text.size() - sign < digits) {
        text.insert(sign, digits - (text.size() - sign), '0');
    }
    return text;
}

}  // namespace tidemark
