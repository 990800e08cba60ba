// The ANSI code page: what message boxes show and some comparisons are made in.
//
// On Windows it is the system's; elsewhere it is Windows-1252.
#pragma once

#include <string>
#include <string_view>

namespace vrn::text {

/// The text in the ANSI code page. A character that it does not have becomes its substitute character, "?", once for each UTF-16
/// unit of the character.
[[nodiscard]] std::string toAnsi(std::string_view utf8);
[[nodiscard]] std::string fromAnsi(std::string_view ansi);

/// Whether both texts are the same bytes in the ANSI code page: characters that it does not have are all equal.
[[nodiscard]] bool equalInAnsi(std::string_view a, std::string_view b);

}  // namespace vrn::text
