#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>
#include <locale>
#include <string>
#include <vector>

#include "platform/core/failure.h"
#include "platform/core/text.h"

namespace platform {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(Val, ReadsTheNumberAtTheStartAndZeroWithoutOne) {
    // clang-format off
    const std::vector<std::pair<std::string, double>> cases = {
        {"12.5", 12.5}, {"-3", -3.0}, {"+4", 4.0}, {".5", 0.5}, {"-.25", -0.25}, {"5.", 5.0},
        {"007", 7.0}, {"1.2.3", 1.2}, {"12abc", 12.0}, {"1/2", 1.0}, {"1-2", 1.0}, {"1,5", 1.0},
        {"\t 7", 7.0}, {"7 8", 7.0}, {"3.1", 3.1}, {"1e3", 1000.0}, {"2E-2", 0.02},
        {"1.5e+2x", 150.0}, {"1e", 1.0}, {"1e+", 1.0}, {"1e-x", 1.0},
        {"123456789012345678901234567890", 1.2345678901234568e29}, {std::string("4\0" "2", 3), 4.0},
        {"1e999", kInf}, {"-1e999", -kInf}, {"1" + std::string(400, '0'), kInf}, {"0.01e311", kInf},
        {"0.001e311", 1e308}, {"1e-999", 0.0}, {"0." + std::string(400, '0') + "1", 0.0},
        {"1e-99999999999999999999999", 0.0},
        {"4.9e-324", std::numeric_limits<double>::denorm_min()},
        // no number at the start
        {"", 0.0}, {" ", 0.0}, {"abc", 0.0}, {"-", 0.0}, {".", 0.0}, {"-.", 0.0}, {".e5", 0.0},
        {"e5", 0.0}, {"--5", 0.0}, {"- 5", 0.0}, {"+-5", 0.0}, {"nan", 0.0}, {"inf", 0.0},
        {"\xc3\xa9", 0.0}, {"x1", 0.0}
    };
    // clang-format on
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(Val(text), value) << '"' << text << '"';
    }
    EXPECT_TRUE(std::signbit(Val("-0.000")));
    EXPECT_TRUE(std::signbit(Val("-1e-999")));
    EXPECT_FALSE(std::signbit(Val("0")));
}

TEST(Format, RoundsHalfAwayFromZeroIntoThePattern) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        const char* pattern;
        double value;
        const char* text;
    };
    // clang-format off
    const Case cases[] = {
        {".0000", 0.0873128276, ".0873"}, {".0000", 0.00012, ".0001"}, {".0000", 0.00016, ".0002"},
        {".0000", 0.00005, ".0001"}, {".0000", 0.5, ".5000"}, {".0000", 0.0, ".0000"},
        {".0000", 0.99994, ".9999"}, {".0000", 0.99995, "1.0000"}, {".0000", -0.00001, "-.0000"},
        {".0000", 0.03125, ".0313"}, {".0000", kInf, "Inf"}, {".0000", nan, "NaN"},
        {"+####.000", 1.7978662999, "+1.798"}, {"+####.000", -1.7978662999, "-1.798"},
        {"+####.000", 0.5, "+.500"}, {"+####.000", -0.0, "+.000"}, {"+####.000", -0.0004, "-.000"},
        {"+####.000", 0.9996, "+1.000"}, {"+####.000", 12345.678, "+12345.678"},
        {"+####.000", 1.0625, "+1.063"}, {"+####.000", -1.0625, "-1.063"},
        {"+####.000", 9.9995, "+9.999"},  // below the tie in binary
        {"+####.000", 1e20, "+100000000000000000000.000"}, {"+####.000", -kInf, "-Inf"},
        {"+####.000", kInf, "+Inf"}, {"0", 2.5, "3"}, {"0", -2.5, "-3"}, {"0.00", 12.345, "12.35"},
        {"000", 7.0, "007"}, {"000", 1234.0, "1234"}, {"+0.0", 0.0, "+0.0"}, {"#", 0.2, ""}
    };
    // clang-format on
    for (const Case& c : cases) {
        EXPECT_EQ(Format(c.value, c.pattern), c.text) << c.pattern << " of " << c.value;
    }
    for (const char* pattern : {"#,##0.00", "0.00%", "abc", "0.0#", "-0.0", "0.0+"}) {
        EXPECT_THROW(Format(1.0, pattern), UnsupportedFormatException) << pattern;
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
    const double read = Val("12.5");
    std::locale::global(previous);
    EXPECT_EQ(t, "-1.798");
    EXPECT_EQ(read, 12.5);
    // Where the machine has a comma locale, the C library's locale is tried as well.
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8"}) {
        if (std::setlocale(LC_NUMERIC, name) != nullptr) {
            EXPECT_EQ(Format(0.0873128276, ".0000"), ".0873") << name;
            EXPECT_EQ(Val("12.5"), 12.5) << name;
            std::setlocale(LC_NUMERIC, "C");
        }
    }
}

TEST(Str, PlainDigits) {
    EXPECT_EQ(Str(0), "0");
    EXPECT_EQ(Str(19996), "19996");
    EXPECT_EQ(Str(-5), "-5");
    EXPECT_EQ(Str(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(Asc, CodeOfTheFirstCharacterOrReplacementForMalformedText) {
    // clang-format off
    const std::vector<std::pair<std::string, std::int64_t>> cases = {
        {"A", 65}, {"12", 49}, {"\b", 8}, {",", 44}, {std::string(1, '\0'), 0}, {"", -1},
        {"\xc3\xa9", 0xE9}, {"\xe2\x82\xac", 0x20AC}, {"\xf0\x9f\x98\x80x", 0x1F600},
        {"\xff", 0xFFFD}, {"\x80", 0xFFFD}, {"\xc3", 0xFFFD}, {"\xc3x", 0xFFFD},
        {"\xc0\xaf", 0xFFFD}, {"\xe0\x80\xaf", 0xFFFD}, {"\xed\xa0\x80", 0xFFFD},
        {"\xf4\x90\x80\x80", 0xFFFD}, {"\xf0\x9f\x98", 0xFFFD}
    };
    // clang-format on
    for (const auto& [text, code] : cases) {
        EXPECT_EQ(Asc(text), code) << testing::PrintToString(text);
    }
}

}  // namespace
}  // namespace platform
