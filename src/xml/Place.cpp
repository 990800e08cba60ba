#include "xml/Place.h"

#include <algorithm>

#include "text/Unicode.h"

namespace vrn::xml {

namespace {

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

}  // namespace

Position PlaceCounter::at(std::string_view text, std::size_t offset) noexcept {
    if (offset < offset_) {
        *this = PlaceCounter();
    }
    for (; offset_ < std::min(offset, text.size()); ++offset_) {
        const auto byte = static_cast<unsigned char>(text[offset_]);
        const bool ends = byte == '\n' || (byte == '\r' && (offset_ + 1 == text.size() || text[offset_ + 1] != '\n'));
        if (ends) {
            ++position_.line;
            position_.column = 1;
            lineStart_ = offset_ + 1;
        } else {
            // A character counts at its first byte, one beyond the basic plane twice.
            position_.column += byte >= 0xF0 ? 2 : (byte & 0xC0U) != 0x80U ? 1 : 0;
        }
    }
    return position_;
}

ParseError parseErrorAt(std::string_view text, std::size_t offset, int code, std::string_view reason) {
    offset = std::min(offset, text.size());
    PlaceCounter counter;
    const Position position = counter.at(text, offset);
    const std::string_view source = text.substr(counter.lineStart());
    ParseError error;
    error.errorCode = code;
    error.reason = oneLine(reason);
    error.filepos = static_cast<int>(text::utf16Length(text.substr(0, offset)));
    error.line = position.line;
    error.linepos = position.column;
    error.srcText = readable(source.substr(0, source.find_first_of("\r\n")));
    return error;
}

}  // namespace vrn::xml
