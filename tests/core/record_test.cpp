#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/core/record.h"
#include "platform/core/record_encoder.h"
#include "tests/core/fake_objects.h"

namespace {

using namespace platform::rec;
using fake::FakeControl;
using platform::ApplyRecord;
using platform::RecordFormatException;
using Names = std::vector<std::string>;

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
    return std::string(std::bit_cast<std::array<char, 8>>(v).data(), 8);  // little-endian host
}

// A string of N letters that the encoder can take as a constant.
template <std::size_t N>
struct Filler {
    std::array<char, N> chars{};
    constexpr Filler() { chars.fill('x'); }
    constexpr std::string_view view() const { return {chars.data(), N}; }
};
constexpr Filler<245> kFill245;  // "Text " + count + 245 letters = 254 bytes
constexpr Filler<246> kFill246;
constexpr Filler<600> kFill600;

TEST(RecordEncoder, WritesTheLeadingByteThenEachFieldLittleEndian) {
    constexpr auto record =
        PLATFORM_RECORD(Int("Period", 4000), Int("Left", -2), Bool("Enabled", true),
                        Enum8("FontUnit", 200), Color("TextColor", 0xCC0000),
                        Single("FontSize", 12.0f), Double("LineSpacing", 1.0), Str("Text", "© A"));
    EXPECT_EQ(std::string(record.view()),
              Bytes({107}) + "Period " + Bytes({0xA0, 0x0F, 0, 0, 0, 0, 0, 0}) + "Left " +
                  Bytes({0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}) + "Enabled " +
                  Bytes({1}) + "FontUnit " + Bytes({200}) + "TextColor " + Bytes({0, 0, 0xCC, 0}) +
                  "FontSize " + Bytes({0, 0, 0x40, 0x41}) + "LineSpacing " +
                  Bytes({0, 0, 0, 0, 0, 0, 0xF0, 0x3F}) + "Text " + Bytes({4, 0, 0, 0}) +
                  "\xC2\xA9 A");
    EXPECT_EQ(std::string(PLATFORM_RECORD().view()), Bytes({0}));
    // The leading byte is the length up to 254, and 255 from there on.
    EXPECT_EQ(static_cast<unsigned char>(PLATFORM_RECORD(Str("Text", kFill245.view())).view()[0]),
              254u);
    EXPECT_EQ(static_cast<unsigned char>(PLATFORM_RECORD(Str("Text", kFill246.view())).view()[0]),
              255u);
}

TEST(RecordReader, EveryFormComesBackExactlyInAnyOrder) {
    constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
    // A string's bytes are skipped by count, never scanned: "Top 1" inside it is no property.
    constexpr auto forward = PLATFORM_RECORD(
        Str("Text", ""), Str("Caption", "Top 1 © 2024"), Int("Left", kMin), Int("Top", 192),
        Int("Value", 7), Bool("Enabled", true), Enum8("FontUnit", 255),
        Color("TextColor", 0xCC0000), Single("FontSize", 12.0f), Double("LineSpacing", 1.25),
        Bool("Composite", false), Int("MacProcID", 0));
    constexpr auto reversed = PLATFORM_RECORD(
        Int("MACPROCID", 0), Bool("composite", false), Double("LineSpacing", 1.25),
        Single("FontSize", 12.0f), Color("TextColor", 0xCC0000), Enum8("FontUnit", 255),
        Bool("ENABLED", true), Int("Value", 7), Int("Top", 192), Int("left", kMin),
        Str("Caption", "Top 1 © 2024"), Str("Text", ""));
    const fake::State expected{.left = kMin,
                               .top = 192,
                               .value_int = 7,
                               .enabled = true,
                               .font_unit = 255,
                               .text_color = {0xCC0000},
                               .font_size = 12.0f,
                               .line_spacing = 1.25,
                               .text = "",
                               .caption = "Top 1 \xC2\xA9 2024",
                               .value_text = ""};
    for (std::string_view record : {forward.view(), reversed.view()}) {
        FakeControl control;
        control.state.text = "old";
        ApplyRecord(control, record);
        EXPECT_EQ(control.state, expected);
        EXPECT_EQ(control.applied.size(), 10u);  // Composite and MacProcID reach no setter
    }
}

