#include "text/Ansi.h"

#include <algorithm>
#include <array>

#include "text/Unicode.h"

namespace vrn::text {

namespace {

// What Windows-1252 has at 0x80 to 0x9F; the five bytes it leaves undefined stand for the control characters of their number.
constexpr std::array<char32_t, 32> high{0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                        0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                        0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                        0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

void appendAnsi(std::string& out, char32_t codePoint) {
    if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint <= 0xFF)) {
        out.push_back(static_cast<char>(static_cast<unsigned char>(codePoint)));
        return;
    }
    if (const auto* const found = std::find(high.begin(), high.end(), codePoint); found != high.end()) {
        out.push_back(static_cast<char>(static_cast<unsigned char>(0x80 + (found - high.begin()))));
        return;
    }
    // As Windows converts: one for each UTF-16 unit.
    out.append(codePoint > 0xFFFF && codePoint != invalidCodePoint ? 2 : 1, '?');
}

}  // namespace

std::string toAnsi(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    while (!utf8.empty()) {
        appendAnsi(out, takeCodePoint(utf8));
    }
    return out;
}

std::string fromAnsi(std::string_view ansi) {
    std::string out;
    out.reserve(ansi.size());
    for (const char c : ansi) {
        const auto byte = static_cast<unsigned char>(c);
        appendCodePoint(out, byte >= 0x80 && byte < 0xA0 ? high.at(byte - 0x80U) : char32_t{byte});
    }
    return out;
}

}  // namespace vrn::text
