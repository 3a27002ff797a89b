// Stand-ins for the platform's controls: FakeControl declares a property of every record form,
// FakeLabel and FakeRadio redeclare `Value` as a string and a boolean, as the real label and radio
// button do. Each setter logs its property's name, so a test sees which setters ran, in order.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/core/failure.h"
#include "platform/core/object.h"

namespace fake {

using platform::ClassInfo;
using platform::Colour;
using platform::Property;

// Everything a record can set on a FakeControl and its subclasses.
struct State {
    std::int64_t left = 0, top = 0, value_int = 0;
    bool enabled = false, value_bool = false;
    std::uint8_t font_unit = 0;
    Colour text_color;
    float font_size = 0;
    double line_spacing = 0;
    std::string text, caption, value_text;
    friend bool operator==(const State&, const State&) = default;
};

// Raised by the Fuse property; remembers which object was thrown.
struct Blown : platform::RuntimeException {
    Blown() : RuntimeException("blown") { last = this; }
    static inline const Blown* last = nullptr;
};

#define FAKE_SETTER(Name, field, Type) \
    void Set##Name(Type v) {           \
        applied.emplace_back(#Name);   \
        state.field = v;               \
    }

class FakeControl : public platform::Object {
  public:
    static const ClassInfo& StaticClass() {
        static const ClassInfo info{
            "FakeControl",
            &Object::StaticClass(),
            {Property<&FakeControl::SetLeft>("Left"), Property<&FakeControl::SetTop>("Top"),
             Property<&FakeControl::SetValue>("Value"),
             Property<&FakeControl::SetEnabled>("Enabled"),
             Property<&FakeControl::SetFontUnit>("FontUnit"),
             Property<&FakeControl::SetTextColor>("TextColor"),
             Property<&FakeControl::SetFontSize>("FontSize"),
             Property<&FakeControl::SetLineSpacing>("LineSpacing"),
             Property<&FakeControl::SetText>("Text"), Property<&FakeControl::SetCaption>("Caption"),
             Property<&FakeControl::SetFuse>("Fuse"),
             platform::StoredOnly("Composite", platform::Form::Boolean)}};
        return info;
    }
    const ClassInfo& Class() const override { return StaticClass(); }

    FAKE_SETTER(Left, left, std::int64_t)
    FAKE_SETTER(Top, top, std::int64_t)
    FAKE_SETTER(Value, value_int, std::int64_t)
    FAKE_SETTER(Enabled, enabled, bool)
    FAKE_SETTER(FontUnit, font_unit, std::uint8_t)
    FAKE_SETTER(TextColor, text_color, Colour)
    FAKE_SETTER(FontSize, font_size, float)
    FAKE_SETTER(LineSpacing, line_spacing, double)
    FAKE_SETTER(Text, text, const std::string&)
    FAKE_SETTER(Caption, caption, const std::string&)
    void SetFuse(std::int64_t) { throw Blown(); }

    State state;
    std::vector<std::string> applied;  // setter calls, in order
};

class FakeLabel : public FakeControl {
  public:
    static const ClassInfo& StaticClass() {
        static const ClassInfo info{
            "FakeLabel", &FakeControl::StaticClass(), {Property<&FakeLabel::SetValue>("Value")}};
        return info;
    }
    const ClassInfo& Class() const override { return StaticClass(); }
    FAKE_SETTER(Value, value_text, const std::string&)
};

class FakeRadio : public FakeControl {
  public:
    static const ClassInfo& StaticClass() {
        static const ClassInfo info{
            "FakeRadio", &FakeControl::StaticClass(), {Property<&FakeRadio::SetValue>("Value")}};
        return info;
    }
    const ClassInfo& Class() const override { return StaticClass(); }
    FAKE_SETTER(Value, value_bool, bool)
};

#undef FAKE_SETTER

}  // namespace fake
