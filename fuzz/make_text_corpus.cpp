// Writes the seed corpora of val_format_fuzz and calc_fuzz into <folder>/val_format and
// <folder>/calc (both must exist): the values and entries the program meets, with the edges
// of rounding, the N and r ranges, IEEE specials and bytes that are not UTF-8.
//   make_text_corpus <folder>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>

namespace {

bool Write(const std::string& path, const std::string& bytes) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        std::perror(path.c_str());
        return false;
    }
    const bool ok = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && ok;
}

// val_format_fuzz: eight bytes of a double, then the text.
std::string ValFormatSeed(double value, const std::string& text) {
    std::string bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes + text;
}

// calc_fuzz with btn given by its raw eight bytes.
std::string RawBtnSeed(std::int64_t btn, const std::string& rest) {
    std::string bytes(sizeof btn, '\0');
    std::memcpy(bytes.data(), &btn, sizeof btn);
    return "3" + bytes + rest;
}

struct Seed {
    const char* name;
    std::string bytes;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <folder>\n", argv[0]);
        return 2;
    }
    const std::string folder = argv[1];
    constexpr double kInf = std::numeric_limits<double>::infinity();

    const Seed valFormat[] = {
        {"probability", ValFormatSeed(0.0873, "10")},
        {"t_positive", ValFormatSeed(1.798, "+1.798")},
        {"t_negative", ValFormatSeed(-1.798, "-1.798")},
        {"rounds_to_one", ValFormatSeed(0.99995, ".0873")},
        {"smallest_p", ValFormatSeed(0.00012, "1.2.3")},
        {"tie", ValFormatSeed(1.0625, "9999.9")},
        {"tie_carry", ValFormatSeed(99.5, "+0")},
        {"negative_zero_t", ValFormatSeed(-0.0004, "-1e-400")},
        {"nan", ValFormatSeed(std::nan(""), "abc")},
        {"infinity", ValFormatSeed(kInf, "1e400")},
        {"denormal", ValFormatSeed(5e-324, " \t12abc")},
        {"wide_t", ValFormatSeed(123456789012.3456, "+####.000")},
        {"huge", ValFormatSeed(-1.5e300, ".0000")},
        {"utf8", ValFormatSeed(1e15, "\xC2\xA9 2024")},
        {"not_utf8", ValFormatSeed(19996.0, "\xFF\xC0\xAF\xED\xA0\x80")},
    };
    const Seed calc[] = {
        {"independent", "1\n10\n8\n2\n3\n10\n12\n"},
        {"independent_largest", "1\n3.2\n3.1\n.4\n.5\n9999\n9999"},
        {"related", "2\n10\n8\n2\n3\n10\n\n.5"},
        {"related_r_one", "2\n10\n8\n2\n3\n10\nabc\n1"},
        {"no_test", "0\n10\n8\n2\n3\n10\n12\n.5"},
        {"blank_mean", "1\n10\n\n2\n3\n10\n12"},
        {"both_n_out", "1\n10\n8\n2\n3\n1\n10000"},
        {"r_out", "2\n10\n8\n2\n3\n10\n\n1.0001"},
        {"n_before_r", "2\n12\n9\n2\n2\n1.9\n\n-1.0001"},
        {"spaces_truncation", "1| |8|2|3|12.7|9999.9|"},
        {"zero_se", "1\n5\n5\n0\n0\n2\n2"},
        {"infinities", "2\n1e308\n-1e308\n1e-320\n0\n2\n\n-1"},
        {"raw_btn",
         RawBtnSeed(std::numeric_limits<std::int64_t>::min() + 1, "\n1\n2\n3\n4\n5\n6\n7")},
        {"not_utf8", "1\n\xFF\xFE\n\xC3\x28\n2\n3\nabc\n12"},
    };

    bool ok = true;
    for (const Seed& seed : valFormat) {
        ok = Write(folder + "/val_format/" + seed.name, seed.bytes) && ok;
    }
    for (const Seed& seed : calc) {
        ok = Write(folder + "/calc/" + seed.name, seed.bytes) && ok;
    }
    return ok ? 0 : 1;
}
