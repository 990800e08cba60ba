// How a failure leaves the control: as an HRESULT, with error information for whoever asks.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <oleauto.h>

#include <string>

#include "errors/Error.h"

namespace vrn::activex {

/// The HRESULT of an error number: one as it is, a run-time error number (5, 91) as 0x800A0000 and that number.
[[nodiscard]] HRESULT resultOf(std::int32_t number) noexcept;

/// Makes the exception being handled the thread's COM error, raised by a member of the interface, and answers with its
/// HRESULT. Call it inside a catch clause only.
[[nodiscard]] HRESULT publishCurrentError(REFIID iid) noexcept;

/// Fails with an HRESULT and a text that says what was wrong with the call.
[[noreturn]] void fail(HRESULT result, std::string description);

/// Fails when a pointer that the caller must give is null; `name` is the argument's.
inline void requirePointer(const void* pointer, const char* name) {
    if (pointer == nullptr) {
        fail(E_POINTER, std::string("The argument ") + name + " must not be null.");
    }
}

}  // namespace vrn::activex
