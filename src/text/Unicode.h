// UTF-8 as the editor keeps it, and what other worlds need of it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vrn::text {

inline constexpr char32_t invalidCodePoint = 0xFFFFFFFF;

/// Takes one code point off the front of `rest`. `invalidCodePoint` for bytes that are not UTF-8 (one byte is taken then).
/// Overlong forms and surrogates are not UTF-8.
[[nodiscard]] char32_t takeCodePoint(std::string_view& rest) noexcept;

/// Appends the UTF-8 form of a code point.
void appendCodePoint(std::string& out, char32_t codePoint);

/// Whether XML 1.0 can hold this character at all.
[[nodiscard]] bool isXmlCharacter(char32_t codePoint) noexcept;

/// Whether the text is UTF-8 and holds only characters that XML 1.0 can hold.
[[nodiscard]] bool isXmlText(std::string_view utf8) noexcept;

/// The text without the characters and bytes that XML cannot hold.
[[nodiscard]] std::string withoutNonXmlCharacters(std::string_view utf8);

/// Blank, TAB, LF or CR.
[[nodiscard]] constexpr bool isXmlSpace(char c) noexcept { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

inline constexpr std::string_view xmlSpace = " \t\n\r";

/// The text without XML's white space at both ends.
[[nodiscard]] constexpr std::string_view trimXmlSpace(std::string_view text) noexcept {
    const auto first = text.find_first_not_of(xmlSpace);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(xmlSpace) + 1 - first);
}

/// How many UTF-16 units the text takes; bytes that are not UTF-8 count one each.
[[nodiscard]] std::size_t utf16Length(std::string_view utf8) noexcept;

[[nodiscard]] std::u16string toUtf16(std::string_view utf8);
/// Unpaired surrogates become U+FFFD.
[[nodiscard]] std::string fromUtf16(std::u16string_view utf16);

/// Upper case, one character to one: ASCII, Latin, Greek and Cyrillic letters; everything else stays.
[[nodiscard]] std::string upperCase(std::string_view utf8);

}  // namespace vrn::text
