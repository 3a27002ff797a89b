#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <locale>
#include <string>
#include <vector>

#include "platform/core/failure.h"
#include "platform/core/text.h"

namespace platform {
namespace {

struct ValCase {
    std::string text;
    double value;
};

TEST(Val, ReadsTheNumberAtTheStart) {
    // clang-format off
    const std::vector<ValCase> cases = {
        {"12.5", 12.5}, {"-3", -3.0}, {"+4", 4.0}, {".5", 0.5}, {"-.25", -0.25}, {"5.", 5.0},
        {"007", 7.0}, {"1.2.3", 1.2}, {"12abc", 12.0}, {"1/2", 1.0}, {"1-2", 1.0}, {"1,5", 1.0},
        {" 7", 7.0}, {"\t 7", 7.0}, {"7 8", 7.0}, {"9999.9", 9999.9}, {"3.1", 3.1}, {"0.1", 0.1},
        {"1e3", 1000.0}, {"2E-2", 0.02}, {"1.5e+2x", 150.0}, {"1e", 1.0}, {"1e+", 1.0},
        {"1e-x", 1.0}, {"123456789012345678901234567890", 1.2345678901234568e29},
        {std::string("4\0" "2", 3), 4.0}};
    // clang-format on
    for (const ValCase& c : cases) {
        SCOPED_TRACE("\"" + c.text + "\"");
        EXPECT_EQ(Val(c.text), c.value);
    }
}

TEST(Val, TextWithoutANumberGivesZero) {
    for (const char* text : {"", " ", "abc", "-", "+", ".", "-.", ".e5", "e5", "--5", "- 5", "+-5",
                             "nan", "inf", "infinity", "\xc3\xa9", "x1"}) {
        SCOPED_TRACE(std::string("\"") + text + "\"");
        EXPECT_EQ(Val(text), 0.0);
    }
}

TEST(Val, KeepsTheSignOfZeroAndGoesBeyondTheRangeOfADouble) {
    EXPECT_TRUE(std::signbit(Val("-0")));
    EXPECT_TRUE(std::signbit(Val("-0.000")));
    EXPECT_FALSE(std::signbit(Val("0")));
    EXPECT_EQ(Val("1e999"), HUGE_VAL);
    EXPECT_EQ(Val("-1e999"), -HUGE_VAL);
    EXPECT_EQ(Val("1" + std::string(400, '0')), HUGE_VAL);
    EXPECT_EQ(Val("1e99999999999999999999999"), HUGE_VAL);
    EXPECT_EQ(Val("0.01e311"), HUGE_VAL);
    EXPECT_EQ(Val("0.001e311"), 1e308);
    EXPECT_EQ(Val("1e-999"), 0.0);
    EXPECT_EQ(Val("1000e-400"), 0.0);
    EXPECT_EQ(Val("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_TRUE(std::signbit(Val("-1e-999")));
    EXPECT_EQ(Val("0e99999"), 0.0);
    EXPECT_EQ(Val("1e-99999999999999999999999"), 0.0);
    EXPECT_EQ(Val("4.9e-324"), std::numeric_limits<double>::denorm_min());
}

struct FormatCase {
    double value;
    const char* text;
};

void ExpectFormats(const char* pattern, const std::vector<FormatCase>& cases) {
    for (const FormatCase& c : cases) {
        SCOPED_TRACE(::testing::Message() << pattern << " of " << c.value);
        EXPECT_EQ(Format(c.value, pattern), c.text);
    }
}

TEST(Format, Probability) {
    // clang-format off
    ExpectFormats(".0000", {
        {0.0873128276, ".0873"}, {0.0001, ".0001"}, {0.00012, ".0001"}, {0.00016, ".0002"},
        {0.00005, ".0001"},  // just above the tie in binary
        {0.0500096578, ".0500"}, {0.5, ".5000"}, {0.0, ".0000"}, {0.99994, ".9999"},
        {0.99995, "1.0000"},  // rounds up to 1: the digit is kept
        {0.99999, "1.0000"}, {1.0, "1.0000"}, {-0.00001, "-.0000"}});
    // clang-format on
}

TEST(Format, TStatistic) {
    // clang-format off
    ExpectFormats("+####.000", {
        {1.7978662999, "+1.798"}, {-1.7978662999, "-1.798"}, {15.616595300528, "+15.617"},
        {0.5, "+.500"}, {0.0, "+.000"}, {-0.0, "+.000"}, {0.0004, "+.000"}, {-0.0004, "-.000"},
        {0.9996, "+1.000"}, {-0.9996, "-1.000"}, {1234.5678, "+1234.568"},
        {9999.9996, "+10000.000"}, {12345.678, "+12345.678"}, {1e20, "+100000000000000000000.000"}});
    // clang-format on
}

TEST(Format, ExactTiesRoundAwayFromZero) {
    // 1.0625, 0.0625 and 0.03125 are exact in binary, so they are real ties.
    ExpectFormats("+####.000", {{1.0625, "+1.063"},
                                {-1.0625, "-1.063"},
                                {0.0625, "+.063"},
                                {9.9995, "+9.999"} /* below the tie in binary */,
                                {999.9995, "+1000.000"}});
    ExpectFormats(".0000", {{0.03125, ".0313"}, {0.96875, ".9688"}, {0.99995, "1.0000"}});
    ExpectFormats("0", {{2.5, "3"}, {-2.5, "-3"}, {9.5, "10"}, {0.5, "1"}, {1.5, "2"}});
}

TEST(Format, InfinitiesAndNaN) {
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    ExpectFormats("+####.000", {{inf, "+Inf"}, {-inf, "-Inf"}, {nan, "NaN"}});
    ExpectFormats(".0000", {{inf, "Inf"}, {-inf, "-Inf"}, {nan, "NaN"}});
}

TEST(Format, OtherPatternsOfTheSameForm) {
    ExpectFormats("0.00", {{0.5, "0.50"}, {12.345, "12.35"}, {-0.004, "-0.00"}});
    ExpectFormats("000", {{7.0, "007"}, {1234.0, "1234"}});
    ExpectFormats("+0.0", {{0.0, "+0.0"}});
    ExpectFormats("#", {{42.4, "42"}, {0.2, ""}});
}

TEST(Format, RefusesPatternsItDoesNotKnow) {
    for (const char* pattern : {"#,##0.00", "0.00%", "abc", "0.0#", "-0.0", "0.0+"}) {
        SCOPED_TRACE(pattern);
        EXPECT_THROW(Format(1.0, pattern), UnsupportedFormatException);
    }
}

// A locale whose decimal separator is a comma.
struct CommaPoint : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

TEST(Format, AlwaysUsesAPointWhateverTheLocale) {
    const std::locale previous =
        std::locale::global(std::locale(std::locale::classic(), new CommaPoint));
    const std::string t = Format(-1.7978662999, "+####.000");
    const std::string p = Format(0.0873128276, ".0000");
    const double read = Val("12.5");
    std::locale::global(previous);
    EXPECT_EQ(t, "-1.798");
    EXPECT_EQ(p, ".0873");
    EXPECT_EQ(read, 12.5);

    // Where the machine has a comma locale, the C library's locale is tried as well.
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "fr_FR"}) {
        if (std::setlocale(LC_NUMERIC, name) != nullptr) {
            EXPECT_EQ(Format(0.0873128276, ".0000"), ".0873") << name;
            EXPECT_EQ(Val("12.5"), 12.5) << name;
            std::setlocale(LC_NUMERIC, "C");
        }
    }
}

TEST(Str, PlainDigits) {
    const std::int64_t max = std::numeric_limits<std::int64_t>::max();
    const std::int64_t min = std::numeric_limits<std::int64_t>::min();
    for (const auto& [n, text] :
         std::vector<std::pair<std::int64_t, const char*>>{{0, "0"},
                                                           {1, "1"},
                                                           {20, "20"},
                                                           {19996, "19996"},
                                                           {-5, "-5"},
                                                           {max, "9223372036854775807"},
                                                           {min, "-9223372036854775808"}}) {
        EXPECT_EQ(Str(n), text);
    }
}

TEST(Asc, CodeOfTheFirstCharacter) {
    // clang-format off
    const std::vector<std::pair<std::string, std::int64_t>> cases = {
        {"A", 65}, {"12", 49}, {"\b", 8}, {"\t", 9}, {",", 44}, {"-", 45}, {"9", 57}, {":", 58},
        {std::string(1, '\0'), 0},
        {"\xc3\xa9", 0xE9},              // é
        {"\xe2\x82\xac", 0x20AC},        // €
        {"\xf0\x9f\x98\x80x", 0x1F600}};  // an emoji, then more text
    // clang-format on
    for (const auto& [text, code] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Asc(text), code);
    }
}

TEST(Asc, EmptyAndMalformedTextGiveNoKeyCode) {
    EXPECT_EQ(Asc(""), -1);
    for (const char* text : {"\xff", "\x80", "\xc3", "\xc3x", "\xc0\xaf", "\xe0\x80\xaf",
                             "\xed\xa0\x80", "\xf4\x90\x80\x80", "\xf0\x9f\x98"}) {
        SCOPED_TRACE(::testing::Message() << "byte " << int(static_cast<unsigned char>(*text)));
        EXPECT_EQ(Asc(text), 0xFFFD);
    }
}

TEST(RuntimeBackgroundTask, CountsEachYield) {
    const std::uint64_t before = gBackgroundTaskCount;
    RuntimeBackgroundTask();
    RuntimeBackgroundTask();
    RuntimeBackgroundTask();
    EXPECT_EQ(gBackgroundTaskCount - before, 3u);
}

}  // namespace
}  // namespace platform
