// The error record of the thread and the texts of the system's messages.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vrn::errors {

/// The record that the last `copyError` of this thread filled.
struct structError {
    std::int32_t lngNumber = 0;
    std::string strDescription;
    std::string strSource;
    std::string strHelpFile;
    std::int32_t lngHelpContext = 0;
};

/// One per thread, overwritten whole by `copyError` and never cleared.
extern thread_local structError g_structError;

/// The thread's error state as a caller of `copyError` finds it.
struct ErrorState {
    std::int32_t number = 0;
    std::string description;
    std::string source;
    std::string helpFile;
    std::int32_t helpContext = 0;
    std::uint32_t lastSystemError = 0;
};

/// The control's default source name.
inline constexpr std::string_view defaultSourceName = "vrnMethodEditor";

/// Copies the error state into `g_structError`. An error that carries a foreign source keeps it; a system error gets the
/// system's text. With neither error pending it fails with 13, "Type mismatch", and leaves the record alone.
void copyError(const ErrorState& state, std::string_view defaultSource);

/// The system's message for a code, or nothing when it has none. May throw.
using MessageLookup = std::function<std::optional<std::string>(std::uint32_t code)>;
[[nodiscard]] std::optional<std::string> systemMessage(std::uint32_t code);

/// The system's text for a code without its line end, "(No such error)" for an unknown code. Never fails: when the look-up
/// does, the answer is a text that says so.
[[nodiscard]] std::string GetSystemMessage(std::int32_t lngMsgID, const MessageLookup& lookup = systemMessage);

/// The text without one CR LF at its end.
[[nodiscard]] std::string removeTerminatingCRLF(std::string text);

/// "1.0.0": major, minor and revision in plain decimal.
[[nodiscard]] std::string versionText();

}  // namespace vrn::errors
