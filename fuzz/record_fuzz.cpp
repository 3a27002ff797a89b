// Applies arbitrary bytes as a layout record to three classes: a control that declares a
// property of every form under the names real controls use, a label that adds `Value` as a
// string and a radio button that adds it as a boolean. A RecordFormatException is the reader's
// answer to a damaged record; any other failure, a crash or a sanitizer report is a bug, and so
// is a setter handed another form than its table declares, or a string longer than the input.
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/core/object.h"
#include "platform/core/record.h"

namespace {

using platform::ClassInfo;
using platform::Form;
using platform::Object;

std::size_t gInputSize = 0;

template <Form F>
platform::PropertyDef Checked(std::string_view name) {
    return {name, F, [](Object& /*target*/, const platform::PropertyValue& value) {
                // The variant's alternatives stand in the same order as the forms.
                if (value.index() != static_cast<std::size_t>(F) ||
                    (F == Form::String && std::get<6>(value).size() >= gInputSize)) {
                    __builtin_trap();
                }
            }};
}

template <Form F>
void Add(std::vector<platform::PropertyDef>& into, std::initializer_list<std::string_view> names) {
    for (std::string_view name : names) {
        into.push_back(Checked<F>(name));
    }
}

std::vector<platform::PropertyDef> ControlProperties() {
    std::vector<platform::PropertyDef> all{platform::StoredOnly("Composite", Form::Boolean)};
    Add<Form::Integer>(all, {"Left", "Top", "Width", "Index", "Period", "RunMode"});
    Add<Form::Boolean>(all, {"Visible", "Enabled", "MultiLine", "Transparent"});
    Add<Form::SmallEnum>(all, {"FontUnit"});
    Add<Form::Colour>(all, {"TextColor", "BackgroundColor"});
    Add<Form::Single>(all, {"FontSize"});
    Add<Form::Double>(all, {"LineSpacing", "LineHeight"});
    Add<Form::String>(all, {"Text", "Caption", "InitialParent"});
    return all;
}

const ClassInfo kControl{"FuzzControl", &Object::StaticClass(), ControlProperties()};
const ClassInfo kLabel{"FuzzLabel", &kControl, {Checked<Form::String>("Value")}};
const ClassInfo kRadio{"FuzzRadio", &kControl, {Checked<Form::Boolean>("Value")}};

struct FuzzObject : Object {
    explicit FuzzObject(const ClassInfo& ofClass) : info(ofClass) {}
    const ClassInfo& Class() const override { return info; }
    const ClassInfo& info;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    gInputSize = size;
    FuzzObject control(kControl), label(kLabel), radio(kRadio);
    for (Object* target : {&control, &label, &radio}) {
        try {
            platform::ApplyRecord(*target, {reinterpret_cast<const char*>(data), size});
        } catch (const platform::RecordFormatException&) {
        }
    }
    return 0;
}
