#include "text/TextFile.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <optional>

#include "errors/Error.h"
#include "text/Converter.h"
#include "text/MarkupScanner.h"
#include "text/Unicode.h"

namespace vrn::text {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view littleEndianMark = "\xFF\xFE";
constexpr std::string_view bigEndianMark = "\xFE\xFF";

[[noreturn]] void fail(const std::string& description) {
    throw errors::Error(errors::number::invalidProcedureCall, description);
}

[[noreturn]] void failAt(std::size_t offset, std::string_view encoding, std::string_view what) {
    fail("The XML text has " + std::string(what) + " at offset " + std::to_string(offset) + " that the encoding \"" +
         std::string(encoding) + "\" does not have.");
}

[[noreturn]] void failUnknown(std::string_view encoding) {
    fail("The encoding \"" + std::string(encoding) + "\" of the XML text is unknown.");
}

// Names have no other characters, and none is that long.
bool isEncodingName(std::string_view name) noexcept {
    constexpr std::size_t longest = 40;
    return name.size() <= longest && std::all_of(name.begin(), name.end(), [](char c) {
               return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
                      c == '_' || c == '-';
           });
}

// What is declared is shown in errors and given to the system's converters, which take instructions after a "/".
std::string encodingOf(std::string_view text) {
    auto encoding = declaredEncoding(text);
    if (!isEncodingName(encoding)) {
        fail("What the XML text declares as its encoding is not the name of one.");
    }
    return encoding;
}

std::string lowerCase(std::string_view text) {
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c | 0x20) : c; });
    return out;
}

// The converter if the system has it; error 5 otherwise.
template <typename Make>
Converter converterFor(const std::string& encoding, Make make) {
    Converter converter = make(lowerCase(encoding));
    if (!converter) {
        failUnknown(encoding);
    }
    return converter;
}

enum class Family { Utf8, Utf16, Utf16LittleEndian, Utf16BigEndian, Wide, Other };

// What the name of an encoding means to this file. Names are compared without case.
Family familyOf(std::string_view encoding) {
    const std::string name = lowerCase(encoding);
    if (name.empty() || name == "utf-8" || name == "utf8") {
        return Family::Utf8;
    }
    if (name == "utf-16" || name == "utf16" || name == "ucs-2" || name == "iso-10646-ucs-2" || name == "unicode") {
        return Family::Utf16;
    }
    if (name == "utf-16le") {
        return Family::Utf16LittleEndian;
    }
    if (name == "utf-16be") {
        return Family::Utf16BigEndian;
    }
    const bool wide = name.starts_with("utf-32") || name.starts_with("ucs-4") || name == "iso-10646-ucs-4";
    return wide ? Family::Wide : Family::Other;
}

constexpr bool isAscii(char c) noexcept { return static_cast<unsigned char>(c) < 0x80; }

// The bits that ASCII leaves clear, eight bytes at a time: nearly all there is.
using Mask = std::array<unsigned char, 8>;
constexpr Mask aboveAscii{0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80};
constexpr Mask aboveAsciiLittleEndian{0x80, 0xFF, 0x80, 0xFF, 0x80, 0xFF, 0x80, 0xFF};
constexpr Mask aboveAsciiBigEndian{0xFF, 0x80, 0xFF, 0x80, 0xFF, 0x80, 0xFF, 0x80};

// The end of the run of bytes from `at` on that have none of these bits; up to seven bytes of it may be left.
std::size_t endOfRun(std::string_view bytes, std::size_t at, const Mask& mask) noexcept {
    const auto bits = std::bit_cast<std::uint64_t>(mask);
    for (std::uint64_t word = 0; at + sizeof word <= bytes.size(); at += sizeof word) {
        std::memcpy(&word, bytes.data() + at, sizeof word);
        if ((word & bits) != 0) {
            break;
        }
    }
    return at;
}

