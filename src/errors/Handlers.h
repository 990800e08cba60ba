// The two handler conventions. Every procedure of the editor guards its whole body with one of them, so that the body holds
// only its work.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "errors/Error.h"

namespace vrn::errors {

/// The six arguments of the control's only event.
struct MethodEditorErrorArguments {
    std::int32_t lngError = 0;
    std::string strError;
    std::string strApplication;  ///< "vrnMethodEditorVersion: " and the version
    std::string strModule;       ///< always "vrnMthd"
    std::string strProcedure;    ///< the procedure's name and a blank
    std::int16_t intLineNumber = 0;
};

/// The event towards the host. A host's handler that fails harms nobody: what it throws ends here.
class MethodEditorErrorEvent {
  public:
    using Handler = std::function<void(const MethodEditorErrorArguments&)>;

    void connect(Handler handler) { handler_ = std::move(handler); }
    /// Raises the event with the application and module texts that every report carries.
    void raise(std::int32_t number, const std::string& description, std::string_view procedure) const noexcept;
    /// Raises the event for the exception being handled. Call it inside a catch clause only.
    void raiseCurrent(std::string_view procedure) const noexcept;

  private:
    Handler handler_;
};

/// The standard handler: a failure of `body` is reported under the procedure's name and goes no further; the answer is the
/// default result then.
template <typename Body>
auto standardHandler(const MethodEditorErrorEvent& event, std::string_view procedure, Body&& body) noexcept
    -> std::invoke_result_t<Body> {
    using Result = std::invoke_result_t<Body>;
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        event.raiseCurrent(procedure);
    }
    if constexpr (!std::is_void_v<Result>) {
        return Result{};
    }
}

/// Throws the exception being handled on, its source lengthened at the front by a procedure's full name and the version.
[[noreturn]] void rethrowWithSource(std::string_view procedure);

/// The rethrowing handler: a failure of `body` goes on to the caller with a chained source.
template <typename Body>
auto rethrowing(std::string_view procedure, Body&& body) -> std::invoke_result_t<Body> {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        rethrowWithSource(procedure);
    }
}

}  // namespace vrn::errors
