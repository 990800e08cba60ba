// Text in the language of manual pages, man(7).
#pragma once

#include <string>
#include <string_view>

namespace vrn::cli {

/// Characters as roff takes them for themselves: dashes that can be copied, no requests at line starts.
[[nodiscard]] std::string roffText(std::string_view text);

/// What commands say below their options: paragraphs, lines that begin with a blank as they stand, and of Markdown what the
/// documentation uses: headings, lists, tables, blocks of code, marks within lines.
[[nodiscard]] std::string roffParagraphs(const std::string& text);

}  // namespace vrn::cli
