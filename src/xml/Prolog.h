// What stands before the root element, looked at before any parser sees the text.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "xml/Dom.h"

namespace vrn::xml {

/// The data of the XML declaration (what stands between "<?xml" and "?>", trimmed), or nothing when there is none.
[[nodiscard]] std::optional<std::string_view> declarationData(std::string_view text);

/// Offset in bytes of a DOCTYPE in the prolog, or nothing.
[[nodiscard]] std::optional<std::size_t> findDoctype(std::string_view text);

/// The error record for an error at this byte offset of the text: line, positions and source line filled.
[[nodiscard]] ParseError parseErrorAt(std::string_view text, std::size_t offset, int code, std::string_view reason);

}  // namespace vrn::xml
