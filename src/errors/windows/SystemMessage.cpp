#include <windows.h>

#include <array>

#include "errors/modErr.h"
#include "text/Ansi.h"

namespace vrn::errors {

std::optional<std::string> systemMessage(std::uint32_t code) {
    std::array<char, 260> buffer{};
    const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                                        buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
    return length < 1 ? std::nullopt : std::optional(text::fromAnsi({buffer.data(), length}));
}

}  // namespace vrn::errors
