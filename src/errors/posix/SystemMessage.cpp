#include <cstring>

#include "errors/modErr.h"

namespace vrn::errors {

std::optional<std::string> systemMessage(std::uint32_t code) {
    // strerrordesc_np answers null for a code it does not know, where strerror makes a text up; it is not translated.
    const char* const text = strerrordesc_np(static_cast<int>(code));
    return text == nullptr ? std::nullopt : std::optional<std::string>(text);
}

}  // namespace vrn::errors
