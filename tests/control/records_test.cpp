// The control window's layout records as stored bytes, decoded here on their own by the stored
// format (name, blank, value in the form the name's class declares) and compared with the shape
// of their class and the values of the form's tables.
#include <bit>
#include <cstdint>
#include <cstring>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "control/control_records.h"
#include "platform/core/object.h"

namespace korvane::testing {
namespace {

using platform::Colour;
using platform::Form;
using platform::PropertyValue;

struct Applied {
    std::string name;
    PropertyValue value;
};

std::vector<std::string> Words(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> words;
    for (std::string word; in >> word;)
        words.push_back(word);
    return words;
}

// The stored form of every property name the records use; Value is text but on radio buttons.
const std::map<std::string, Form>& Forms() {
    static const std::map<std::string, Form> forms = [] {
        const std::pair<Form, const char*> lists[] = {
            {Form::Integer,
             "Width Height MinimumWidth MinimumHeight MaximumWidth MaximumHeight Type MacProcID "
             "DefaultLocation Index Left Top TabIndex TabPanelIndex TextAlignment "
             "MaximumCharactersAllowed MacButtonStyle"},
            {Form::Boolean,
             "HasCloseButton HasMaximizeButton HasMinimizeButton HasFullScreenButton Resizeable "
             "Composite FullScreen Visible HasBackgroundColor MenuBarVisible LiveResize LockLeft "
             "LockTop LockRight LockBottom TabStop AllowAutoDeactivate Enabled Multiline "
             "Selectable Transparent Bold Italic Underline HasBorder Password AllowFocusRing "
             "AllowTabs AllowSpellChecking ReadOnly AllowFocus DoubleBuffer Cancel Default"},
            {Form::SmallEnum, "FontUnit"},
            {Form::Colour, "BackgroundColor TextColor"},
            {Form::Single, "FontSize"},
            {Form::String,
             "Title Name Tooltip FontName DataSource DataField InitialParent Format Hint "
             "ValidationMask Caption Value"}};
        std::map<std::string, Form> all;
        for (const auto& [form, names] : lists) {
            for (const std::string& name : Words(names))
                all[name] = form;
        }
        return all;
    }();
    return forms;
}

std::uint64_t LittleEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) {
        value = (value << 8) | static_cast<unsigned char>(bytes[i]);
    }
    return value;
}

// Every property of the record in stored order. A value that would run past the end fails.
std::vector<Applied> Decode(std::string_view record, bool valueIsFlag = false) {
    std::vector<Applied> applied;
    std::size_t pos = 1;  // past the length byte
    while (pos < record.size()) {
        const std::size_t blank = record.find(' ', pos);
        const std::string name(record.substr(pos, blank - pos));
        pos = blank + 1;
        const Form form = (name == "Value" && valueIsFlag) ? Form::Boolean : Forms().at(name);
        auto take = [&](std::size_t size) {
            EXPECT_LE(pos + size, record.size()) << name;
            const std::string_view bytes = record.substr(pos, size);
            pos += size;
            return bytes;
        };
        PropertyValue value;
        switch (form) {
            case Form::Integer:
                value = static_cast<std::int64_t>(LittleEndian(take(8)));
                break;
            case Form::Boolean:
                value = LittleEndian(take(1)) != 0;
                break;
            case Form::SmallEnum:
                value = static_cast<std::uint8_t>(LittleEndian(take(1)));
                break;
            case Form::Colour:
                value = Colour{static_cast<std::uint32_t>(LittleEndian(take(4)))};
                break;
            case Form::Single:
                value = std::bit_cast<float>(static_cast<std::uint32_t>(LittleEndian(take(4))));
                break;
            case Form::Double:
                value = std::bit_cast<double>(LittleEndian(take(8)));
                break;
            case Form::String:
                value = std::string(take(LittleEndian(take(4))));
                break;
        }
        applied.push_back({name, value});
    }
    EXPECT_EQ(pos, record.size());
    return applied;
}

std::vector<Applied> Read(std::string_view record) {
    return Decode(record);
}

std::vector<std::string> Names(const std::vector<Applied>& applied) {
    std::vector<std::string> names;
    for (const Applied& a : applied)
        names.push_back(a.name);
    return names;
}

