// Places in a text: where a node begins, where a parse ended.
#pragma once

#include <cstddef>
#include <string_view>

#include "xml/Dom.h"

namespace vrn::xml {

/// Lines and columns of a text that stays as it is. A line ends with LF, CR LF or CR; columns are UTF-16 units.
class PlaceCounter {
  public:
    /// Takes time linear to the distance from the place asked for before, or from the start for an earlier one.
    [[nodiscard]] Position at(std::string_view text, std::size_t offset) noexcept;
    /// Where the line begins that the place asked for last is in.
    [[nodiscard]] std::size_t lineStart() const noexcept { return lineStart_; }

  private:
    std::size_t offset_ = 0;
    std::size_t lineStart_ = 0;
    Position position_{1, 1};
};

/// The error record for an error at this byte offset of the text: line, positions and source line filled.
[[nodiscard]] ParseError parseErrorAt(std::string_view text, std::size_t offset, int code, std::string_view reason);

}  // namespace vrn::xml
