// Names of files as the user sees them. Inside, a name is what the system calls the file, byte for byte.
#pragma once

#include <string>
#include <string_view>
#include <system_error>

namespace vrn::cli {

inline constexpr std::string_view standardInput = "-";

/// The name as UTF-8 text on one line: bytes that are not UTF-8 and control characters become "\xNN".
[[nodiscard]] std::string displayName(std::string_view path);

/// Why a file or folder cannot be read, in the same words wherever that is reported.
[[nodiscard]] std::string unreadable(const std::error_code& error);

/// The name as a URI: of the scheme "file" when it is absolute, else a reference relative to the current folder.
[[nodiscard]] std::string uriOf(std::string_view path);

}  // namespace vrn::cli
