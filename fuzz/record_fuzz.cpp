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
#include <vector>

#include "fuzz/require.h"
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
                fuzz::Require(value.index() == static_cast<std::size_t>(F),
                              "a setter gets the form its table declares");
                fuzz::Require(F != Form::String || std::get<6>(value).size() < gInputSize,
                              "a string is shorter than the input");
            }};
}

using enum Form;
// clang-format off
const ClassInfo kControl{"FuzzControl", &Object::StaticClass(), {
    platform::StoredOnly("Composite", Boolean), Checked<Integer>("Left"), Checked<Integer>("Top"),
    Checked<Integer>("Width"), Checked<Integer>("Index"), Checked<Integer>("Period"),
    Checked<Integer>("RunMode"), Checked<Boolean>("Visible"), Checked<Boolean>("Enabled"),
    Checked<Boolean>("MultiLine"), Checked<Boolean>("Transparent"), Checked<SmallEnum>("FontUnit"),
    Checked<Colour>("TextColor"), Checked<Colour>("BackgroundColor"), Checked<Single>("FontSize"),
    Checked<Double>("LineSpacing"), Checked<Double>("LineHeight"), Checked<String>("Text"),
    Checked<String>("Caption"), Checked<String>("InitialParent")}};
// clang-format on
const ClassInfo kLabel{"FuzzLabel", &kControl, {Checked<String>("Value")}};
const ClassInfo kRadio{"FuzzRadio", &kControl, {Checked<Boolean>("Value")}};

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
