// Applies arbitrary bytes as a layout record to three classes: a control that declares a
// property of every form under the names real controls use, a label that adds `Value` as a
// string and a radio button that adds it as a boolean. A RecordFormatException is the reader's
// answer to a damaged record; any other failure, a crash or a sanitizer report is a bug, and so
// is a setter handed another form than its table declares, or a string longer than the input.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

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

const ClassInfo kControl{"FuzzControl",
                         &Object::StaticClass(),
                         {Checked<Form::Integer>("Left"),
                          Checked<Form::Integer>("Top"),
                          Checked<Form::Integer>("Width"),
                          Checked<Form::Integer>("Index"),
                          Checked<Form::Integer>("Period"),
                          Checked<Form::Integer>("RunMode"),
                          Checked<Form::Boolean>("Visible"),
                          Checked<Form::Boolean>("Enabled"),
                          Checked<Form::Boolean>("MultiLine"),
                          Checked<Form::Boolean>("Transparent"),
                          Checked<Form::SmallEnum>("FontUnit"),
                          Checked<Form::Colour>("TextColor"),
                          Checked<Form::Colour>("BackgroundColor"),
                          Checked<Form::Single>("FontSize"),
                          Checked<Form::Double>("LineSpacing"),
                          Checked<Form::Double>("LineHeight"),
                          Checked<Form::String>("Text"),
                          Checked<Form::String>("Caption"),
                          Checked<Form::String>("InitialParent"),
                          platform::StoredOnly("Composite", Form::Boolean)}};

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
