// Splitting, joining and cutting texts: the list texts (items separated by ";") and everything shaped like them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vrn::text {

inline constexpr std::string_view crlf = "\r\n";

/// The items between separators; an empty text has no items.
[[nodiscard]] std::vector<std::string> split(std::string_view text, std::string_view separator);
[[nodiscard]] std::string join(const std::vector<std::string>& items, std::string_view separator);
void appendJoined(std::string& out, const std::vector<std::string>& items, std::string_view separator);

/// Calls `look` with each of the items that `split` gives, as a view on the text.
template <typename Look>
void forEachItem(std::string_view text, std::string_view separator, Look look) {
    if (text.empty()) {
        return;
    }
    for (;;) {
        const auto end = text.find(separator);
        look(text.substr(0, end));
        if (end == std::string_view::npos) {
            return;
        }
        text.remove_prefix(end + separator.size());
    }
}

/// The text without blanks (U+0020 only) at both ends.
[[nodiscard]] std::string_view trimBlanks(std::string_view text) noexcept;

void replaceAll(std::string& text, std::string_view from, std::string_view to);
[[nodiscard]] std::string replacedAll(std::string text, std::string_view from, std::string_view to);

/// The text before the first `mark`, or all of it when there is none.
[[nodiscard]] std::string_view before(std::string_view text, std::string_view mark) noexcept;

[[nodiscard]] inline bool contains(std::string_view text, std::string_view part) noexcept {
    return text.find(part) != std::string_view::npos;
}

}  // namespace vrn::text
