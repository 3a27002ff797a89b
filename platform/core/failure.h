// Failures of the running program, carried as C++ exceptions.
//
// What the user types wrong is never a failure: the code tests it and answers with a message.
// A failure is a fault of the program (a nil reference, a bad cast, a malformed layout record).
// It ends the operation in which it arises, passes up unchanged, and is caught in exactly two
// places: the platform's protected call of a handler, and _Main. RAII releases what is held.
#pragma once

#include <stdexcept>
#include <string>

namespace platform {

class RuntimeException : public std::runtime_error {
  public:
    explicit RuntimeException(const std::string& message = {}) : std::runtime_error(message) {}
    // The run-time class name, as the report of an escaped failure shows it.
    virtual const char* ClassName() const noexcept { return "RuntimeException"; }
    std::string Message() const { return what(); }
};

#define PLATFORM_FAILURE_CLASS(Name)                                      \
    class Name : public RuntimeException {                                \
      public:                                                             \
        using RuntimeException::RuntimeException;                         \
        const char* ClassName() const noexcept override { return #Name; } \
    };

PLATFORM_FAILURE_CLASS(NilObjectException)
PLATFORM_FAILURE_CLASS(IllegalCastException)
PLATFORM_FAILURE_CLASS(StackOverflowException)
PLATFORM_FAILURE_CLASS(ThreadAccessingUIException)
PLATFORM_FAILURE_CLASS(OutOfBoundsException)
PLATFORM_FAILURE_CLASS(TypeMismatchException)
PLATFORM_FAILURE_CLASS(UnsupportedFormatException)
PLATFORM_FAILURE_CLASS(FunctionNotFoundException)
// A layout record that cannot be read: a value running past the end, a name the class lacks.
PLATFORM_FAILURE_CLASS(RecordFormatException)

#undef PLATFORM_FAILURE_CLASS

// The message a ThreadAccessingUIException carries.
inline constexpr const char* kThreadAccessingUIMessage =
    "A thread has attempted to manipulate a user interface element. "
    "This can only be done from the application's main thread.";

// Raises NilObjectException. Used before a member of a reference that turned out nil.
[[noreturn]] void RaiseNilObjectException();

// The reference itself, or NilObjectException when it is nil.
template <class T>
T& NotNil(T* object) {
    if (object == nullptr) {
        RaiseNilObjectException();
    }
    return *object;
}

}  // namespace platform
