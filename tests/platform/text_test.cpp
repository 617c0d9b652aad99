#include "platform/text.h"

#include <gtest/gtest.h>

using namespace std::string_literals;
using namespace std::string_view_literals;

namespace tidemark {
namespace {

TEST(Text, AsciiAndAccentsAndEmojiSurviveTheRoundTrip) {
    for (const std::u16string& text :
         {u"plain.txt"s, u"caf\u00e9"s, u"\u6f22\u5b57"s, u"\U0001F600.png"s, u""s, u"a\0b"s}) {
        EXPECT_EQ(Utf16FromUtf8(Utf8FromUtf16(text)), text);
    }
    EXPECT_EQ(Utf8FromUtf16(u"\u00e9\u6f22\U0001F600"), "\xC3\xA9\xE6\xBC\xA2\xF0\x9F\x98\x80");
}

TEST(Text, LoneSurrogatesSurviveTheRoundTrip) {
    const std::u16string lone_high = {u'a', 0xD800, u'b'};
    const std::u16string lone_low = {0xDC00, u'b'};
    const std::u16string swapped = {0xDC00, 0xD800};
    const std::u16string at_end = {u'x', 0xDBFF};
    for (const std::u16string& text : {lone_high, lone_low, swapped, at_end}) {
        EXPECT_EQ(Utf16FromUtf8(Utf8FromUtf16(text)), text);
    }
    EXPECT_EQ(Utf8FromUtf16(lone_high),
              "a\xED\xA0\x80"
              "b");
}

TEST(Text, BytesThatAreNoTextBecomeTheReplacementCharacter) {
    EXPECT_EQ(Utf16FromUtf8("a\xFF"
                            "b"),
              u"a\uFFFDb");
    EXPECT_EQ(Utf16FromUtf8("\xC3"), u"\uFFFD");
    EXPECT_EQ(Utf16FromUtf8("\xE6\xBC"), u"\uFFFD\uFFFD");
    EXPECT_EQ(Utf16FromUtf8("\xC0\x80"), u"\uFFFD\uFFFD");
    EXPECT_EQ(Utf16FromUtf8("\xF5\x80\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(Text, ASequenceWithAWrongByteBehindItsFirstIsReplacedByteByByte) {
    EXPECT_EQ(Utf16FromUtf8("\xC3("), u"\uFFFD(");
    EXPECT_EQ(Utf16FromUtf8("\xC3\xC3\xA9"), u"\uFFFD\u00e9");
    EXPECT_EQ(Utf16FromUtf8("\xE6(\xBC"), u"\uFFFD(\uFFFD");
    EXPECT_EQ(Utf16FromUtf8("\xE6\xBC("), u"\uFFFD\uFFFD(");
    EXPECT_EQ(Utf16FromUtf8("\xF0\x9F\x98("), u"\uFFFD\uFFFD\uFFFD(");
}

TEST(Text, ALongerFormOfAPointThanItsShortestIsReplacedByteByByte) {
    EXPECT_EQ(Utf16FromUtf8("\xC1\xBF"), u"\uFFFD\uFFFD");
    EXPECT_EQ(Utf16FromUtf8("\xE0\x80\xAF"), u"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Utf16FromUtf8("\xE0\x9F\xBF"), u"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Utf16FromUtf8("\xF0\x8F\xBF\xBF"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Utf16FromUtf8("\xE0\xA0\x80"), u"\u0800");
}

TEST(Text, APointBeyondTheLastIsReplacedByteByByte) {
    EXPECT_EQ(Utf16FromUtf8("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Utf16FromUtf8("\xF4\x8F\xBF\xBF"), u"\U0010FFFF");
}

// What lies behind the view would complete the sequence.
TEST(Text, ASequenceIsNotReadBeyondTheEndOfTheView) {
    const std::string whole = "a\xF0\x9F\x98\x80";
    const std::string_view view(whole);
    EXPECT_EQ(Utf16FromUtf8(view), u"a\U0001F600");
    EXPECT_EQ(Utf16FromUtf8(view.substr(0, 4)), u"a\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Utf16FromUtf8(view.substr(0, 2)), u"a\uFFFD");
    EXPECT_EQ(Utf16FromUtf8("\xC3\xA9"sv.substr(0, 1)), u"\uFFFD");
}

TEST(Text, WhatFollowsAsciiIsConvertedToo) {
    EXPECT_EQ(Utf16FromUtf8("path\\caf\xC3\xA9.txt"), u"path\\caf\u00e9.txt");
    EXPECT_EQ(Utf8FromUtf16(u"path\\caf\u00e9.txt"), "path\\caf\xC3\xA9.txt");
}

TEST(Text, MemoryUsedAgainHoldsNothingOfTheTextBefore) {
    std::string text = "a longer text than the one to come";
    AssignUtf8(text, u"short"sv);
    EXPECT_EQ(text, "short");
    AssignUtf8(text, u"\u00e9"sv);
    EXPECT_EQ(text, "\xC3\xA9");
    AssignUtf8(text, u""sv);
    EXPECT_EQ(text, "");
}

TEST(Text, TrimNullCutsAtTheFirstNul) {
    EXPECT_EQ(TrimNull("abc\0def\0"sv), "abc");
    EXPECT_EQ(TrimNull("abc"), "abc");
    EXPECT_EQ(TrimNull(""), "");
}

TEST(Text, ZeroesFillANumberUpBehindItsSign) {
    EXPECT_EQ(ZeroPadded(7, 4), "0007");
    EXPECT_EQ(ZeroPadded(-7, 4), "-0007");
    EXPECT_EQ(ZeroPadded(12345, 4), "12345");
    EXPECT_EQ(ZeroPadded(0, 2), "00");
}

}  // namespace
}  // namespace tidemark
