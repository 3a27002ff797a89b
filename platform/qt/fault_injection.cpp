#include "platform/qt/fault_injection.h"

#include <string>

namespace platform {

namespace {

// One thread runs the user interface (_UITrap refuses the others before it counts), so plain
// statics serve.
std::uint64_t gCalls = 0;
std::uint64_t gFaultAt = 0;

}  // namespace

void InjectFaultAtCall(std::uint64_t n) {
    gCalls = 0;
    gFaultAt = n;
}

std::uint64_t UITrapCallCount() {
    return gCalls;
}

void _CountUIOperation() {
    ++gCalls;
    if (gCalls == gFaultAt) {
        throw InjectedFault("fault injected at user-interface operation " + std::to_string(gCalls));
    }
}

}  // namespace platform
