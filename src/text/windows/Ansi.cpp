#include "text/Ansi.h"

#include <windows.h>

#include "text/windows/Wide.h"

namespace vrn::text {

std::string toAnsi(std::string_view utf8) {
    const auto wide = toWide(utf8);
    const auto length = static_cast<int>(wide.size());
    std::string ansi(
        static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr)),
        '\0');
    WideCharToMultiByte(CP_ACP, 0, wide.data(), length, ansi.data(), static_cast<int>(ansi.size()), nullptr, nullptr);
    return ansi;
}

std::string fromAnsi(std::string_view ansi) {
    const auto length = static_cast<int>(ansi.size());
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, ansi.data(), length, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_ACP, 0, ansi.data(), length, wide.data(), static_cast<int>(wide.size()));
    return fromWide(wide);
}

}  // namespace vrn::text