// The last value of each property.
std::map<std::string, PropertyValue> Values(const std::vector<Applied>& applied) {
    std::map<std::string, PropertyValue> values;
    for (const Applied& a : applied)
        values[a.name] = a.value;
    return values;
}

using Named = std::pair<const char*, std::string_view>;

// clang-format off
const std::vector<Named> kLabels{
    {"n2text", records::n2text.view()}, {"StaticText3", records::StaticText3.view()},
    {"StaticText4", records::StaticText4.view()}, {"rtext", records::rtext.view()},
    {"StaticText1", records::StaticText1.view()}, {"StaticText2", records::StaticText2.view()},
    {"StaticText7", records::StaticText7.view()}, {"copyright", records::copyright.view()},
    {"dtail", records::dtail.view()}, {"ttext", records::ttext.view()},
    {"dfText", records::dfText.view()}, {"StaticText5", records::StaticText5.view()}};
// clang-format on
const std::vector<Named> kTextFields{
    {"rfld", records::rfld.view()},     {"m2fld", records::m2fld.view()},
    {"sd2fld", records::sd2fld.view()}, {"n2fld", records::n2fld.view()},
    {"m1fld", records::m1fld.view()},   {"sd1fld", records::sd1fld.view()},
    {"n1fld", records::n1fld.view()},   {"tfld", records::tfld.view()},
    {"pfld", records::pfld.view()},     {"dfFld", records::dfFld.view()}};
const std::vector<Named> kGroupBoxes{{"GroupBox2", records::GroupBox2.view()},
                                     {"GroupBox1", records::GroupBox1.view()},
                                     {"typeBox", records::typeBox.view()}};
const std::vector<Named> kSeparators{{"Sep2", records::Sep2.view()},
                                     {"Sep1", records::Sep1.view()}};
const std::vector<Named> kPushButtons{{"CalcBtn", records::CalcBtn.view()},
                                      {"ClearBtn", records::ClearBtn.view()},
                                      {"PushButton1", records::PushButton1.view()}};
const std::vector<Named> kRadioButtons{{"IBtn", records::IBtn.view()},
                                       {"RBtn", records::RBtn.view()}};

void ExpectShape(const std::vector<Named>& records, const std::string& shape) {
    for (const auto& [name, record] : records) {
        EXPECT_EQ(Names(Read(record)), Words(shape)) << name;
    }
}

TEST(ControlRecordsTest, EachClassStoresItsPropertiesInItsOwnOrder) {
    ExpectShape(kLabels,
                "Name Index Left Top Width Height LockLeft LockTop LockRight LockBottom TabIndex "
                "TabPanelIndex TabStop AllowAutoDeactivate Enabled Tooltip Multiline Selectable "
                "TextAlignment TextColor Transparent Value Visible Bold Italic FontName Underline "
                "FontSize FontUnit DataSource DataField InitialParent");
    ExpectShape(kTextFields,
                "Name Index Left Top Width Height LockLeft LockTop LockRight LockBottom TabIndex "
                "TabPanelIndex TabStop AllowAutoDeactivate BackgroundColor HasBorder Enabled "
                "Format Tooltip Password TextColor Transparent AllowFocusRing Visible FontName "
                "FontSize FontUnit Bold Italic Underline Hint Value AllowTabs TextAlignment "
                "AllowSpellChecking MaximumCharactersAllowed ValidationMask ReadOnly DataSource "
                "DataField InitialParent");
    ExpectShape(kGroupBoxes,
                "Name Index Left Top Width Height LockLeft LockTop LockRight LockBottom TabIndex "
                "TabPanelIndex TabStop AllowAutoDeactivate Caption Enabled Tooltip Transparent "
                "Visible Bold Italic FontName Underline FontSize FontUnit InitialParent");
    ExpectShape(kSeparators,
                "AllowAutoDeactivate Tooltip Transparent Name Index Left Top Width Height "
                "LockLeft LockTop LockRight LockBottom TabPanelIndex TabIndex TabStop "
                "InitialParent Visible Enabled");
    ExpectShape({{"HalbrineTitle", records::HalbrineTitle.view()}},
                "Name Index Left Top Width Height LockLeft LockTop LockRight LockBottom TabIndex "
                "TabPanelIndex TabStop AllowAutoDeactivate Enabled Tooltip AllowFocusRing Visible "
                "AllowFocus AllowTabs Transparent DoubleBuffer Transparent InitialParent");
    ExpectShape(kPushButtons,
                "Name Index Left Top Width Height LockLeft LockTop LockRight LockBottom TabIndex "
                "TabPanelIndex TabStop AllowAutoDeactivate MacButtonStyle Cancel Caption Default "
                "Enabled Tooltip Transparent Visible FontName FontSize FontUnit Bold Italic "
                "Underline InitialParent");
    for (const auto& [name, record] : kRadioButtons) {
        EXPECT_EQ(Names(Decode(record, true)),
                  Words("Name Index Left Top Width Height LockLeft LockTop LockRight LockBottom "
                        "TabIndex TabPanelIndex TabStop AllowAutoDeactivate Caption Enabled "
                        "Tooltip Transparent Visible FontName FontSize FontUnit Bold Italic "
                        "Underline Value InitialParent"))
            << name;
    }
}

