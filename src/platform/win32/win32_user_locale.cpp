#include "platform/win32/win32_user_locale.h"

#include <array>

#include "platform/program_error.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows.h"

// Needs <windows.h> before it.
#include <oleauto.h>

namespace tidemark {
namespace {

std::wstring LocaleText(LCID locale, LCTYPE which) {
    std::array<wchar_t, 80> text{};
    ::GetLocaleInfoW(locale, which, text.data(), static_cast<int>(text.size()));
    return text.data();
}

// Marks that set the direction of writing, as Arabic has them beside its separators. They show
// nothing, and the system's own reading of dates does not take them everywhere.
bool IsDirectionMark(wchar_t c) {
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069);
}

std::string SeparatorText(LCID locale, LCTYPE which) {
    std::wstring text = LocaleText(locale, which);
    std::erase_if(text, IsDirectionMark);
    return Utf8FromWide(text);
}

// False, with the text partly done, when it has other characters than ASCII. In plain lower case
// those are alike in every locale.
bool LowerAscii(std::string& text) {
    for (char& c : text) {
        if (static_cast<unsigned char>(c) >= 0x80) {
            return false;
        }
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return true;
}

}  // namespace

// Plain lower case, not the linguistic one: a key made of a path must equal that of another
// spelling which the file system takes for the same path.
std::string Win32UserLocale::LowerCase(const std::string& text) {
    if (std::string lower = text; LowerAscii(lower)) {
        return lower;
    }
    std::wstring wide = WideFromUtf8(text);
    const int length = static_cast<int>(wide.size());
    // In place: this mapping is allowed to write over its source, and keeps the length.
    if (::LCMapStringW(locale_id_, LCMAP_LOWERCASE, wide.data(), length, wide.data(), length) ==
        0) {
        return text;
    }
    return Utf8FromWide(wide);
}

std::string Win32UserLocale::SortKey(const std::string& text) {
    if (text.empty()) {
        return {};
    }
    const std::wstring wide = WideFromUtf8(text);
    // Punctuation as characters: by words, "-5" would stand among the positive numbers.
    constexpr DWORD kMapping = LCMAP_SORTKEY | NORM_IGNORECASE | SORT_STRINGSORT;
    while (true) {
        // The buffer of a key is counted in bytes.
        const int size = ::LCMapStringW(
            locale_id_, kMapping, wide.data(), static_cast<int>(wide.size()),
            reinterpret_cast<wchar_t*>(sort_key_.data()), static_cast<int>(sort_key_.size()));
        if (size != 0) {
            return sort_key_.substr(0, static_cast<std::size_t>(size));
        }
        if (::GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
            return LowerCase(text);
        }
        sort_key_.resize(sort_key_.size() * 2);
    }
}

std::string Win32UserLocale::ThousandsSeparator() {
    return Utf8FromWide(LocaleText(locale_id_, LOCALE_STHOUSAND));
}

std::string Win32UserLocale::DateSeparator() {
    return SeparatorText(locale_id_, LOCALE_SDATE);
}

std::string Win32UserLocale::TimeSeparator() {
    return SeparatorText(locale_id_, LOCALE_STIME);
}

double Win32UserLocale::ReadDateTime(const std::string& text) {
    std::wstring wide = WideFromUtf8(text);
    DATE date = 0;
    if (FAILED(::VarDateFromStr(wide.data(), locale_id_, /*dwFlags=*/0, &date))) {
        throw ProgramError(error_number::kTypeMismatch,
                           "\"" + text + "\" is neither a date nor a time of day.");
    }
    return date;
}

std::string Win32UserLocale::DateTimeText(FileTime local) {
    const FILETIME time = {static_cast<DWORD>(local.ticks & 0xFFFFFFFF),
                           static_cast<DWORD>(local.ticks >> 32)};
    SYSTEMTIME parts{};
    std::array<wchar_t, 160> date{};
    std::array<wchar_t, 80> time_of_day{};
    if (::FileTimeToSystemTime(&time, &parts) == FALSE ||
        ::GetDateFormatW(locale_id_, /*dwFlags=*/0, &parts, L"d MMMM yyyy", date.data(),
                         static_cast<int>(date.size())) == 0 ||
        ::GetTimeFormatW(locale_id_, TIME_NOSECONDS, &parts, /*lpFormat=*/nullptr,
                         time_of_day.data(), static_cast<int>(time_of_day.size())) == 0) {
        return {};
    }
    return Utf8FromWide(date.data()) + ", " + Utf8FromWide(time_of_day.data());
}

}  // namespace tidemark
