#include "xml/Names.h"

#include <algorithm>
#include <array>

#include "errors/Error.h"
#include "text/Lists.h"
#include "text/Unicode.h"
#include "xml/Dom.h"

namespace vrn::xml {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

constexpr std::array<Range, 13> nameStartBeyondAscii{{{0xC0, 0xD6},
                                                      {0xD8, 0xF6},
                                                      {0xF8, 0x2FF},
                                                      {0x370, 0x37D},
                                                      {0x37F, 0x1FFF},
                                                      {0x200C, 0x200D},
                                                      {0x2070, 0x218F},
                                                      {0x2C00, 0x2FEF},
                                                      {0x3001, 0xD7FF},
                                                      {0xF900, 0xFDCF},
                                                      {0xFDF0, 0xFFFD},
                                                      {0x10000, 0xEFFFF},
                                                      {U'_', U'_'}}};

bool isNameStart(char32_t c) noexcept {
    if ((c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z')) {
        return true;
    }
    return std::any_of(nameStartBeyondAscii.begin(), nameStartBeyondAscii.end(),
                       [c](Range range) { return c >= range.first && c <= range.last; });
}

bool isNamePart(char32_t c) noexcept {
    return (c >= U'0' && c <= U'9') || c == U'-' || c == U'.' || c == 0xB7 || (c >= 0x300 && c <= 0x36F) ||
           c == 0x203F || c == 0x2040 || isNameStart(c);
}

void require(bool good) {
    if (!good) {
        errors::throwInvalidProcedureCall();
    }
}

bool isReservedTarget(std::string_view target) noexcept {
    return target.size() == 3 && (target[0] | 0x20) == 'x' && (target[1] | 0x20) == 'm' && (target[2] | 0x20) == 'l';
}

}  // namespace

bool isPlainName(std::string_view name) noexcept {
    if (name.empty() || !isNameStart(text::takeCodePoint(name))) {
        return false;
    }
    while (!name.empty()) {
        if (!isNamePart(text::takeCodePoint(name))) {
            return false;
        }
    }
    return true;
}

void requirePlainName(std::string_view name) { require(isPlainName(name)); }

void requireAttributeName(std::string_view name) { require(name != "xmlns" && isPlainName(name)); }

void requireTarget(std::string_view target) {
    require(isPlainName(target) && (target == "xml" || !isReservedTarget(target)));
}

void requireNamespaceUri(std::string_view uri) {
    requireText(uri);
    require(uri != xmlnsNamespace && uri != "http://www.w3.org/XML/1998/namespace");
}

void requireText(std::string_view text) { require(text::isXmlText(text)); }

std::string withLineFeeds(std::string_view text) {
    std::string out(text);
    if (out.find('\r') != std::string::npos) {
        text::replaceAll(out, "\r\n", "\n");
        std::replace(out.begin(), out.end(), '\r', '\n');
    }
    return out;
}

std::string instructionContent(std::string_view data) {
    requireText(data);
    require(data.find("?>") == std::string_view::npos);
    while (!data.empty() && text::isXmlSpace(data.front())) {
        data.remove_prefix(1);
    }
    return withLineFeeds(data);
}

std::string commentContent(std::string_view text) {
    requireText(text);
    require(text.find("--") == std::string_view::npos && !text.ends_with('-'));
    return withLineFeeds(text);
}

std::string cdataContent(std::string_view text) {
    requireText(text);
    return withLineFeeds(text);
}

}  // namespace vrn::xml
