#include "text/Unicode.h"

namespace vrn::text {

namespace {

constexpr bool isContinuation(unsigned char byte) noexcept { return (byte & 0xC0U) == 0x80U; }

// Length of the sequence that a lead byte opens, and the smallest code point that may take this length.
struct Lead {
    std::size_t length;
    char32_t bits;
    char32_t smallest;
};

constexpr Lead leadOf(unsigned char byte) noexcept {
    if (byte < 0x80) {
        return {1, byte, 0};
    }
    if ((byte & 0xE0U) == 0xC0U) {
        return {2, byte & 0x1FU, 0x80};
    }
    if ((byte & 0xF0U) == 0xE0U) {
        return {3, byte & 0x0FU, 0x800};
    }
    if ((byte & 0xF8U) == 0xF0U) {
        return {4, byte & 0x07U, 0x10000};
    }
    return {0, 0, 0};
}

char32_t upperCase(char32_t c) noexcept {
    const bool latinSmall = (c >= U'a' && c <= U'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7);
    if (latinSmall || (c >= 0x3B1 && c <= 0x3CB && c != 0x3C2) || (c >= 0x430 && c <= 0x44F)) {
        return c - 0x20;
    }
    if (c >= 0x450 && c <= 0x45F) {
        return c - 0x50;
    }
    if (c == 0xFF) {
        return 0x178;
    }
    // Latin Extended-A alternates capital and small letters, in three runs of different parity.
    const bool evenCapitals = (c >= 0x100 && c <= 0x137 && c != 0x131) || (c >= 0x14A && c <= 0x177);
    const bool oddCapitals = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
    if (evenCapitals) {
        return c & ~char32_t{1};
    }
    if (oddCapitals && c % 2 == 0) {
        return c - 1;
    }
    return c;
}

}  // namespace

char32_t takeCodePoint(std::string_view& rest) noexcept {
    const auto lead = leadOf(static_cast<unsigned char>(rest.front()));
    char32_t codePoint = lead.bits;
    bool valid = lead.length != 0 && lead.length <= rest.size();
    for (std::size_t i = 1; valid && i < lead.length; ++i) {
        const auto byte = static_cast<unsigned char>(rest[i]);
        valid = isContinuation(byte);
        codePoint = (codePoint << 6U) | (byte & 0x3FU);
    }
    valid =
        valid && codePoint >= lead.smallest && codePoint <= 0x10FFFF && !(codePoint >= 0xD800 && codePoint <= 0xDFFF);
    rest.remove_prefix(valid ? lead.length : 1);
    return valid ? codePoint : invalidCodePoint;
}

void appendCodePoint(std::string& out, char32_t codePoint) {
    const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(static_cast<unsigned char>(byte))); };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0U | (codePoint >> 6U));
        put(0x80U | (codePoint & 0x3FU));
    } else if (codePoint < 0x10000) {
        put(0xE0U | (codePoint >> 12U));
        put(0x80U | ((codePoint >> 6U) & 0x3FU));
        put(0x80U | (codePoint & 0x3FU));
    } else {
        put(0xF0U | (codePoint >> 18U));
        put(0x80U | ((codePoint >> 12U) & 0x3FU));
        put(0x80U | ((codePoint >> 6U) & 0x3FU));
        put(0x80U | (codePoint & 0x3FU));
    }
}

bool isXmlCharacter(char32_t c) noexcept {
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
           (c >= 0x10000 && c <= 0x10FFFF);
}

bool isXmlText(std::string_view utf8) noexcept {
    while (!utf8.empty()) {
        if (!isXmlCharacter(takeCodePoint(utf8))) {
            return false;
        }
    }
    return true;
}

std::string withoutNonXmlCharacters(std::string_view utf8) {
    if (isXmlText(utf8)) {
        return std::string(utf8);
    }
    std::string out;
    while (!utf8.empty()) {
        const auto codePoint = takeCodePoint(utf8);
        if (isXmlCharacter(codePoint)) {
            appendCodePoint(out, codePoint);
        }
    }
    return out;
}

std::size_t utf16Length(std::string_view utf8) noexcept {
    std::size_t units = 0;
    while (!utf8.empty()) {
        const auto codePoint = takeCodePoint(utf8);
        units += codePoint != invalidCodePoint && codePoint > 0xFFFF ? 2 : 1;
    }
    return units;
}

std::u16string toUtf16(std::string_view utf8) {
    std::u16string out;
    out.reserve(utf8.size());
    while (!utf8.empty()) {
        auto codePoint = takeCodePoint(utf8);
        if (codePoint == invalidCodePoint) {
            codePoint = 0xFFFD;
        }
        if (codePoint > 0xFFFF) {
            codePoint -= 0x10000;
            out.push_back(static_cast<char16_t>(0xD800 + (codePoint >> 10U)));
            out.push_back(static_cast<char16_t>(0xDC00 + (codePoint & 0x3FFU)));
        } else {
            out.push_back(static_cast<char16_t>(codePoint));
        }
    }
    return out;
}

std::string fromUtf16(std::u16string_view utf16) {
    std::string out;
    out.reserve(utf16.size());
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        char32_t codePoint = utf16[i];
        const bool high = codePoint >= 0xD800 && codePoint <= 0xDBFF;
        const bool pair = high && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 && utf16[i + 1] <= 0xDFFF;
        if (pair) {
            codePoint = 0x10000 + ((codePoint - 0xD800) << 10U) + (utf16[++i] - 0xDC00U);
        } else if (codePoint >= 0xD800 && codePoint <= 0xDFFF) {
            codePoint = 0xFFFD;
        }
        appendCodePoint(out, codePoint);
    }
    return out;
}

std::string upperCase(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    while (!utf8.empty()) {
        const char front = utf8.front();
        const auto codePoint = takeCodePoint(utf8);
        if (codePoint == invalidCodePoint) {
            out.push_back(front);
        } else {
            appendCodePoint(out, upperCase(codePoint));
        }
    }
    return out;
}

}  // namespace vrn::text
