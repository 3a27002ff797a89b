#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <locale>
#include <string>
#include <tuple>
#include <vector>

#include "platform/core/failure.h"
#include "platform/core/text.h"

namespace platform {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

// Every case runs under a locale whose decimal separator is a comma, which must change nothing:
// numbers are read and shown with a point.
class Text : public testing::Test {
    struct CommaPoint : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
    };
    const std::locale previous_ =
        std::locale::global(std::locale(std::locale::classic(), new CommaPoint));
    void TearDown() override { std::locale::global(previous_); }
};

TEST_F(Text, ValReadsTheNumberAtTheStartAndZeroWithoutOne) {
    // clang-format off
    const std::vector<std::pair<std::string, double>> cases = {
        {"12.5", 12.5}, {"-3", -3.0}, {".5", 0.5}, {"-.25", -0.25}, {"007", 7.0}, {"1.2.3", 1.2},
        {"12abc", 12.0}, {"1,5", 1.0}, {"\t 7", 7.0}, {"1e3", 1000.0}, {"1.5e+2x", 150.0},
        {"1e", 1.0}, {"1e-x", 1.0}, {"123456789012345678901234567890", 1.2345678901234568e29},
        {std::string("4\0" "2", 3), 4.0}, {"1e999", kInf}, {"-1e999", -kInf},
        {"1" + std::string(400, '0'), kInf}, {"0.001e311", 1e308}, {"1e-999", 0.0},
        {"0." + std::string(400, '0') + "1", 0.0}, {"4.9e-324", 4.9e-324},
        // no number at the start
        {"", 0.0}, {" ", 0.0}, {"abc", 0.0}, {"+", 0.0}, {".", 0.0}, {".e5", 0.0}, {"--5", 0.0},
        {"+-5", 0.0}, {"inf", 0.0}, {"nan", 0.0}, {"\xc3\xa9", 0.0}};
    // clang-format on
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(Val(text), value) << '"' << text << '"';
    }
    EXPECT_TRUE(std::signbit(Val("-0.000")));
    EXPECT_TRUE(std::signbit(Val("-1e-999")));
}

TEST_F(Text, FormatRoundsHalfAwayFromZeroIntoThePattern) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const char *p = ".0000", *t = "+####.000";
    // clang-format off
    const std::tuple<const char*, double, const char*> cases[] = {
        {p, 0.0873128276, ".0873"}, {p, 0.00012, ".0001"}, {p, 0.00016, ".0002"},
        {p, 0.00005, ".0001"}, {p, 0.5, ".5000"}, {p, 0.0, ".0000"}, {p, 0.99994, ".9999"},
        {p, 0.99995, "1.0000"}, {p, -0.00001, "-.0000"}, {p, 0.03125, ".0313"}, {p, kInf, "Inf"},
        {p, nan, "NaN"}, {t, 1.7978662999, "+1.798"}, {t, -1.7978662999, "-1.798"},
        {t, 0.5, "+.500"}, {t, -0.0, "+.000"}, {t, -0.0004, "-.000"}, {t, 0.9996, "+1.000"},
        {t, 12345.678, "+12345.678"}, {t, 1.0625, "+1.063"}, {t, -1.0625, "-1.063"},
        {t, 9.9995, "+9.999"} /* below the tie in binary */, {t, -kInf, "-Inf"}, {t, kInf, "+Inf"},
        {t, 1e20, "+100000000000000000000.000"}, {"0", 2.5, "3"}, {"0", -2.5, "-3"},
        {"0.00", 12.345, "12.35"}, {"000", 7.0, "007"}, {"+0.0", 0.0, "+0.0"}, {"#", 0.2, ""}};
    // clang-format on
    for (const auto& [pattern, value, text] : cases) {
        EXPECT_EQ(Format(value, pattern), text) << pattern << " of " << value;
    }
    for (const char* pattern : {"#,##0.00", "0.00%", "abc", "0.0#", "-0.0", "0.0+"}) {
        EXPECT_THROW(Format(1.0, pattern), UnsupportedFormatException) << pattern;
    }
}

TEST_F(Text, AscGivesTheCodeOfTheFirstCharacterOrReplacementForMalformedText) {
    // clang-format off
    const std::vector<std::pair<std::string, std::int64_t>> cases = {
        {"A", 65}, {"12", 49}, {"\b", 8}, {",", 44}, {std::string(1, '\0'), 0}, {"", -1},
        {"\xc3\xa9", 0xE9}, {"\xe2\x82\xac", 0x20AC}, {"\xf0\x9f\x98\x80x", 0x1F600},
        {"\xff", 0xFFFD}, {"\x80", 0xFFFD}, {"\xc3", 0xFFFD}, {"\xc3x", 0xFFFD},
        {"\xc0\xaf", 0xFFFD}, {"\xe0\x80\xaf", 0xFFFD}, {"\xed\xa0\x80", 0xFFFD},
        {"\xf4\x90\x80\x80", 0xFFFD}, {"\xf0\x9f\x98", 0xFFFD}};
    // clang-format on
    for (const auto& [text, code] : cases) {
        EXPECT_EQ(Asc(text), code) << testing::PrintToString(text);
    }
}

}  // namespace
}  // namespace platform
