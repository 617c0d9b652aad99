#include "platform/win32/wide_text.h"

#include <gtest/gtest.h>

#include <string>

namespace tidemark {
namespace {

TEST(WideText, NamesOfTwoHundredAndFiftyFiveUnitsSurvive) {
    for (const std::wstring& name :
         {std::wstring(255, L'\x6F22'), std::wstring(86, L'\x6F22'), std::wstring(255, L'a')}) {
        EXPECT_EQ(WideFromUtf8(Utf8FromWide(name)), name);
    }
    EXPECT_EQ(Utf8FromWide(std::wstring(255, L'\x6F22')).size(), 3U * 255);
}

TEST(WideText, LoneSurrogatesSurvive) {
    for (const std::wstring& name : {std::wstring(L"a\xD800z"), std::wstring(L"\xDC00"),
                                     std::wstring(L"\xDC00\xD800"), std::wstring(3, L'\xDBFF')}) {
        EXPECT_EQ(WideFromUtf8(Utf8FromWide(name)), name);
    }
}

TEST(WideText, PairsBecomeOneCharacter) {
    EXPECT_EQ(Utf8FromWide(L"\xD83D\xDE00"), "\xF0\x9F\x98\x80");
    EXPECT_EQ(WideFromUtf8("\xF0\x9F\x98\x80"), L"\xD83D\xDE00");
}

}  // namespace
}  // namespace tidemark
