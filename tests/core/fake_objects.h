// Small stand-ins for the platform's controls: FakeControl declares a property
// of every record form; FakeLabel and FakeRadio derive from it and redeclare
// `Value` as a string and a boolean, as the real label and radio button do.
// Every setter logs its property's name, so a test sees which setters ran and
// in what order.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/core/object.h"

namespace fake {

using platform::ClassInfo;
using platform::Colour;
using platform::Form;
using platform::Property;

// Everything a record can set on a FakeControl and its subclasses.
struct State {
    std::int64_t left = 0, top = 0, index = 0, value_int = 0;
    bool enabled = false, multi_line = false, value_bool = false;
    std::uint8_t font_unit = 0;
    Colour text_color, background_color;
    float font_size = 0;
    double line_spacing = 0;
    std::string text, caption, value_text;
    friend bool operator==(const State&, const State&) = default;
};

class FakeControl : public platform::Object {
  public:
    static const ClassInfo& StaticClass() {
        static const ClassInfo info{
            "FakeControl",
            &Object::StaticClass(),
            {Property<&FakeControl::SetLeft>("Left"), Property<&FakeControl::SetTop>("Top"),
             Property<&FakeControl::SetIndex>("Index"),
             Property<&FakeControl::SetValueInt>("Value"),
             Property<&FakeControl::SetEnabled>("Enabled"),
             Property<&FakeControl::SetMultiLine>("MultiLine"),
             Property<&FakeControl::SetFontUnit>("FontUnit"),
             Property<&FakeControl::SetTextColor>("TextColor"),
             Property<&FakeControl::SetBackgroundColor>("BackgroundColor"),
             Property<&FakeControl::SetFontSize>("FontSize"),
             Property<&FakeControl::SetLineSpacing>("LineSpacing"),
             Property<&FakeControl::SetText>("Text"), Property<&FakeControl::SetCaption>("Caption"),
             platform::StoredOnly("Composite", Form::Boolean)}};
        return info;
    }
    const ClassInfo& Class() const override { return StaticClass(); }

#define FAKE_SETTER(Name, field, Type) \
    void Set##Name(Type v) {           \
        Log(#Name);                    \
        state.field = v;               \
    }
    FAKE_SETTER(Left, left, std::int64_t)
    FAKE_SETTER(Top, top, std::int64_t)
    FAKE_SETTER(Index, index, std::int64_t)
    FAKE_SETTER(Enabled, enabled, bool)
    FAKE_SETTER(MultiLine, multi_line, bool)
    FAKE_SETTER(FontUnit, font_unit, std::uint8_t)
    FAKE_SETTER(TextColor, text_color, Colour)
    FAKE_SETTER(BackgroundColor, background_color, Colour)
    FAKE_SETTER(FontSize, font_size, float)
    FAKE_SETTER(LineSpacing, line_spacing, double)
    FAKE_SETTER(Text, text, const std::string&)
    FAKE_SETTER(Caption, caption, const std::string&)
#undef FAKE_SETTER
    void SetValueInt(std::int64_t v) {
        Log("Value");
        state.value_int = v;
    }

    State state;
    std::vector<std::string> applied;  // setter calls, in order

  protected:
    void Log(const char* name) {
        applied.emplace_back(name);
    }
};

class FakeLabel : public FakeControl {
  public:
    static const ClassInfo& StaticClass() {
        static const ClassInfo info{
            "FakeLabel", &FakeControl::StaticClass(), {Property<&FakeLabel::SetValue>("Value")}};
        return info;
    }
    const ClassInfo& Class() const override { return StaticClass(); }

    void SetValue(const std::string& v) {
        Log("Value");
        state.value_text = v;
    }
};

class FakeRadio : public FakeControl {
  public:
    static const ClassInfo& StaticClass() {
        static const ClassInfo info{
            "FakeRadio", &FakeControl::StaticClass(), {Property<&FakeRadio::SetValue>("Value")}};
        return info;
    }
    const ClassInfo& Class() const override { return StaticClass(); }

    void SetValue(bool v) {
        Log("Value");
        state.value_bool = v;
    }
};

}  // namespace fake
