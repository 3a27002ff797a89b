// Delegates: a window's handler bound to a control's event.
//
// A delegate holds the window weakly, as the framework's delegates hold their bound object:
// the control does not keep the window alive, and a call after the window is gone raises
// NilObjectException instead of touching freed memory.
#pragma once

#include <functional>
#include <utility>

#include "platform/core/object.h"

namespace platform {

template <class W, class R, class... Args>
std::function<R(Args...)> Delegate(W& window, R (W::*handler)(Args...)) {
    return [bound = WeakRef(&window), handler](Args... args) -> R {
        W& receiver = RuntimeCheckCast<W>(bound.Value());
        return (receiver.*handler)(std::forward<Args>(args)...);
    };
}

}  // namespace platform
