// The one way in which the editor shows a modal message to the user.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "errors/modErr.h"

namespace vrn::errors {

inline constexpr std::string_view messageBoxTitle = "Method Editor Component - Method Editor Control";

/// Message box styles of the callers: one OK button and an icon.
inline constexpr std::int32_t styleError = 16;
inline constexpr std::int32_t styleInformation = 64;
inline constexpr std::int32_t buttonOk = 1;

/// What shows message boxes: the system, a host, or a test.
class MessageBoxService {
  public:
    virtual ~MessageBoxService() = default;
    /// The system's box. Texts are in the ANSI code page. The button that ended it, or 0 when it could not be shown.
    virtual std::int32_t MessageBoxExA(std::intptr_t hWnd, const std::string& text, const std::string& caption,
                                       std::int32_t flags) = 0;
    /// The error state right after a `MessageBoxExA` that answered 0.
    virtual ErrorState lastError() = 0;
    /// The plain box that still works when the system's does not. Texts are UTF-8.
    virtual void fallback(const std::string& text, const std::string& caption, std::int32_t style) = 0;
};

/// Shows the message; answers the button, or 0 when only the fallback could be shown. Fails with the recorded error when
/// even that fails.
std::int32_t messageBox(MessageBoxService& service, std::intptr_t hWnd, std::string_view strMessage,
                        std::string_view strTitle, std::int32_t lngFlags);

}  // namespace vrn::errors
