#include "errors/modErr.h"

#include <utility>

#include "errors/Error.h"
#include "errors/Version.h"

namespace vrn::errors {

thread_local structError g_structError;

namespace {

std::string sourceFor(const std::string& ownSource, std::string_view defaultSource) {
    if (ownSource == defaultSourceName) {
        return defaultSource.empty() ? ownSource : std::string(defaultSource);
    }
    return ownSource.empty() ? std::string(defaultSource) : ownSource;
}

}  // namespace

void copyError(const ErrorState& state, std::string_view defaultSource) {
    structError record;
    if (state.number != 0) {
        record = {state.number, state.description, sourceFor(state.source, defaultSource), state.helpFile,
                  state.helpContext};
    } else if (state.lastSystemError != 0) {
        const auto code = static_cast<std::int32_t>(state.lastSystemError);
        record = {code, GetSystemMessage(code), std::string(defaultSource), state.helpFile, state.helpContext};
    } else {
        // Nothing to copy. The record for this case has an empty text as its help context, which is no number: the caller
        // learns of its mistake by the type mismatch, and the record stays as it was.
        throwTypeMismatch();
    }
    g_structError = std::move(record);
}

std::string GetSystemMessage(std::int32_t lngMsgID, const MessageLookup& lookup) {
    try {
        auto message = lookup(static_cast<std::uint32_t>(lngMsgID));
        return removeTerminatingCRLF(message && !message->empty() ? std::move(*message) : "(No such error)");
    } catch (...) {
        const auto error = currentError();
        return "An error occured in .GetSystemMessage for lngMsgID = " + std::to_string(lngMsgID) +
               ".\r\nReport this error and the circumstances of it's appearence.\r\n\r\nOriginal error message:\r\nNumber: " +
               std::to_string(error.number()) + "\r\nDescription: " + error.description() +
               "\r\nSource: " + error.source();
    }
}

std::string removeTerminatingCRLF(std::string text) {
    if (text.ends_with("\r\n")) {
        text.resize(text.size() - 2);
    }
    return text;
}

std::string versionText() {
    return std::to_string(versionMajor) + "." + std::to_string(versionMinor) + "." + std::to_string(versionRevision);
}

}  // namespace vrn::errors
