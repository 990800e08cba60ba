// Indented XML text with LF line ends, for documents that people read.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vrn::samples {

[[nodiscard]] std::string escaped(std::string_view text);

class XmlText {
  public:
    XmlText();

    XmlText& open(std::string_view name);
    XmlText& close();
    /// `attributes` as they stand in the tag, without a leading blank.
    XmlText& leaf(std::string_view name, std::string_view text, std::string_view attributes = {});

    [[nodiscard]] const std::string& text() const { return text_; }

  private:
    void indent();

    std::string text_;
    std::vector<std::string> path_;
};

}  // namespace vrn::samples
