#include "settings/stored_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace std::string_literals;

namespace tidemark {
namespace {

TEST(TruthValue, TrueAndFalseInAnyLetterCase) {
    for (const char* text : {"True", "TRUE", "true", "tRuE"}) {
        EXPECT_EQ(TruthValue(text), true) << text;
    }
    for (const char* text : {"False", "FALSE", "false", "fAlSe"}) {
        EXPECT_EQ(TruthValue(text), false) << text;
    }
}

TEST(TruthValue, ZeroIsFalseAndAnyOtherNumberIsTrue) {
    for (const char* text : {"1", "-1", "+1", "2", "0.5", ".5", "5.", "1e3", "1E-3", " 1 ",
                             "\t7\r\n", "00001", "-.1e+2", "1e40"}) {
        EXPECT_EQ(TruthValue(text), true) << text;
    }
    for (const char* text : {"0", "-0", "+0", "0.000", " 0 ", "0e99999", ".0", "0."}) {
        EXPECT_EQ(TruthValue(text), false) << text;
    }
    EXPECT_EQ(TruthValue(std::string(300, '1')), true);
    EXPECT_EQ(TruthValue(std::string(10000, '0')), false);
}

TEST(TruthValue, AnythingElseFails) {
    for (const char* text : {"",       " ",
                             "maybe",  "yes",
                             "12px",   "1 2",
                             "--1",    "+-1",
                             "- 1",    ".",
                             "+",      "-.",
                             "e5",     "1e",
                             "1e+",    "1e5x",
                             "&",      "True ",
                             "&H1",    "&O17",
                             " True",  "Tru",
                             "&H1G",   "&O8",
                             "&X1",    "-&H1",
                             "0x10",   "inf",
                             "nan",    "1,000",
                             "1_0",    "1e400",
                             "Truely", "-1e999999999999999999999"}) {
        EXPECT_EQ(TruthValue(text), std::nullopt) << '"' << text << '"';
    }
    EXPECT_EQ(TruthValue("1\0"s), std::nullopt);
    EXPECT_EQ(TruthValue("\0True"s), std::nullopt);
    EXPECT_EQ(TruthValue(std::string(10000, '9')), std::nullopt);
    EXPECT_EQ(TruthValue(std::string(10000, 'x')), std::nullopt);
    EXPECT_EQ(TruthValue("\xFF\xFE"), std::nullopt);
}

TEST(TruthValue, CanonicalTextReadsBack) {
    EXPECT_EQ(TextFromTruth(true), "True");
    EXPECT_EQ(TextFromTruth(false), "False");
    EXPECT_EQ(TruthValue(TextFromTruth(true)), true);
    EXPECT_EQ(TruthValue(TextFromTruth(false)), false);
}

TEST(LeadingNumber, ReadsWhatTheTextStartsWith) {
    const std::pair<const char*, double> texts[] = {
        {"300", 300},   {"250.6", 250.6}, {"-5", -5},  {"+5", 5},      {"12px", 12},
        {"12 px", 12},  {".5", .5},       {"5.", 5},   {"1.2.3", 1.2}, {"1e2", 100},
        {"1E+2x", 100}, {"2e-1", 0.2},    {"12e", 12}, {"12e+", 12},   {"12epx", 12},
        {"3-4", 3},     {"1e40", 1e40},   {"007", 7},  {"1,5", 1},     {"-.5e1", -5},
    };
    for (const auto& [text, number] : texts) {
        EXPECT_DOUBLE_EQ(LeadingNumber(text), number) << text;
    }
}

TEST(LeadingNumber, BlanksMayStandBeforeANumberAndEndIt) {
    EXPECT_EQ(LeadingNumber("  12"), 12);
    EXPECT_EQ(LeadingNumber("\t\r\n-12 px"), -12);
    EXPECT_EQ(LeadingNumber(" 1 500"), 1);
    EXPECT_EQ(LeadingNumber("4 0"), 4);
    EXPECT_EQ(LeadingNumber("1 e 2"), 1);
    EXPECT_EQ(LeadingNumber("- 12"), 0);
}

TEST(LeadingNumber, TextThatDoesNotStartWithANumberIsZero) {
    for (const char* text :
         {"",  " ", "abc", "maybe", "px12", "-",    "+",  ".",   "-.",  "--5", "e5",
          "E", "&", "&H1", "&O17",  "&HG",  "-&H1", "x0", "inf", "nan", "$5"}) {
        EXPECT_EQ(LeadingNumber(text), 0) << text;
    }
    EXPECT_EQ(LeadingNumber("\0px"s), 0);
    EXPECT_EQ(LeadingNumber("12\0px"s), 12);
    EXPECT_EQ(LeadingNumber(std::string(10000, 'a')), 0);
    EXPECT_EQ(LeadingNumber(std::string(10000, ' ')), 0);
}

TEST(LeadingNumber, IsInfiniteBeyondADoublesRange) {
    EXPECT_TRUE(std::isinf(LeadingNumber("1e400")));
    EXPECT_TRUE(std::isinf(LeadingNumber("-1e400")));
    EXPECT_TRUE(std::isinf(LeadingNumber(std::string(10000, '9'))));
    EXPECT_EQ(LeadingNumber("1e-400"), 0);
    EXPECT_EQ(LeadingNumber("0." + std::string(9000, '0') + "5e9001"), 5);
}

TEST(RoundHalvesToEven, GoesToTheNearestAndFromHalvesToTheEven) {
    const std::pair<double, std::int32_t> numbers[] = {
        {250.5, 250},
        {251.5, 252},
        {250.6, 251},
        {250.4, 250},
        {0.5, 0},
        {1.5, 2},
        {-0.5, 0},
        {-1.5, -2},
        {-2.5, -2},
        {-2.6, -3},
        {-0.4, 0},
        {12, 12},
        {0.49999999999999994, 0},
        {2147483647.4, INT32_MAX},
        {-2147483648.5, INT32_MIN},
    };
    for (const auto& [value, whole] : numbers) {
        EXPECT_EQ(RoundHalvesToEven(value), whole) << value;
    }
}

TEST(RoundHalvesToEven, FailsWhereThirtyTwoBitsEnd) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double value : {2147483647.5, -2147483648.6, 1e40, -1e40, infinity, -infinity,
                               std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(RoundHalvesToEven(value), std::nullopt) << value;
    }
}

TEST(TextFromSingle, IsTheShortestTextOfUpToSevenDigits) {
    const std::pair<float, const char*> numbers[] = {
        {300.F, "300"},     {4635.F, "4635"},     {-15.F, "-15"},         {0.F, "0"},
        {250.5F, "250.5"},  {0.1F, "0.1"},        {9999999.F, "9999999"}, {1e7F, "1E+07"},
        {-1e10F, "-1E+10"}, {1.5e-5F, "1.5E-05"},
    };
    for (const auto& [value, text] : numbers) {
        EXPECT_EQ(TextFromSingle(value), text);
    }
}

}  // namespace
}  // namespace tidemark
