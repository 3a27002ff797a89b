// The check every fuzz target makes. A failed check prints the file and line of the call and
// what it expected, then traps: libFuzzer reports that with the input, and the seed driver
// (seed_driver.cpp) has named the seed it is running just before.
#pragma once

#include <cstdio>

namespace fuzz {

// __builtin_FILE() and __builtin_LINE() as default arguments take the caller's place; clang 14
// lacks what std::source_location needs.
inline void Require(bool ok, const char* what, const char* file = __builtin_FILE(),
                    int line = __builtin_LINE()) {
    if (!ok) {
        std::fprintf(stderr, "%s:%d: check failed: %s\n", file, line, what);
        __builtin_trap();
    }
}

}  // namespace fuzz
