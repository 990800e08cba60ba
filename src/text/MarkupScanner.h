// What kind of thing stands at an offset of a well-formed XML text, found without a parse.
#pragma once

#include <cstddef>
#include <string_view>

namespace vrn::text {

class MarkupScanner {
  public:
    enum class Place { Text, Tag, AttributeValue, CData, Comment, Instruction };

    explicit MarkupScanner(std::string_view text) noexcept : text_(text) {}

    /// The place of the byte at this offset. Offsets must not go down: the whole text is looked at once.
    [[nodiscard]] Place placeAt(std::size_t offset) noexcept;

  private:
    [[nodiscard]] std::size_t endOfPlace() const noexcept;
    void enterNext() noexcept;

    std::string_view text_;
    Place place_ = Place::Text;
    char quote_ = '\0';
    std::size_t start_ = 0;  ///< of the current place
};

}  // namespace vrn::text
