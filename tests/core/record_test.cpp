// Layout records and the class tables they are applied through. The fake
// controls log each setter call as "Name=value", in order.
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "platform/core/object.h"
#include "platform/core/record.h"
#include "platform/core/record_encoder.h"

namespace {

using namespace platform::rec;
using platform::ApplyRecord;
using platform::Property;
using platform::RecordFormatException;
using Lines = std::vector<std::string>;
using namespace std::string_literals;

// A property of every record form; Value is an integer here.
class FakeControl : public platform::Object {
  public:
    static const platform::ClassInfo& StaticClass() {
        // clang-format off
        static const platform::ClassInfo info{"FakeControl", &Object::StaticClass(), {
            Property<&FakeControl::SetLeft>("Left"), Property<&FakeControl::SetValue>("Value"),
            Property<&FakeControl::SetEnabled>("Enabled"), Property<&FakeControl::SetText>("Text"),
            Property<&FakeControl::SetFontUnit>("FontUnit"),
            Property<&FakeControl::SetTextColor>("TextColor"),
            Property<&FakeControl::SetFontSize>("FontSize"),
            Property<&FakeControl::SetLineSpacing>("LineSpacing"),
            platform::StoredOnly("Composite", platform::Form::Boolean)}};
        // clang-format on
        return info;
    }
    const platform::ClassInfo& Class() const override { return StaticClass(); }

    void SetLeft(std::int64_t v) { Log("Left", std::to_string(v)); }
    void SetValue(std::int64_t v) { Log("Value", std::to_string(v)); }
    void SetEnabled(bool v) { Log("Enabled", v ? "1" : "0"); }
    void SetFontUnit(std::uint8_t v) { Log("FontUnit", std::to_string(v)); }
    void SetTextColor(platform::Colour v) { Log("TextColor", std::to_string(v.rgb)); }
    void SetFontSize(float v) { Log("FontSize", std::to_string(v)); }
    void SetLineSpacing(double v) { Log("LineSpacing", std::to_string(v)); }
    void SetText(const std::string& v) { Log("Text", v); }
    void Log(const char* name, const std::string& value) {
        applied.push_back(name + ("=" + value));
    }

