#include "platform/core/failure.h"

namespace platform {

void RaiseNilObjectException() {
    throw NilObjectException("A nil object was used.");
}

}  // namespace platform
