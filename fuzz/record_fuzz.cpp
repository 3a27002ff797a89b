// Applies arbitrary bytes as a layout record. A RecordFormatException is the reader's answer to
// a damaged record and is expected; any other failure, a crash, or a sanitizer report is a bug.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/fuzz_objects.h"
#include "platform/core/record.h"

namespace {

void ApplyExpectingOnlyFormatErrors(platform::Object& target, std::string_view record) {
    try {
        platform::ApplyRecord(target, record);
    } catch (const platform::RecordFormatException&) {
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view record(reinterpret_cast<const char*>(data), size);
    fuzz::g_input_size = size;
    // Each input meets all three classes: `Value` is unknown to the control, a string to the
    // label and a boolean to the radio.
    fuzz::FuzzControl control;
    fuzz::FuzzLabel label;
    fuzz::FuzzRadio radio;
    ApplyExpectingOnlyFormatErrors(control, record);
    ApplyExpectingOnlyFormatErrors(label, record);
    ApplyExpectingOnlyFormatErrors(radio, record);
    return 0;
}
