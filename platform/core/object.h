// Objects of the platform and their class records.
//
// Every window, control, timer and menu item derives from Object and answers Class() with a
// ClassInfo: its run-time name, its base class, and the table of properties a layout record may
// set (name, form, setter). The record reader (record.h) looks names up there, ignoring case and
// walking to the base classes, so one reader applies any record to any object.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "platform/core/failure.h"

namespace platform {

// A colour as records store it: 0x00RRGGBB.
struct Colour {
    std::uint32_t rgb = 0;
    friend bool operator==(Colour, Colour) = default;
};

// How a property's value is stored in a layout record.
enum class Form { Integer, Boolean, SmallEnum, Colour, Single, Double, String };

using PropertyValue =
    std::variant<std::int64_t, bool, std::uint8_t, Colour, float, double, std::string>;

class Object;

struct PropertyDef {
    std::string_view name;
    Form form;
    void (*set)(Object& target, const PropertyValue& value);
};

struct ClassInfo {
    std::string_view name;
    const ClassInfo* base = nullptr;
    std::vector<PropertyDef> properties;

    // The property of that name on this class or a base class, ignoring case; nullptr if none.
    const PropertyDef* FindProperty(std::string_view property) const;
};

class Object {
  public:
    Object() : alive_(std::make_shared<Object*>(this)) {}
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    static const ClassInfo& StaticClass();
    virtual const ClassInfo& Class() const { return StaticClass(); }

  private:
    friend class WeakRef;
    std::shared_ptr<Object*> alive_;  // WeakRefs watch this; it dies with the object
};

// The base of a class with a class table of its own: Class() answers Self::StaticClass(), so
// Self only declares StaticClass().
template <class Self, class Base = Object>
class Classed : public Base {
  public:
    using Base::Base;
    const ClassInfo& Class() const override { return Self::StaticClass(); }
};

// A reference that does not keep its object alive: Value() is the object while it lives,
// nil (nullptr) once it is gone.
class WeakRef {
  public:
    WeakRef() = default;
    explicit WeakRef(Object* object) {
        if (object != nullptr)
            watched_ = object->alive_;
    }
    Object* Value() const {
        auto alive = watched_.lock();
        return alive ? *alive : nullptr;
    }

  private:
    std::weak_ptr<Object*> watched_;
};

namespace detail {
template <class V>
constexpr Form FormOf() {
    using T = std::remove_cvref_t<V>;
    if constexpr (std::is_same_v<T, std::int64_t>)
        return Form::Integer;
    else if constexpr (std::is_same_v<T, bool>)
        return Form::Boolean;
    else if constexpr (std::is_same_v<T, std::uint8_t>)
        return Form::SmallEnum;
    else if constexpr (std::is_same_v<T, Colour>)
        return Form::Colour;
    else if constexpr (std::is_same_v<T, float>)
        return Form::Single;
    else if constexpr (std::is_same_v<T, double>)
        return Form::Double;
    else {
        static_assert(std::is_same_v<T, std::string>, "no record form for this setter's type");
        return Form::String;
    }
}

template <class>
struct SetterTraits;
template <class C, class V>
struct SetterTraits<void (C::*)(V)> {
    using Class = C;
    using Value = std::remove_cvref_t<V>;
};
}  // namespace detail

// A property-table entry whose form follows from the setter's parameter type:
//   Property<&Label::SetTextColor>("TextColor")   -> Form::Colour
template <auto Setter>
PropertyDef Property(std::string_view name) {
    using Traits = detail::SetterTraits<decltype(Setter)>;
    return PropertyDef{name, detail::FormOf<typename Traits::Value>(),
                       [](Object& target, const PropertyValue& value) {
                           (static_cast<typename Traits::Class&>(target).*
                            Setter)(std::get<typename Traits::Value>(value));
                       }};
}

// A property that is read (so the record stays in step) and dropped: it has no effect on this
// platform.
PropertyDef StoredOnly(std::string_view name, Form form);

// The object as T: NilObjectException for nil, IllegalCastException for another class.
template <class T>
T& RuntimeCheckCast(Object* object) {
    Object& o = NotNil(object);
    auto* cast = dynamic_cast<T*>(&o);
    if (cast == nullptr) {
        throw IllegalCastException(std::string(o.Class().name) + " is no " +
                                   std::string(T::StaticClass().name));
    }
    return *cast;
}

}  // namespace platform
