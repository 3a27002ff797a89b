// Targets for the record fuzzer: FuzzControl declares a property of every record form, under the
// names real controls use; FuzzLabel and FuzzRadio redeclare `Value` as a string and a boolean.
// Every setter checks that the reader handed it the form its table declares, and that a string
// is no longer than the input it came from; a breach traps, so the fuzzer reports it.
#pragma once

#include <cstddef>
#include <string>

#include "platform/core/object.h"

namespace fuzz {

using platform::ClassInfo;
using platform::Form;
using platform::Object;
using platform::PropertyDef;
using platform::PropertyValue;

// Size of the input being read; a decoded string can never be longer.
inline std::size_t g_input_size = 0;

class FuzzControl : public Object {
  public:
    static const ClassInfo& StaticClass();
    const ClassInfo& Class() const override { return StaticClass(); }

    std::size_t applied = 0;
};

template <Form F>
void Keep(Object& target, const PropertyValue& value) {
    // The variant's alternatives stand in the same order as the forms.
    if (value.index() != static_cast<std::size_t>(F)) {
        __builtin_trap();
    }
    if constexpr (F == Form::String) {
        if (std::get<std::string>(value).size() >= g_input_size) {
            __builtin_trap();
        }
    }
    ++static_cast<FuzzControl&>(target).applied;
}

inline const ClassInfo& FuzzControl::StaticClass() {
    static const ClassInfo info{"FuzzControl",
                                &Object::StaticClass(),
                                {
                                    {"Left", Form::Integer, &Keep<Form::Integer>},
                                    {"Top", Form::Integer, &Keep<Form::Integer>},
                                    {"Width", Form::Integer, &Keep<Form::Integer>},
                                    {"Index", Form::Integer, &Keep<Form::Integer>},
                                    {"Period", Form::Integer, &Keep<Form::Integer>},
                                    {"RunMode", Form::Integer, &Keep<Form::Integer>},
                                    {"Visible", Form::Boolean, &Keep<Form::Boolean>},
                                    {"Enabled", Form::Boolean, &Keep<Form::Boolean>},
                                    {"MultiLine", Form::Boolean, &Keep<Form::Boolean>},
                                    {"Transparent", Form::Boolean, &Keep<Form::Boolean>},
                                    {"FontUnit", Form::SmallEnum, &Keep<Form::SmallEnum>},
                                    {"TextColor", Form::Colour, &Keep<Form::Colour>},
                                    {"BackgroundColor", Form::Colour, &Keep<Form::Colour>},
                                    {"FontSize", Form::Single, &Keep<Form::Single>},
                                    {"LineSpacing", Form::Double, &Keep<Form::Double>},
                                    {"LineHeight", Form::Double, &Keep<Form::Double>},
                                    {"Text", Form::String, &Keep<Form::String>},
                                    {"Caption", Form::String, &Keep<Form::String>},
                                    {"InitialParent", Form::String, &Keep<Form::String>},
                                    platform::StoredOnly("Composite", Form::Boolean),
                                }};
    return info;
}

class FuzzLabel : public FuzzControl {
  public:
    static const ClassInfo& StaticClass() {
        static const ClassInfo info{"FuzzLabel",
                                    &FuzzControl::StaticClass(),
                                    {{"Value", Form::String, &Keep<Form::String>}}};
        return info;
    }
    const ClassInfo& Class() const override { return StaticClass(); }
};

class FuzzRadio : public FuzzControl {
  public:
    static const ClassInfo& StaticClass() {
        static const ClassInfo info{"FuzzRadio",
                                    &FuzzControl::StaticClass(),
                                    {platform::Property<&FuzzRadio::SetValue>("Value")}};
        return info;
    }
    const ClassInfo& Class() const override { return StaticClass(); }

    void SetValue(bool value) {
        ++applied;
        checked_value = value;
    }
    bool checked_value = false;
};

}  // namespace fuzz