std::string decodeUtf8(std::string_view bytes, std::size_t start) {
    for (std::size_t at = endOfRun(bytes, start, aboveAscii); at < bytes.size();) {
        if (isAscii(bytes[at])) {
            ++at;
            continue;
        }
        std::string_view rest = bytes.substr(at);
        if (takeCodePoint(rest) == invalidCodePoint) {
            failAt(at, "UTF-8", "a byte");
        }
        at = endOfRun(bytes, bytes.size() - rest.size(), aboveAscii);
    }
    return std::string(bytes.substr(start));
}

constexpr bool isHighSurrogate(char32_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t unit) noexcept { return unit >= 0xDC00 && unit <= 0xDFFF; }

std::string decodeUtf16(std::string_view bytes, std::size_t start, bool bigEndian) {
    const auto unitAt = [bytes, bigEndian](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return bigEndian ? char32_t{first} << 8U | second : char32_t{second} << 8U | first;
    };
    std::string out;
    out.reserve(bytes.size() / 2);
    std::size_t at = start;
    for (; at + 1 < bytes.size(); at += 2) {
        // Whole runs of ASCII at once: most methods are nothing else.
        std::size_t run = (endOfRun(bytes, at, bigEndian ? aboveAsciiBigEndian : aboveAsciiLittleEndian) - at) / 2;
        while (at + 2 * run + 1 < bytes.size() && unitAt(at + 2 * run) < 0x80) {
            ++run;
        }
        if (run > 0) {
            const std::size_t written = out.size();
            out.resize(written + run);
            const char* const low = bytes.data() + at + (bigEndian ? 1 : 0);
            for (std::size_t i = 0; i < run; ++i) {
                out[written + i] = low[2 * i];
            }
            at += 2 * (run - 1);
            continue;
        }
        char32_t c = unitAt(at);
        if (isHighSurrogate(c) && at + 3 < bytes.size() && isLowSurrogate(unitAt(at + 2))) {
            c = 0x10000 + ((c - 0xD800) << 10U) + (unitAt(at + 2) - 0xDC00);
            at += 2;
        } else if (isHighSurrogate(c) || isLowSurrogate(c)) {
            failAt(at, "UTF-16", "half a character");
        }
        appendCodePoint(out, c);
    }
    if (at < bytes.size()) {
        failAt(at, "UTF-16", "half a character");
    }
    return out;
}

std::string decodeOther(std::string_view bytes, const std::string& encoding) {
    const Converter converter = converterFor(encoding, Converter::toUtf8);
    std::string out;
    const std::size_t taken = converter.convert(bytes, out);
    if (taken < bytes.size()) {
        failAt(taken, encoding, "a byte");
    }
    return out;
}

std::string encodeUtf16(std::string_view text, bool withMark, bool bigEndian) {
    const std::u16string units = toUtf16(text);
    std::string out;
    out.reserve(2 * units.size() + 2);
    if (withMark) {
        out += bigEndian ? bigEndianMark : littleEndianMark;
    }
    for (const char16_t unit : units) {
        const char high = static_cast<char>(static_cast<unsigned char>(unit >> 8U));
        const char low = static_cast<char>(static_cast<unsigned char>(unit & 0xFFU));
        out += bigEndian ? high : low;
        out += bigEndian ? low : high;
    }
    return out;
}

// A character that the encoding does not have, as markup that means it where there is such markup.
std::optional<std::string> reference(char32_t c, MarkupScanner::Place place) {
    const std::string written = "&#" + std::to_string(static_cast<unsigned long>(c)) + ";";
    switch (place) {
        case MarkupScanner::Place::Text:
        case MarkupScanner::Place::AttributeValue:
            return written;
        case MarkupScanner::Place::CData:
            return "]]>" + written + "<![CDATA[";
        default:
            return std::nullopt;
    }
}

std::string encodeOther(std::string_view text, const std::string& encoding) {
    const Converter converter = converterFor(encoding, Converter::fromUtf8);
    MarkupScanner scanner(text);
    std::string out;
    std::size_t at = converter.convert(text, out);
    while (at < text.size()) {
        std::string_view rest = text.substr(at);
        const char32_t c = takeCodePoint(rest);
        const auto written = reference(c, scanner.placeAt(at));
        if (c == invalidCodePoint || !written) {
            failAt(at, encoding, "a character");
        }
        (void)converter.convert(*written, out);
        at = text.size() - rest.size();
        at += converter.convert(rest, out);
    }
    converter.finish(out);
    return out;
}

