// The text of a node with descendants, put together from their pieces: one rule for all back ends.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace vrn::xml {

/// Collects the texts of all descendants in document order.
class DescendantText {
  public:
    void addText(std::string_view content) { text_ += content; }
    void addCData(std::string_view content);
    /// All of it.
    [[nodiscard]] std::string whole() && { return std::move(text_); }
    /// Without white space at both ends, except within CDATA.
    [[nodiscard]] std::string trimmed() &&;

  private:
    std::string text_;
    // What no trimming may touch: from the first CDATA section to the last, empty ones too, since a section that had to be
    // parted may begin or end with one.
    std::size_t keepFrom_ = std::string::npos;
    std::size_t keepTo_ = 0;
};

}  // namespace vrn::xml
