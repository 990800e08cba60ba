// Characters that stand escaped in XML text, appended run by run.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace vrn::xml {

struct Escape {
    char character = '\0';
    std::string_view written;
};

/// Which characters are written otherwise, and how.
struct EscapeTable {
    std::array<std::uint8_t, 256> indexOf{};  ///< 0 for characters that stand as they are
    std::array<Escape, 8> escapes{};
};

consteval EscapeTable escapeTable(std::initializer_list<Escape> escapes) {
    EscapeTable table;
    std::uint8_t index = 0;
    for (const Escape& escape : escapes) {
        ++index;
        table.escapes[index] = escape;
        table.indexOf[static_cast<unsigned char>(escape.character)] = index;
    }
    return table;
}

inline void appendEscaped(std::string& out, std::string_view text, const EscapeTable& table) {
    std::size_t runStart = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::uint8_t index = table.indexOf[static_cast<unsigned char>(text[i])];
        if (index != 0) {
            out.append(text, runStart, i - runStart).append(table.escapes[index].written);
            runStart = i + 1;
        }
    }
    out.append(text, runStart);
}

}  // namespace vrn::xml
