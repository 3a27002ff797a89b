#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <tuple>

#include "platform/core/record.h"
#include "platform/core/record_encoder.h"
#include "tests/core/fake_objects.h"

namespace {

using namespace platform::rec;
using fake::FakeControl;
using fake::FakeLabel;
using fake::FakeRadio;
using platform::ApplyRecord;
using platform::Colour;
using platform::RecordFormatException;

std::string Bytes(std::initializer_list<int> bytes) {
    std::string out;
    for (int b : bytes) {
        out.push_back(static_cast<char>(b));
    }
    return out;
}

// A hand-made record: the leading byte, then `body` as it stands.
std::string HandMade(std::string_view body) {
    return static_cast<char>(body.size() < 255 ? body.size() : 255) + std::string(body);
}

std::string Int64(std::int64_t v) {
    std::string out;
    for (int i = 0; i < 8; ++i) {
        out.push_back(static_cast<char>((static_cast<std::uint64_t>(v) >> (8 * i)) & 0xFF));
    }
    return out;
}

constexpr auto kTimer1Record = PLATFORM_RECORD(Int("Period", 4000), Int("RunMode", 1));

TEST(RecordEncoder, TimerRecordBytes) {
    static_assert(kTimer1Record.view().size() == 32);
    const std::string expected = Bytes({0x1F}) + "Period " + Bytes({0xA0, 0x0F, 0, 0, 0, 0, 0, 0}) +
                                 "RunMode " + Bytes({0x01, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(std::string(kTimer1Record.view()), expected);
}

TEST(RecordEncoder, FixedFormsStoreLittleEndian) {
    constexpr auto record = PLATFORM_RECORD(
        Color("TextColor", 0xCC0000), Color("BackgroundColor", 0xFFFFFF), Single("FontSize", 12.0f),
        Bool("Enabled", true), Enum8("FontUnit", 200), Int("Left", -2), Double("LineSpacing", 1.0));
    const std::string expected = Bytes({99}) + "TextColor " + Bytes({0x00, 0x00, 0xCC, 0x00}) +
                                 "BackgroundColor " + Bytes({0xFF, 0xFF, 0xFF, 0x00}) +
                                 "FontSize " + Bytes({0x00, 0x00, 0x40, 0x41}) + "Enabled " +
                                 Bytes({1}) + "FontUnit " + Bytes({200}) + "Left " +
                                 Bytes({0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}) +
                                 "LineSpacing " + Bytes({0, 0, 0, 0, 0, 0, 0xF0, 0x3F});
    EXPECT_EQ(std::string(record.view()), expected);
}

TEST(RecordEncoder, StringsAreByteCountThenBytes) {
    constexpr auto empty = PLATFORM_RECORD(Str("Text", ""));
    EXPECT_EQ(std::string(empty.view()), Bytes({9}) + "Text " + Bytes({0, 0, 0, 0}));

    constexpr auto copyright = PLATFORM_RECORD(Str("Text", "© A B"));
    EXPECT_EQ(std::string(copyright.view()),
              Bytes({15}) + "Text " + Bytes({6, 0, 0, 0}) + "\xC2\xA9 A B");
}

// A string of `N` letters, as a namespace-scope constant the encoder can take.
template <std::size_t N>
struct Filler {
    std::array<char, N> chars{};
    constexpr Filler() { chars.fill('x'); }
    constexpr std::string_view view() const { return {chars.data(), N}; }
};
constexpr Filler<245> kFill245;  // "Text " + count + 245 = 254 bytes
constexpr Filler<246> kFill246;
constexpr Filler<247> kFill247;
constexpr Filler<600> kFill600;

TEST(RecordEncoder, LeadingByteIsLengthCappedAt255) {
    constexpr auto r254 = PLATFORM_RECORD(Str("Text", kFill245.view()));
    constexpr auto r255 = PLATFORM_RECORD(Str("Text", kFill246.view()));
    constexpr auto r256 = PLATFORM_RECORD(Str("Text", kFill247.view()));
    for (const auto& [record, size, leading] : {std::tuple{r254.view(), 255u, 254u},
                                                {r255.view(), 256u, 255u},
                                                {r256.view(), 257u, 255u}}) {
        EXPECT_EQ(record.size(), size);
        EXPECT_EQ(static_cast<unsigned char>(record[0]), leading);
    }
    EXPECT_EQ(std::string(PLATFORM_RECORD().view()), Bytes({0}));
}

TEST(RecordRoundTrip, EveryFormComesBackExactly) {
    constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
    // A string's bytes are skipped by count, never scanned: "Top 1" inside it is no property.
    constexpr auto record = PLATFORM_RECORD(
        Str("Text", ""), Str("Caption", "Top 1 © 2024"), Int("Left", kMin), Int("Top", kMax),
        Int("Index", -2147483648LL), Int("Value", 7), Bool("Enabled", true),
        Bool("MultiLine", false), Enum8("FontUnit", 255), Color("TextColor", 0xCC0000),
        Color("BackgroundColor", 0x123456), Single("FontSize", 12.0f), Double("LineSpacing", 1.25));
    FakeControl control;
    control.state.multi_line = true;
    control.state.text = "old";
    ApplyRecord(control, record.view());
    // Index takes eight bytes, not four: the properties after it are read from the right place.
    EXPECT_EQ(control.state, (fake::State{.left = kMin,
                                          .top = kMax,
                                          .index = -2147483648LL,
                                          .value_int = 7,
                                          .enabled = true,
                                          .multi_line = false,
                                          .font_unit = 255,
                                          .text_color = {0xCC0000},
                                          .background_color = {0x123456},
                                          .font_size = 12.0f,
                                          .line_spacing = 1.25,
                                          .text = "",
                                          .caption = "Top 1 \xC2\xA9 2024",
                                          .value_text = ""}));
    EXPECT_EQ(control.applied.size(), 13u);
    EXPECT_EQ(control.applied[2], "Left");
}

TEST(RecordRoundTrip, DoublesAreBitExact) {
    for (double d : {0.1, -1e300, std::numeric_limits<double>::denorm_min(), -0.0}) {
        FakeControl control;
        ApplyRecord(control, HandMade("LineSpacing " + Int64(std::bit_cast<std::int64_t>(d))));
        EXPECT_EQ(std::bit_cast<std::uint64_t>(control.state.line_spacing),
                  std::bit_cast<std::uint64_t>(d));
    }
    constexpr auto nan =
        PLATFORM_RECORD(Double("LineSpacing", std::numeric_limits<double>::quiet_NaN()));
    FakeControl control;
    ApplyRecord(control, nan.view());
    EXPECT_TRUE(std::isnan(control.state.line_spacing));
}

constexpr auto kForward = PLATFORM_RECORD(
    Int("Left", 52), Int("Top", 192), Int("Index", -1), Bool("Enabled", true),
    Bool("Multiline", true), Enum8("FontUnit", 1), Color("TextColor", 0x999999),
    Color("BackgroundColor", 0xFFFFFF), Single("FontSize", 12.0f), Double("LineSpacing", 1.5),
    Str("Text", "Mean"), Str("Caption", ""), Bool("Composite", false), Int("MacProcID", 0));
constexpr auto kReversed = PLATFORM_RECORD(
    Int("MacProcID", 0), Bool("Composite", false), Str("Caption", ""), Str("Text", "Mean"),
    Double("LineSpacing", 1.5), Single("FontSize", 12.0f), Color("BackgroundColor", 0xFFFFFF),
    Color("TextColor", 0x999999), Enum8("FontUnit", 1), Bool("Multiline", true),
    Bool("Enabled", true), Int("Index", -1), Int("Top", 192), Int("Left", 52));

TEST(RecordReader, OrderCarriesNoMeaning) {
    FakeControl forward, reversed;
    ApplyRecord(forward, kForward.view());
    ApplyRecord(reversed, kReversed.view());
    EXPECT_EQ(forward.state, reversed.state);
    EXPECT_EQ(forward.state.top, 192);
    EXPECT_EQ(forward.state.text, "Mean");
    EXPECT_EQ(forward.applied.size(), 12u);  // Composite and MacProcID reach no setter
}

TEST(RecordReader, NamesMatchIgnoringCaseAndIncludeBaseClasses) {
    constexpr auto record =
        PLATFORM_RECORD(Bool("Multiline", true), Int("LEFT", 9), Str("Value", "Untitled"));
    FakeLabel label;
    ApplyRecord(label, record.view());
    EXPECT_TRUE(label.state.multi_line);
    EXPECT_EQ(label.state.left, 9);
    EXPECT_EQ(label.state.value_text, "Untitled");
}

TEST(RecordReader, RepeatedNameIsAppliedEachTimeAndMacProcIDNever) {
    FakeControl control;
    ApplyRecord(control, HandMade("macPROCid " + Int64(-1) + "Left " + Int64(5) + "Enabled " +
                                  Bytes({1}) + "Left " + Int64(2)));
    EXPECT_EQ(control.state.left, 2);
    EXPECT_EQ(control.applied, (std::vector<std::string>{"Left", "Enabled", "Left"}));
}

TEST(RecordReader, ValueFormIsDecidedByTheClass) {
    constexpr auto labelRecord = PLATFORM_RECORD(Str("Value", "r"), Bool("Enabled", true));
    constexpr auto radioRecord = PLATFORM_RECORD(Bool("Value", true), Bool("Enabled", true));
    FakeLabel label;
    FakeRadio radio;
    ApplyRecord(label, labelRecord.view());
    ApplyRecord(radio, radioRecord.view());
    EXPECT_EQ(label.state.value_text, "r");
    EXPECT_TRUE(radio.state.value_bool);
    EXPECT_TRUE(label.state.enabled && radio.state.enabled);

    // Read as a boolean, the label's string count leaves the reader inside the count's bytes.
    FakeRadio misread;
    EXPECT_THROW(ApplyRecord(misread, labelRecord.view()), RecordFormatException);
}

TEST(RecordReader, LengthComesFromTheStringNotTheLeadingByte) {
    constexpr auto longRecord =
        PLATFORM_RECORD(Str("Text", kFill600.view()), Int("Left", 4), Str("Caption", "end"));
    ASSERT_EQ(static_cast<unsigned char>(longRecord.view()[0]), 0xFFu);
    FakeControl control;
    ApplyRecord(control, longRecord.view());
    EXPECT_EQ(control.state.text.size(), 600u);
    EXPECT_EQ(control.state.caption, "end");

    // A short record is read to its end whatever its leading byte says.
    ASSERT_EQ(static_cast<unsigned char>(kForward.view()[0]), kForward.view().size() - 1);
    for (int leading : {0x00, 0x05, 0xFF}) {
        std::string record(kForward.view());
        record[0] = static_cast<char>(leading);
        FakeControl other;
        ApplyRecord(other, record);
        EXPECT_EQ(other.state.left, 52);
    }
}

TEST(RecordReader, TrailingFalseEmptyStringAndOtherBooleanBytesAreValues) {
    constexpr auto record = PLATFORM_RECORD(Bool("Enabled", false), Str("Text", ""));
    FakeControl control;
    control.state.enabled = true;
    control.state.text = "x";
    ApplyRecord(control, record.view());
    EXPECT_FALSE(control.state.enabled);
    EXPECT_EQ(control.state.text, "");
    ApplyRecord(control, HandMade("Enabled " + Bytes({2})));
    EXPECT_TRUE(control.state.enabled);

    FakeControl untouched;  // the leading byte alone
    ApplyRecord(untouched, Bytes({0}));
    EXPECT_TRUE(untouched.applied.empty());
}

// Applies `record` to `control` and returns the failure's message; fails the test if the
// record was read without a RecordFormatException.
std::string FormatFailure(std::string_view record, FakeControl& control) {
    try {
        ApplyRecord(control, record);
    } catch (const RecordFormatException& e) {
        return e.what();
    }
    ADD_FAILURE() << "record was accepted";
    return {};
}

TEST(RecordFormat, TruncatedValuesFailAndKeepEarlierProperties) {
    const std::string leftThen = "Left " + Int64(1);
    for (const std::string& tail : {
             std::string("Top ") + Bytes({1, 2, 3}),               // integer of 3 bytes
             std::string("Enabled "),                              // boolean with no byte
             std::string("FontSize ") + Bytes({0, 0, 0x40}),       // single of 3 bytes
             std::string("Text ") + Bytes({10, 0, 0, 0}) + "abc",  // count past the end
             std::string("Text ") + Bytes({0xFF, 0xFF, 0xFF, 0xFF}),
             std::string("Text ") + Bytes({0, 0}),  // count itself cut short
             std::string("MacProcID ") + Bytes({0, 0, 0, 0}),
         }) {
        FakeControl control;
        const std::string message = FormatFailure(HandMade(leftThen + tail), control);
        EXPECT_NE(message.find("past the end"), std::string::npos) << message;
        EXPECT_EQ(control.state.left, 1);
        EXPECT_EQ(control.applied, (std::vector<std::string>{"Left"}));
    }
}

TEST(RecordFormat, BadNamesFail) {
    for (const std::string& tail : {
             std::string("Top"),                     // no blank before the end
             std::string(" ") + Int64(0),            // empty name
             std::string("To1p ") + Int64(0),        // a digit
             std::string("T\xC3\xB6p ") + Int64(0),  // a letter outside ASCII
         }) {
        FakeControl control;
        FormatFailure(HandMade("Left " + Int64(1) + tail), control);
        EXPECT_EQ(control.applied, (std::vector<std::string>{"Left"}));
    }
}

TEST(RecordFormat, EmptyRecordAndUnknownNameAreNamed) {
    FakeControl control;
    EXPECT_NE(FormatFailure("", control).find("empty"), std::string::npos);
    FakeLabel label;
    const std::string message =
        FormatFailure(HandMade("Left " + Int64(1) + "Bogus " + Int64(0)), label);
    EXPECT_NE(message.find("Bogus is no property of FakeLabel"), std::string::npos) << message;
    EXPECT_EQ(label.state.left, 1);
}

}  // namespace
