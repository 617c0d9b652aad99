// What the user's locale keeps to, run on every implementation of it.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "contract/platform_under_test.h"
#include "platform/program_error.h"

namespace tidemark {
namespace {

class UserLocaleContract : public PlatformContract {
  protected:
    UserLocale& locale_ = platform_.locale;
};

TEST_P(UserLocaleContract, LettersBecomeLowerCase) {
    EXPECT_EQ(locale_.LowerCase("C:\\Some Folder\\A1_ZZ.TXT"), "c:\\some folder\\a1_zz.txt");
    EXPECT_EQ(locale_.LowerCase("\xC3\x89T\xC3\x89"), "\xC3\xA9t\xC3\xA9");
    EXPECT_EQ(locale_.LowerCase(""), "");
}

TEST_P(UserLocaleContract, WhatHasNoLowerCaseStaysAsItIs) {
    for (const std::string text : {"\xE6\xBC\xA2\xE5\xAD\x97", "\xF0\x9F\x98\x80", "a.b-1",
                                   "lone \xED\xA0\x80 surrogate", "\xED\xB0\x80"}) {
        EXPECT_EQ(locale_.LowerCase(text), text);
    }
}

TEST_P(UserLocaleContract, SortKeysOrderTextsAsADictionaryDoes) {
    const std::vector<std::string> ordered = {
        "",  "-00000000005", "000000000009", "000000000010", "10",           "9",
        "a", "a b",          "ab",           "apfel",        "\xC3\xA4pfel", "apfelb",
        "b", "\xC3\xA9tude", "zebra"};
    for (std::size_t i = 1; i < ordered.size(); ++i) {
        EXPECT_LT(locale_.SortKey(ordered[i - 1]), locale_.SortKey(ordered[i]))
            << ordered[i - 1] << " before " << ordered[i];
    }
}

TEST_P(UserLocaleContract, SortKeysAreEqualForTextsThatDifferInCaseAlone) {
    EXPECT_EQ(locale_.SortKey("C:\\Some Folder\\A1_ZZ.TXT"),
              locale_.SortKey("c:\\some folder\\a1_zz.txt"));
    EXPECT_EQ(locale_.SortKey("\xC3\x89T\xC3\x89"), locale_.SortKey("\xC3\xA9t\xC3\xA9"));
    EXPECT_NE(locale_.SortKey("a.txt"), locale_.SortKey("b.txt"));
}

TEST_P(UserLocaleContract, EveryTextHasASortKey) {
    std::string many_accents;
    for (int i = 0; i < 1000; ++i) {
        many_accents += "\xC3\xA4\xCC\x8A";
    }
    for (const std::string& text :
         {many_accents, std::string(40'000, 'x'), std::string("lone \xED\xA0\x80 surrogate"),
          std::string("\xE6\xBC\xA2\xE5\xAD\x97"), std::string("\xF0\x9F\x98\x80")}) {
        EXPECT_NE(locale_.SortKey(text), "") << text.substr(0, 20);
        EXPECT_LT(locale_.SortKey(text), locale_.SortKey(text + "a")) << text.substr(0, 20);
    }
}

TEST_P(UserLocaleContract, ThereAreSeparators) {
    EXPECT_NE(locale_.ThousandsSeparator(), "");
    EXPECT_NE(locale_.DateSeparator(), "");
    EXPECT_NE(locale_.TimeSeparator(), "");
}

TEST_P(UserLocaleContract, DatesAndTimesAreReadAsDayNumbers) {
    EXPECT_DOUBLE_EQ(locale_.ReadDateTime("14:30"), 14.5 / 24);
    EXPECT_DOUBLE_EQ(locale_.ReadDateTime("00:00"), 0);
    EXPECT_DOUBLE_EQ(locale_.ReadDateTime("3/15/2004"), 38061);
    EXPECT_DOUBLE_EQ(locale_.ReadDateTime("3/15/2004 14:30"), 38061 + 14.5 / 24);
    // Whichever order the locale prefers, there is no month 15.
    EXPECT_DOUBLE_EQ(locale_.ReadDateTime("15/3/2004"), 38061);
}

TEST_P(UserLocaleContract, WhatIsNeitherDateNorTimeIsATypeMismatch) {
    for (const char* text : {"", "nonsense", "25:99", "40/40/2004"}) {
        try {
            (void)locale_.ReadDateTime(text);
            ADD_FAILURE() << '"' << text << "\" was read";
        } catch (const ProgramError& error) {
            EXPECT_EQ(error.Number(), error_number::kTypeMismatch) << text;
            EXPECT_NE(error.Description(), "") << text;
        }
    }
}

TEST_P(UserLocaleContract, ATimeInWordsNamesItsMonth) {
    constexpr std::int64_t kMinute = 600'000'000;
    constexpr std::int64_t kDay = 24 * 60 * kMinute;
    constexpr FileTime kFourthOfMarch2026{155'290 * kDay + 61 * kMinute};  // 1:01
    const std::string text = locale_.DateTimeText(kFourthOfMarch2026);
    EXPECT_EQ(text.substr(0, 2), "4 ");
    EXPECT_NE(text.find(" 2026, "), std::string::npos) << text;
    EXPECT_NE(text.find("01"), std::string::npos) << text;
    EXPECT_EQ(text.find("03"), std::string::npos) << "the month is no number: " << text;
    EXPECT_NE(text, locale_.DateTimeText({kFourthOfMarch2026.ticks + 30 * kDay}));
    EXPECT_EQ(text, locale_.DateTimeText({kFourthOfMarch2026.ticks + kMinute / 2}));
}

TIDEMARK_ON_EVERY_PLATFORM(UserLocaleContract);

}  // namespace
}  // namespace tidemark