// A parser that follows the standard refuses a file that is in another encoding than it says.
void requireDeclared(std::string_view text, std::initializer_list<Family> actual, const char* words) {
    const auto encoding = encodingOf(text);
    if (!encoding.empty() && std::find(actual.begin(), actual.end(), familyOf(encoding)) == actual.end()) {
        fail("The XML text declares the encoding \"" + encoding + "\" but is written in " + words + ".");
    }
}

// The value of a pseudo attribute in the data of a declaration.
std::string_view pseudoAttribute(std::string_view data, std::string_view wanted) {
    constexpr std::string_view space = " \t\r\n";
    for (;;) {
        data.remove_prefix(std::min(data.find_first_not_of(space), data.size()));
        const std::size_t equals = data.find('=');
        const std::size_t open = data.find_first_of("\"'", std::min(equals, data.size()));
        if (open == std::string_view::npos) {
            return {};
        }
        const std::size_t close = data.find(data[open], open + 1);
        if (close == std::string_view::npos) {
            return {};
        }
        const std::string_view name = data.substr(0, std::min(data.find_first_of(" \t\r\n="), equals));
        if (name == wanted) {
            return data.substr(open + 1, close - open - 1);
        }
        data.remove_prefix(close + 1);
    }
}

}  // namespace

std::string decodeXmlFile(std::string_view bytes) {
    if (bytes.starts_with(utf8Mark)) {
        auto text = decodeUtf8(bytes, utf8Mark.size());
        requireDeclared(text, {Family::Utf8}, "UTF-8");
        return text;
    }
    const bool hasMark = bytes.starts_with(littleEndianMark) || bytes.starts_with(bigEndianMark);
    if (hasMark || bytes.starts_with("<\0"sv) || bytes.starts_with("\0<"sv)) {
        const bool bigEndian = bytes.starts_with(bigEndianMark) || bytes.front() == '\0';
        auto text = decodeUtf16(bytes, hasMark ? 2 : 0, bigEndian);
        requireDeclared(text, {Family::Utf16, bigEndian ? Family::Utf16BigEndian : Family::Utf16LittleEndian},
                        bigEndian ? "UTF-16, high byte first" : "UTF-16, low byte first");
        return text;
    }
    const std::string encoding = encodingOf(bytes);
    // Every encoding of two or four bytes a character was seen above if it was really there.
    requireDeclared(bytes, {Family::Utf8, Family::Other}, "single bytes");
    return familyOf(encoding) == Family::Other ? decodeOther(bytes, encoding) : decodeUtf8(bytes, 0);
}

std::string encodeXmlFile(std::string_view text) {
    if (text.starts_with(utf8Mark)) {
        text.remove_prefix(utf8Mark.size());
    }
    const std::string encoding = encodingOf(text);
    switch (familyOf(encoding)) {
        case Family::Utf8:
            return std::string(text);
        case Family::Utf16:
            return encodeUtf16(text, true, false);
        case Family::Utf16LittleEndian:
            return encodeUtf16(text, false, false);
        case Family::Utf16BigEndian:
            return encodeUtf16(text, false, true);
        case Family::Wide:
            failUnknown(encoding);
        case Family::Other:
            break;
    }
    return encodeOther(text, encoding);
}

std::optional<std::string_view> declarationData(std::string_view text) {
    constexpr std::string_view opening = "<?xml";
    if (text.starts_with(utf8Mark)) {
        text.remove_prefix(utf8Mark.size());
    }
    const std::size_t end = text.find("?>");
    if (!text.starts_with(opening) || end == std::string_view::npos || !isXmlSpace(text[opening.size()])) {
        return std::nullopt;
    }
    const std::string_view data = text.substr(opening.size(), end - opening.size());
    return trimXmlSpace(data);
}

std::string declaredEncoding(std::string_view text) {
    const auto data = declarationData(text);
    return std::string(data ? pseudoAttribute(*data, "encoding") : std::string_view{});
}

}  // namespace vrn::text