TEST(ControlRecordsTest, TheWindowRecordIsAFixedSizeTitledWindow) {
    const auto applied = Read(records::ControlWnd.view());
    EXPECT_EQ(
        Names(applied),
        Words(
            "Width Height MinimumWidth MinimumHeight MaximumWidth MaximumHeight Type Title "
            "HasCloseButton HasMaximizeButton HasMinimizeButton HasFullScreenButton "
            "Resizeable Composite MacProcID FullScreen DefaultLocation Visible HasBackgroundColor "
            "BackgroundColor MenuBarVisible LiveResize"));
    auto values = Values(applied);
    EXPECT_EQ(std::get<std::int64_t>(values["Height"]), 400);
    EXPECT_EQ(std::get<std::int64_t>(values["MaximumHeight"]), 500);
    EXPECT_EQ(std::get<std::string>(values["Title"]), "Korvane");
    EXPECT_FALSE(std::get<bool>(values["Resizeable"]));
    EXPECT_FALSE(std::get<bool>(values["HasMaximizeButton"]));
}

TEST(ControlRecordsTest, EveryRecordIsLongerThanItsLengthByteCanSayAndStandsInNoArray) {
    std::vector<Named> all{{"ControlWnd", records::ControlWnd.view()},
                           {"HalbrineTitle", records::HalbrineTitle.view()}};
    for (const auto* group : {&kLabels, &kTextFields, &kGroupBoxes, &kSeparators, &kPushButtons}) {
        all.insert(all.end(), group->begin(), group->end());
    }
    for (const auto& [name, record] : all) {
        EXPECT_EQ(static_cast<unsigned char>(record[0]), 255) << name;
        EXPECT_GT(record.size(), 256u) << name;
        if (std::string_view(name) != "ControlWnd") {
            EXPECT_EQ(std::get<std::int64_t>(Values(Read(record))["Index"]), -2147483648LL) << name;
            EXPECT_EQ(std::get<std::string>(Values(Read(record))["Name"]), name);
        }
    }
}

TEST(ControlRecordsTest, TextFieldsDifferInEnabledReadOnlyTabStopAndSpellChecking) {
    struct Role {
        bool enabled, readOnly, tabStop, spellChecking;
    };
    const std::map<std::string, Role> expected{{"m1fld", {1, 0, 1, 0}},  {"sd1fld", {1, 0, 1, 0}},
                                               {"n1fld", {1, 0, 1, 0}},  {"m2fld", {1, 0, 1, 0}},
                                               {"sd2fld", {1, 0, 1, 0}}, {"n2fld", {1, 0, 1, 0}},
                                               {"rfld", {1, 0, 1, 0}},   {"tfld", {0, 1, 0, 1}},
                                               {"pfld", {0, 1, 0, 1}},   {"dfFld", {0, 1, 0, 0}}};
    for (const auto& [name, record] : kTextFields) {
        auto values = Values(Read(record));
        const Role& role = expected.at(name);
        EXPECT_EQ(std::get<bool>(values["Enabled"]), role.enabled) << name;
        EXPECT_EQ(std::get<bool>(values["ReadOnly"]), role.readOnly) << name;
        EXPECT_EQ(std::get<bool>(values["TabStop"]), role.tabStop) << name;
        EXPECT_EQ(std::get<bool>(values["AllowSpellChecking"]), role.spellChecking) << name;
        EXPECT_FALSE(std::get<bool>(values["Visible"])) << name;
        EXPECT_EQ(std::get<std::int64_t>(values["TextAlignment"]), 2) << name;
    }
}