TEST(RecordReader, DoublesAreBitExact) {
    for (double d : {0.1, -1e300, std::numeric_limits<double>::denorm_min(), -0.0,
                     std::numeric_limits<double>::quiet_NaN()}) {
        FakeControl control;
        ApplyRecord(control, HandMade("LineSpacing " + Int64(std::bit_cast<std::int64_t>(d))));
        EXPECT_EQ(std::bit_cast<std::uint64_t>(control.state.line_spacing),
                  std::bit_cast<std::uint64_t>(d));
    }
}

TEST(RecordReader, TheClassDecidesTheFormOfValueAndRepeatedNamesApplyEachTime) {
    constexpr auto labelRecord = PLATFORM_RECORD(Str("Value", "r"), Bool("Enabled", true));
    fake::FakeLabel label;
    ApplyRecord(label, labelRecord.view());
    EXPECT_EQ(label.state.value_text, "r");
    EXPECT_TRUE(label.state.enabled);
    fake::FakeRadio radio;
    ApplyRecord(radio, PLATFORM_RECORD(Bool("Value", true), Int("Left", 5), Int("Left", 2)).view());
    EXPECT_TRUE(radio.state.value_bool);
    EXPECT_EQ(radio.state.left, 2);
    EXPECT_EQ(radio.applied, (Names{"Value", "Left", "Left"}));
    // Read as a boolean, the label's string count leaves the reader inside the count's bytes.
    fake::FakeRadio misread;
    EXPECT_THROW(ApplyRecord(misread, labelRecord.view()), RecordFormatException);
}

TEST(RecordReader, TheLengthComesFromTheViewNotTheLeadingByte) {
    constexpr auto longRecord =
        PLATFORM_RECORD(Str("Text", kFill600.view()), Int("Left", 4), Str("Caption", "end"));
    FakeControl control;
    ApplyRecord(control, longRecord.view());
    EXPECT_EQ(control.state.text.size(), 600u);
    EXPECT_EQ(control.state.caption, "end");

    for (int leading : {0x00, 0x05, 0xFF}) {
        std::string record = HandMade("Left " + Int64(52) + "Enabled " + Bytes({0}));
        record[0] = static_cast<char>(leading);
        FakeControl other;
        other.state.enabled = true;
        ApplyRecord(other, record);
        EXPECT_EQ(other.state.left, 52);
        EXPECT_FALSE(other.state.enabled);  // a trailing false is a value too
    }
}

TEST(RecordReader, ABadRecordFailsNamedAndKeepsWhatCameBefore) {
    // clang-format off
    const std::pair<std::string, const char*> tails[] = {
        {"Top " + Bytes({1, 2, 3}), "past the end"}, {"Enabled ", "past the end"},
        {"FontSize " + Bytes({0, 0, 0x40}), "past the end"},
        {"Text " + Bytes({10, 0, 0, 0}) + "abc", "past the end"},
        {"Text " + Bytes({0xFF, 0xFF, 0xFF, 0xFF}), "past the end"},
        {"Text " + Bytes({0, 0}), "past the end"}, {"MacProcID " + Bytes({0, 0}), "past the end"},
        {"Bogus " + Int64(0), "Bogus is no property of FakeControl"},
        {"Top", ""}, {" " + Int64(0), ""}, {"To1p " + Int64(0), ""}, {"T\xC3\xB6p " + Int64(0), ""}};
    // clang-format on
    for (const auto& [tail, message] : tails) {
        SCOPED_TRACE(tail);
        FakeControl control;
        try {
            ApplyRecord(control, HandMade("Left " + Int64(1) + tail));
            ADD_FAILURE() << "accepted";
        } catch (const RecordFormatException& e) {
            EXPECT_NE(std::string(e.what()).find(message), std::string::npos) << e.what();
        }
        EXPECT_EQ(control.applied, Names{"Left"});
    }
    FakeControl control;
    EXPECT_THROW(ApplyRecord(control, ""), RecordFormatException);
}

TEST(RecordReader, ASetterFailureLeavesTheReaderAsTheSameObject) {
    FakeControl control;
    try {
        ApplyRecord(control, PLATFORM_RECORD(Int("Left", 1), Int("Fuse", 3), Int("Top", 4)).view());
        ADD_FAILURE() << "the failure was lost";
    } catch (const platform::RuntimeException& e) {
        EXPECT_EQ(&e, fake::Blown::last);
    }
    EXPECT_EQ(control.applied, Names{"Left"});
}

}  // namespace
