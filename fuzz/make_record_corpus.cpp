// Writes the seed corpus of the record fuzzer: a few well-formed records over the names of
// fuzz_objects.h, in the shapes the program's own records have (short and long, strings with
// blanks and "©", a repeated name, MacProcID, a bare leading byte).
//   make_record_corpus <folder>
#include <cstdio>
#include <string>
#include <string_view>

#include "platform/core/record_encoder.h"

namespace {

using namespace platform::rec;

constexpr auto kTimer = PLATFORM_RECORD(Int("Period", 4000), Int("RunMode", 1));
constexpr auto kLabel = PLATFORM_RECORD(
    Int("Left", 6), Int("Top", 72), Int("Width", 488), Int("Index", -2147483648LL),
    Bool("Visible", true), Bool("Enabled", true), Bool("Multiline", false),
    Color("TextColor", 0x808080), Single("FontSize", 10.0f), Enum8("FontUnit", 0),
    Double("LineSpacing", 1.0), Str("Value", "© 2024 A. Writer, all rights reserved"),
    Str("InitialParent", ""));
constexpr auto kRadio = PLATFORM_RECORD(Str("InitialParent", ""), Bool("Value", false),
                                        Str("Caption", "Independent Means"), Int("Left", 23),
                                        Bool("Transparent", true), Bool("Transparent", true));
constexpr auto kWindow = PLATFORM_RECORD(
    Int("Width", 500), Int("MacProcID", 0), Bool("Composite", false),
    Color("BackgroundColor", 0xFFFFFF), Double("LineHeight", 0.0), Str("Text", "Korvane"),
    Str("Caption",
        "A caption long enough to take the record past the leading byte's 255, "
        "so that its length has to come from the string itself and not from the "
        "first byte, which reads 0xFF for every record of that size or more."),
    Bool("Visible", true));

bool Write(const std::string& folder, const char* name, std::string_view bytes) {
    const std::string path = folder + "/" + name;
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        std::perror(path.c_str());
        return false;
    }
    const bool ok = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && ok;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <folder>\n", argv[0]);
        return 2;
    }
    const std::string folder = argv[1];
    const bool ok =
        Write(folder, "timer", kTimer.view()) && Write(folder, "label", kLabel.view()) &&
        Write(folder, "radio", kRadio.view()) && Write(folder, "window", kWindow.view()) &&
        Write(folder, "empty", PLATFORM_RECORD().view());
    return ok ? 0 : 1;
}
