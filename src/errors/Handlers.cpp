#include "errors/Handlers.h"

#include "errors/modErr.h"

namespace vrn::errors {

void MethodEditorErrorEvent::raise(std::int32_t number, const std::string& description,
                                   std::string_view procedure) const noexcept {
    if (!handler_) {
        return;
    }
    try {
        // A copy: the host may connect another handler, or none, from within the call.
        const auto handler = handler_;
        // "vrnMethodEditor" and "Version: " stand together without a separator; hosts parse the text.
        handler(
            {number, description, "vrnMethodEditorVersion: " + versionText(), "vrnMthd", std::string(procedure), 0});
    } catch (...) {
        // Neither the host's failure nor the lack of memory for the report may end the procedure that reports.
        static_cast<void>(0);
    }
}

void MethodEditorErrorEvent::raiseCurrent(std::string_view procedure) const noexcept {
    try {
        const auto error = currentError();
        raise(error.number(), error.description(), procedure);
    } catch (...) {
        // No memory for a copy of the error: the number, at least, needs none.
        raise(number::outOfMemory, {}, procedure);
    }
}

void rethrowWithSource(std::string_view procedure) {
    const auto error = currentError();
    throw Error(error.number(), error.description(),
                std::string(procedure) + "Version: " + versionText() + " At line: 0|" + error.source(),
                error.helpFile(), error.helpContext());
}

}  // namespace vrn::errors
