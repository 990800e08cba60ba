#include "xml/Prolog.h"

#include <algorithm>

#include "text/Unicode.h"

namespace vrn::xml {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::size_t skipSpace(std::string_view text, std::size_t at) noexcept {
    while (at < text.size() && text::isXmlSpace(text[at])) {
        ++at;
    }
    return at;
}

// Behind the closing mark of what begins at `at`, or the end of the text.
std::size_t behind(std::string_view text, std::size_t at, std::string_view mark) noexcept {
    const std::size_t found = text.find(mark, at);
    return found == std::string_view::npos ? text.size() : found + mark.size();
}

// An error record is shown and written to protocols: it must be text even when the document is not.
std::string readable(std::string_view bytes) {
    if (text::isXmlText(bytes)) {
        return std::string(bytes);
    }
    std::string out;
    while (!bytes.empty()) {
        const char32_t c = text::takeCodePoint(bytes);
        text::appendCodePoint(out, text::isXmlCharacter(c) ? c : char32_t{0xFFFD});
    }
    return out;
}

std::string oneLine(std::string_view reason) {
    std::string out = readable(reason);
    std::replace_if(
        out.begin(), out.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    out.erase(out.find_last_not_of(' ') + 1);
    return out;
}

struct Line {
    int number = 1;
    std::size_t start = 0;
};

// A line ends with LF, CR LF or CR.
Line lineOf(std::string_view text, std::size_t offset) noexcept {
    Line line;
    for (std::size_t i = 0; i < offset; ++i) {
        const bool ends = text[i] == '\n' || (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n'));
        if (ends) {
            ++line.number;
            line.start = i + 1;
        }
    }
    return line;
}

}  // namespace

std::optional<std::string_view> declarationData(std::string_view text) {
    constexpr std::string_view opening = "<?xml";
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    const std::size_t end = text.find("?>");
    if (!text.starts_with(opening) || end == std::string_view::npos || !text::isXmlSpace(text[opening.size()])) {
        return std::nullopt;
    }
    std::string_view data = text.substr(opening.size(), end - opening.size());
    data.remove_prefix(skipSpace(data, 0));
    while (!data.empty() && text::isXmlSpace(data.back())) {
        data.remove_suffix(1);
    }
    return data;
}

std::optional<std::size_t> findDoctype(std::string_view text) {
    std::size_t at = text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
    for (;;) {
        at = skipSpace(text, at);
        const std::string_view rest = text.substr(at);
        if (rest.starts_with("<!DOCTYPE")) {
            return at;
        }
        if (rest.starts_with("<!--")) {
            at = behind(text, at + 4, "-->");
        } else if (rest.starts_with("<?")) {
            at = behind(text, at + 2, "?>");
        } else {
            return std::nullopt;
        }
    }
}

ParseError parseErrorAt(std::string_view text, std::size_t offset, int code, std::string_view reason) {
    offset = std::min(offset, text.size());
    const Line line = lineOf(text, offset);
    const std::string_view before = text.substr(line.start, offset - line.start);
    const std::string_view source = text.substr(line.start);
    ParseError error;
    error.errorCode = code;
    error.reason = oneLine(reason);
    error.filepos = static_cast<int>(text::utf16Length(text.substr(0, offset)));
    error.line = line.number;
    error.linepos = static_cast<int>(text::utf16Length(before)) + 1;
    error.srcText = readable(source.substr(0, source.find_first_of("\r\n")));
    return error;
}

}  // namespace vrn::xml