TEST(ControlRecordsTest, LabelsDifferInColourSizeBoldnessAndAlignment) {
    struct Style {
        std::uint32_t colour;
        float size;
        bool bold;
        std::int64_t alignment;
    };
    const Style red{0xCC0000, 12, 0, 2};
    // clang-format off
    const std::map<std::string, Style> expected{
        {"n2text", red}, {"rtext", red}, {"StaticText1", red}, {"StaticText2", red},
        {"StaticText3", red}, {"StaticText4", red}, {"StaticText7", red},
        {"copyright", {0x808080, 10, 0, 2}}, {"dtail", {0x777777, 12, 0, 2}},
        {"ttext", {0x999999, 12, 1, 2}}, {"dfText", {0x999999, 12, 1, 2}},
        {"StaticText5", {0xFFFFFF, 0, 1, 0}}};
    // clang-format on
    for (const auto& [name, record] : kLabels) {
        auto values = Values(Read(record));
        const Style& style = expected.at(name);
        EXPECT_EQ(std::get<Colour>(values["TextColor"]), Colour{style.colour}) << name;
        EXPECT_EQ(std::get<float>(values["FontSize"]), style.size) << name;
        EXPECT_EQ(std::get<bool>(values["Bold"]), style.bold) << name;
        EXPECT_EQ(std::get<std::int64_t>(values["TextAlignment"]), style.alignment) << name;
    }
    EXPECT_NE(
        std::get<std::string>(Values(Read(records::copyright.view()))["Value"]).find("\xC2\xA9"),
        std::string::npos);
}

TEST(ControlRecordsTest, TheThreeButtonsAreAllDefaultAndTheHelpButtonIsBoldAndLarger) {
    for (const auto& [name, record] : kPushButtons) {
        auto values = Values(Read(record));
        const bool help = std::string_view(name) == "PushButton1";
        EXPECT_TRUE(std::get<bool>(values["Default"])) << name;
        EXPECT_FALSE(std::get<bool>(values["Cancel"])) << name;
        EXPECT_EQ(std::get<bool>(values["TabStop"]), help) << name;
        EXPECT_EQ(std::get<bool>(values["Transparent"]), !help) << name;
        EXPECT_EQ(std::get<float>(values["FontSize"]), help ? 14.0f : 12.0f) << name;
        EXPECT_EQ(std::get<bool>(values["Bold"]), help) << name;
        EXPECT_TRUE(std::get<bool>(values["LockLeft"])) << name;
        EXPECT_EQ(std::get<bool>(values["LockBottom"]), !help) << name;
    }
}

TEST(ControlRecordsTest, OnlyTheFirstPanelTheSeparatorsAndTheRadioButtonsAreUnlocked) {
    const std::vector<Named> unlocked{{"GroupBox1", records::GroupBox1.view()},
                                      {"Sep1", records::Sep1.view()},
                                      {"Sep2", records::Sep2.view()}};
    for (const auto& [name, record] : unlocked) {
        auto values = Values(Read(record));
        for (const char* lock : {"LockLeft", "LockTop", "LockRight", "LockBottom"}) {
            EXPECT_FALSE(std::get<bool>(values[lock])) << name << " " << lock;
        }
    }
    for (const auto& [name, record] : kRadioButtons) {
        EXPECT_FALSE(std::get<bool>(Values(Decode(record, true))["LockTop"])) << name;
        EXPECT_FALSE(std::get<bool>(Values(Decode(record, true))["Value"])) << name;
    }
    for (const auto& [name, record] : {Named{"GroupBox2", records::GroupBox2.view()},
                                       Named{"typeBox", records::typeBox.view()}}) {
        EXPECT_TRUE(std::get<bool>(Values(Read(record))["LockRight"])) << name;
    }
    EXPECT_TRUE(std::get<bool>(Values(Read(records::typeBox.view()))["Bold"]));
}

}  // namespace
}  // namespace korvane::testing