    Lines applied;
};

// Value is a string here, as on the real label.
class FakeLabel : public FakeControl {
  public:
    static const platform::ClassInfo& StaticClass() {
        static const platform::ClassInfo info{
            "FakeLabel", &FakeControl::StaticClass(), {Property<&FakeLabel::SetValue>("Value")}};
        return info;
    }
    const platform::ClassInfo& Class() const override { return StaticClass(); }
    void SetValue(const std::string& v) { Log("Value", v); }
};

// A hand-made record: the leading byte, then `body` as it stands.
std::string HandMade(std::string_view body) {
    return static_cast<char>(body.size() < 255 ? body.size() : 255) + std::string(body);
}

std::string Int64(std::int64_t v) {
    return std::string(std::bit_cast<std::array<char, 8>>(v).data(), 8);  // little-endian host
}

Lines Applied(FakeControl&& control, std::string_view record) {
    ApplyRecord(control, record);
    return control.applied;
}

// A string of 600 letters that the encoder can take as a constant.
struct Filler {
    std::array<char, 600> chars{};
    constexpr Filler() { chars.fill('x'); }
    constexpr std::string_view view() const { return {chars.data(), chars.size()}; }
};
constexpr Filler kFill;

TEST(RecordEncoder, WritesTheLeadingByteThenEachFieldLittleEndian) {
    constexpr auto record =
        PLATFORM_RECORD(Int("Period", 4000), Int("Left", -2), Bool("Enabled", true),
                        Enum8("FontUnit", 200), Color("TextColor", 0xCC0000),
                        Single("FontSize", 12.0f), Double("LineSpacing", 1.0), Str("Text", "© A"));
    // clang-format off
    EXPECT_EQ(std::string(record.view()),
              "\x6B" "Period \xA0\x0F\0\0\0\0\0\0" "Left \xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF"
              "Enabled \x01" "FontUnit \xC8" "TextColor \0\0\xCC\0" "FontSize \0\0\x40\x41"
              "LineSpacing \0\0\0\0\0\0\xF0\x3F" "Text \x04\0\0\0" "\xC2\xA9 A"s);
    // clang-format on
    EXPECT_EQ(std::string(PLATFORM_RECORD().view()), "\0"s);
    EXPECT_EQ(PLATFORM_RECORD(Str("Text", kFill.view())).view()[0], '\xFF');  // capped at 255
}

TEST(RecordReader, AppliesEveryFormInRecordOrderWhateverTheCaseOfTheNames) {
    constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
    // A string's bytes are skipped by count, never scanned: "Left 1" inside it is no property.
    constexpr auto record = PLATFORM_RECORD(
        Str("Text", "Left 1 © 2024"), Int("LEFT", kMin), Int("Value", 7), Bool("enabled", true),
        Enum8("FontUnit", 255), Color("TextColor", 0xCC0000), Single("FontSize", 12.5f),
        Double("LineSpacing", 1.25), Bool("Composite", false), Int("MacProcID", 0),
        Bool("Enabled", false), Str("Text", kFill.view()), Int("Left", 4));
    EXPECT_EQ(Applied(FakeControl(), record.view()),
              (Lines{"Text=Left 1 \xC2\xA9 2024", "Left=-9223372036854775808", "Value=7",
                     "Enabled=1", "FontUnit=255", "TextColor=13369344", "FontSize=12.500000",
                     "LineSpacing=1.250000", "Enabled=0", "Text=" + std::string(kFill.view()),
                     "Left=4"}));  // Composite and MacProcID reach no setter
    // The length comes from the view: a wrong leading byte changes nothing.
    for (char leading : {'\x00', '\x05', '\xFF'}) {
        std::string wrong = HandMade("Left " + Int64(52) + "Enabled \0"s);
        wrong[0] = leading;
        EXPECT_EQ(Applied(FakeControl(), wrong), (Lines{"Left=52", "Enabled=0"}));
    }
}

TEST(RecordReader, TheClassDecidesTheFormOfAPropertyItsOwnTableFirst) {
    constexpr auto labelRecord = PLATFORM_RECORD(Str("Value", "r"), Int("Left", 5));
    EXPECT_EQ(Applied(FakeLabel(), labelRecord.view()), (Lines{"Value=r", "Left=5"}));
    // Read as an integer, the string's count and bytes make the reader lose its place.
    EXPECT_THROW(Applied(FakeControl(), labelRecord.view()), RecordFormatException);
}

TEST(RecordReader, ABadRecordFailsNamedAndKeepsWhatCameBefore) {
    // clang-format off
    const std::pair<std::string, const char*> tails[] = {
        {"Left \x01\x02\x03", "past the end"}, {"Enabled ", "past the end"},
        {"FontSize \0\0\x40"s, "past the end"}, {"Text \x0A\0\0\0" "abc"s, "past the end"},
        {"Text \xFF\xFF\xFF\xFF", "past the end"}, {"Text \0\0"s, "past the end"},
        {"MacProcID \0\0"s, "past the end"},
        {"Bogus " + Int64(0), "Bogus is no property of FakeControl"},
        {"Left", ""}, {" " + Int64(0), ""}, {"Le1ft " + Int64(0), ""}, {"L\xC3\xA9" "ft " + Int64(0), ""}};
    // clang-format on
    for (const auto& [tail, message] : tails) {
        FakeControl control;
        try {
            ApplyRecord(control, HandMade("Value " + Int64(1) + tail));
            ADD_FAILURE() << "accepted: " << tail;
        } catch (const RecordFormatException& e) {
            EXPECT_NE(std::string(e.what()).find(message), std::string::npos) << e.what();
        }
        EXPECT_EQ(control.applied, Lines{"Value=1"});
    }
    EXPECT_THROW(Applied(FakeControl(), ""), RecordFormatException);
}

TEST(RuntimeCheckCast, NilWrongClassAndRightClass) {
    EXPECT_THROW(platform::RuntimeCheckCast<FakeLabel>(nullptr), platform::NilObjectException);
    FakeControl control;
    EXPECT_THROW(platform::RuntimeCheckCast<FakeLabel>(&control), platform::IllegalCastException);
    FakeLabel label;
    EXPECT_EQ(&platform::RuntimeCheckCast<FakeControl>(&label), &label);  // a base class too
}

}  // namespace
