// Fault injection, for tests only: every user-interface operation of the platform (each one that
// starts with _UITrap) is counted, and the one at a chosen count can be made to fail, so a test
// can walk a failure through every step of a run and check that the run stops there and reports
// it once. A normal run never arms it; counting costs one increment per operation.
#pragma once

#include <cstdint>

#include "platform/core/failure.h"

namespace platform {

// The failure an armed injector raises.
class InjectedFault : public RuntimeException {
  public:
    using RuntimeException::RuntimeException;
    const char* ClassName() const noexcept override { return "InjectedFault"; }
};

// Starts the count again at 0 and makes the operation at count n (1 is the next one) raise
// InjectedFault. n = 0 injects nothing and only counts.
void InjectFaultAtCall(std::uint64_t n);
// The operations since the last InjectFaultAtCall (or since the process began).
std::uint64_t UITrapCallCount();

// Called by _UITrap: counts the operation and raises the fault when its turn has come.
void _CountUIOperation();

}  // namespace platform
