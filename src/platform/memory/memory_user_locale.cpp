#include "platform/memory/memory_user_locale.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <string_view>
#include <utility>

#include "platform/memory/fold_case.h"
#include "platform/program_error.h"
#include "platform/text.h"

namespace tidemark {
namespace {

struct Numbers {
    std::array<int, 3> values{};
    std::size_t count = 0;
};

[[noreturn]] void Mismatch() {
    throw ProgramError(error_number::kTypeMismatch, "Type mismatch");
}

// Reads up to three numbers with one of the separators between them.
Numbers ReadNumbers(std::string_view text, std::string_view separator, std::string_view others) {
    Numbers numbers;
    while (true) {
        if (numbers.count == numbers.values.size()) {
            Mismatch();
        }
        int& value = numbers.values[numbers.count++];
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error != std::errc{} || value < 0) {
            Mismatch();
        }
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        if (text.empty()) {
            return numbers;
        }
        if (!separator.empty() && text.starts_with(separator)) {
            text.remove_prefix(separator.size());
        } else if (others.find(text.front()) != std::string_view::npos) {
            text.remove_prefix(1);
        } else {
            Mismatch();
        }
    }
}

double DateFrom(const Numbers& numbers, bool month_first) {
    if (numbers.count != 3) {
        Mismatch();
    }
    int month = numbers.values[month_first ? 0 : 1];
    int day = numbers.values[month_first ? 1 : 0];
    if (month > 12) {
        std::swap(month, day);
    }
    using namespace std::chrono;
    const year_month_day date{year{numbers.values[2]},
                              std::chrono::month(static_cast<unsigned>(month)),
                              std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok()) {
        Mismatch();
    }
    const sys_days epoch{year{1899} / December / 30};
    return static_cast<double>((sys_days{date} - epoch).count());
}

double TimeFrom(const Numbers& numbers, bool has_half, bool afternoon) {
    auto [hour, minute, second] = numbers.values;
    if (numbers.count < 2 || minute > 59 || second > 59 || hour > (has_half ? 12 : 23)) {
        Mismatch();
    }
    if (has_half) {
        hour = hour % 12 + (afternoon ? 12 : 0);
    }
    return ((hour * 60 + minute) * 60 + second) / 86400.0;
}

}  // namespace

std::string MemoryUserLocale::LowerCase(const std::string& text) {
    return FoldCase(text);
}

std::string MemoryUserLocale::SortKey(const std::string& text) {
    // What U+00E0 to U+00FF are accents of; a dot stands for a letter of its own.
    constexpr std::string_view kPlain = "aaaaaa.ceeeeiiii.nooooo.ouuuuy.y";
    const std::string folded = FoldCase(text);
    std::string key;
    for (std::size_t i = 0; i < folded.size(); ++i) {
        const bool latin1 = folded[i] == '\xC3' && i + 1 < folded.size();
        const std::size_t letter = latin1 ? static_cast<unsigned char>(folded[i + 1]) - 0xA0U : 0;
        if (latin1 && letter < kPlain.size() && kPlain[letter] != '.') {
            key += kPlain[letter];
            ++i;
        } else {
            key += folded[i];
        }
    }
    return key.empty() ? key : key + '\0' + folded;
}

double MemoryUserLocale::ReadDateTime(const std::string& text) {
    const std::string lower = FoldCase(text);
    std::string_view rest = lower;
    const bool morning = rest.ends_with(" am");
    const bool afternoon = rest.ends_with(" pm");
    if (morning || afternoon) {
        rest.remove_suffix(3);
    }
    double result = 0;
    const std::size_t blank = rest.find(' ');
    const bool has_time = rest.find(':') != std::string_view::npos ||
                          (!time_.empty() && rest.find(time_) != std::string_view::npos);
    if (blank != std::string_view::npos || !has_time) {
        result = DateFrom(ReadNumbers(rest.substr(0, blank), date_, "/-"),
                          order_ == DateOrder::kMonthFirst);
        rest = blank == std::string_view::npos ? std::string_view() : rest.substr(blank + 1);
    }
    if (!rest.empty()) {
        result += TimeFrom(ReadNumbers(rest, time_, ":"), morning || afternoon, afternoon);
    } else if (morning || afternoon) {
        Mismatch();
    }
    return result;
}

std::string MemoryUserLocale::DateTimeText(FileTime local) {
    constexpr std::array<const char*, 12> kMonths = {
        "January", "February", "March",     "April",   "May",      "June",
        "July",    "August",   "September", "October", "November", "December"};
    using namespace std::chrono;
    const auto passed = minutes(local.ticks / 600'000'000);
    const sys_days day = sys_days{year{1601} / January / 1} + floor<days>(passed);
    const year_month_day date{day};
    const hh_mm_ss time(passed - floor<days>(passed));
    return std::to_string(static_cast<unsigned>(date.day())) + " " +
           kMonths.at(static_cast<unsigned>(date.month()) - 1) + " " +
           std::to_string(static_cast<int>(date.year())) + ", " +
           std::to_string(make12(time.hours()).count()) + ":" +
           ZeroPadded(time.minutes().count(), 2) + (is_am(time.hours()) ? " AM" : " PM");
}

}  // namespace tidemark
