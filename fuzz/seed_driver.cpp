// Runs a fuzz target's checks on every seed of its corpus, without libFuzzer, so that the
// default test suite runs them with any compiler. Each seed is named on stderr, with its bytes,
// before it runs, so a failed check, a crash or an escaped exception follows the seed it came
// from.
//   <target>_seeds <corpus folder>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

// The bytes as a C string literal would write them: printable ASCII as is, the rest as \xHH.
std::string Escaped(const std::string& bytes) {
    std::string out;
    for (const unsigned char c : bytes) {
        if (c >= 0x20 && c < 0x7F && c != '"' && c != '\\') {
            out += static_cast<char>(c);
        } else {
            char hex[5];
            std::snprintf(hex, sizeof hex, "\\x%02x", c);
            out += hex;
        }
    }
    return out;
}

// The files of `folder` in name order, so every run takes the seeds in the same order.
std::vector<fs::path> Seeds(const fs::path& folder) {
    std::vector<fs::path> seeds;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            seeds.push_back(entry.path());
        }
    }
    std::ranges::sort(seeds);
    return seeds;
}

std::string Contents(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot read " + file.string());
    }
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

int RunSeeds(const fs::path& folder) {
    const std::vector<fs::path> seeds = Seeds(folder);
    if (seeds.empty()) {
        std::fprintf(stderr, "no seeds in %s\n", folder.c_str());
        return 1;
    }
    for (const fs::path& seed : seeds) {
        const std::string bytes = Contents(seed);
        std::fprintf(stderr, "seed %s: \"%s\"\n", seed.c_str(), Escaped(bytes).c_str());
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    std::fprintf(stderr, "%zu seeds passed\n", seeds.size());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <corpus folder>\n", argv[0]);
        return 2;
    }
    try {
        return RunSeeds(argv[1]);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "error: %s\n", e.what());
        return 1;
    }
}
