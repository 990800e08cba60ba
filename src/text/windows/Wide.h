// Texts as the system's calls want them: UTF-16 in `wchar_t`.
#pragma once

#include <string>
#include <string_view>

#include "text/Unicode.h"

namespace vrn::text {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

[[nodiscard]] inline std::wstring toWide(std::string_view utf8) {
    const auto utf16 = toUtf16(utf8);
    return {utf16.begin(), utf16.end()};
}

/// Unpaired surrogates become U+FFFD.
[[nodiscard]] inline std::string fromWide(std::wstring_view wide) {
    return fromUtf16({reinterpret_cast<const char16_t*>(wide.data()), wide.size()});
}

}  // namespace vrn::text
