#include "platform/core/object.h"

namespace platform {

namespace {

char AsciiLower(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (AsciiLower(a[i]) != AsciiLower(b[i])) {
            return false;
        }
    }
    return true;
}

}  // namespace

const PropertyDef* ClassInfo::FindProperty(std::string_view property) const {
    // A class's own entry wins over a base class's entry of the same name.
    for (const ClassInfo* cls = this; cls != nullptr; cls = cls->base) {
        for (const PropertyDef& def : cls->properties) {
            if (EqualIgnoringCase(def.name, property)) {
                return &def;
            }
        }
    }
    return nullptr;
}

const ClassInfo& Object::StaticClass() {
    static const ClassInfo info{"Object", nullptr, {}};
    return info;
}

PropertyDef StoredOnly(std::string_view name, Form form) {
    // The reader has already decoded the value by its form, so the record stays in step;
    // nothing on this platform reads the value back, so it is dropped here.
    return PropertyDef{name, form, [](Object&, const PropertyValue&) {}};
}

}  // namespace platform
