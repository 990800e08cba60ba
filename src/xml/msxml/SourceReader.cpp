#include "xml/msxml/SourceReader.h"

#include <algorithm>

#include "text/Unicode.h"
#include "xml/msxml/Tree.h"

namespace vrn::xml {

namespace {

constexpr std::size_t maximumAttributes = 1000;
constexpr std::size_t maximumDeclarations = 1000;
constexpr std::size_t maximumNames = 100000;

// As MSXML has them.
constexpr int undeclaredPrefix = -1072898019;
constexpr int commentSyntax = -1072896765;
constexpr int unspecifiedError = -2147467259;

constexpr std::string_view space = " \t\r\n";
constexpr std::string_view declarationPrefix = "xmlns:";
constexpr std::string_view xmlNamespace = "http://www.w3.org/XML/1998/namespace";

std::size_t behind(std::string_view text, std::string_view mark, std::size_t from) noexcept {
    const std::size_t found = text.find(mark, from);
    return found == std::string_view::npos ? text.size() : found + mark.size();
}

std::size_t skipSpace(std::string_view text, std::size_t at) noexcept {
    return std::min(text.find_first_not_of(space, at), text.size());
}

std::size_t endOfName(std::string_view text, std::size_t at) noexcept {
    return std::min(text.find_first_of(" \t\r\n=/><\"'", at), text.size());
}

// The value that stands behind "=" at this place.
std::string_view valueAt(std::string_view text, std::size_t at) noexcept {
    const std::size_t equals = skipSpace(text, at);
    const std::size_t open = skipSpace(text, std::min(equals + 1, text.size()));
    if (open >= text.size() || text[equals] != '=' || (text[open] != '"' && text[open] != '\'')) {
        return {};
    }
    return text.substr(open + 1, text.find(text[open], open + 1) - open - 1);
}

}  // namespace

SourceReader::SourceReader(std::string_view text) : text_(text) {
    kept_.reserve(text.size());
    while (at_ < text_.size() && !isCostly_) {
        if (text_[at_] == '<') {
            readMarkup();
        } else {
            readCharacters(std::min(text_.find('<', at_), text_.size()));
        }
    }
}

// A declaration may not have anything before it, so white space there is an error to keep.
void SourceReader::readCharacters(std::size_t end) {
    const bool isLayout = skipSpace(text_, at_) >= end && !(at_ == 0 && text_.substr(end).starts_with("<?xml"));
    if (isLayout) {
        at_ = end;
    } else {
        keepUpTo(end);
    }
}

void SourceReader::readMarkup() {
    const std::string_view rest = text_.substr(at_);
    if (rest.starts_with("<!--")) {
        readComment();
    } else if (rest.starts_with("<![CDATA[")) {
        keepUpTo(behind(text_, "]]>", at_));
    } else if (rest.starts_with("<?")) {
        readInstruction();
    } else if (rest.starts_with("</")) {
        readEndTag();
    } else {
        readStartTag();
    }
}

// There are MSXMLs that go on behind each such fault, at a cost that grows with the text before it.
void SourceReader::readComment() {
    const std::size_t dashes = text_.find("--", at_ + 4);
    if (dashes != std::string_view::npos && text_.substr(dashes, 3) != "-->") {
        return refuseCostly(dashes, commentSyntax, "Incorrect syntax was used in a comment.");
    }
    keepUpTo(behind(text_, "--", at_ + 4) + 1);
}

void SourceReader::readInstruction() {
    const std::size_t end = endOfName(text_, at_ + 2);
    std::string_view target = text_.substr(at_ + 2, end - at_ - 2);
    target = target.substr(0, target.find('?'));
    if (target == tree::declarationTarget) {
        refuse(unspecifiedError, "A reserved name is used as the target of an instruction");
    }
    keepUpTo(behind(text_, "?>", at_ + 2));
}

void SourceReader::readStartTag() {
    const std::size_t nameEnd = endOfName(text_, at_ + 1);
    const std::string_view name = text_.substr(at_ + 1, nameEnd - at_ - 1);
    ++depth_;
    deepest_ = std::max(deepest_, depth_);
    if (depth_ > tree::maximumDepth) {
        return refuseCostly(at_, unspecifiedError, "Excessive depth in document");
    }
    attributeNames_.clear();
    const std::size_t end = readAttributes(nameEnd);
    addName(name);
    requireDeclared(name);
    for (const std::string_view attribute : attributeNames_) {
        addName(attribute);
        if (!attribute.starts_with(declarationPrefix)) {
            requireDeclared(attribute);
        }
    }
    const bool isEmpty = end >= 2 && text_[end - 2] == '/' && text_[end - 1] == '>';
    keepUpTo(end);
    if (isEmpty) {
        closeElement();
    }
}

// Answers the end of the tag: behind its ">", or the end of the text.
std::size_t SourceReader::readAttributes(std::size_t at) {
    while (at < text_.size() && text_[at] != '>' && !isCostly_) {
        const std::size_t nameEnd = endOfName(text_, at);
        if (nameEnd == at) {
            const bool quoted = text_[at] == '"' || text_[at] == '\'';
            at = quoted ? behind(text_, text_.substr(at, 1), at + 1) : at + 1;
            continue;
        }
        const std::string_view name = text_.substr(at, nameEnd - at);
        attributeNames_.push_back(name);
        if (name.starts_with(declarationPrefix)) {
            declare(name.substr(declarationPrefix.size()), valueAt(text_, nameEnd));
        }
        if (attributeNames_.size() > maximumAttributes || declarations_.size() > maximumDeclarations) {
            refuseCostly(at_, unspecifiedError, "Too many attributes in one element");
        }
        at = nameEnd;
    }
    return std::min(at + 1, text_.size());
}

void SourceReader::readEndTag() {
    keepUpTo(behind(text_, ">", at_));
    closeElement();
}

void SourceReader::closeElement() {
    while (!declarations_.empty() && declarations_.back().depth == depth_) {
        declarations_.pop_back();
    }
    depth_ -= depth_ > 0 ? 1 : 0;
}

void SourceReader::keepUpTo(std::size_t end) {
    end = std::min(end, text_.size());
    kept_.append(text_, at_, end - at_);
    at_ = end;
}

void SourceReader::addName(std::string_view name) {
    names_.insert(name);
    if (names_.size() > maximumNames) {
        refuseCostly(at_, unspecifiedError, "Too many different names");
    }
}

void SourceReader::declare(std::string_view prefix, std::string_view uri) {
    if (prefix == "xml" ? uri != xmlNamespace : prefix == "xmlns" || uri.empty()) {
        refuse(unspecifiedError, "The namespace prefix '" + std::string(prefix) + "' is declared wrongly.");
    }
    declarations_.push_back({depth_, prefix});
}

void SourceReader::requireDeclared(std::string_view name) {
    const std::size_t colon = name.find(':');
    if (colon == std::string_view::npos) {
        return;
    }
    const std::string_view prefix = name.substr(0, colon);
    const bool known =
        prefix == "xml" || std::any_of(declarations_.begin(), declarations_.end(),
                                       [prefix](const Declaration& declared) { return declared.prefix == prefix; });
    if (!known) {
        refuse(undeclaredPrefix, "Reference to undeclared namespace prefix: '" + std::string(prefix) + "'.");
    } else if (name.find(':', colon + 1) != std::string_view::npos) {
        refuse(unspecifiedError, "A name has more than one colon: '" + std::string(name) + "'.");
    }
}

void SourceReader::refuse(int code, std::string reason) {
    if (!refusal_) {
        refusal_ = {at_, code, std::move(reason)};
    }
}

void SourceReader::refuseCostly(std::size_t offset, int code, const char* reason) {
    if (!isCostly_) {
        refusal_ = {offset, code, reason};
        isCostly_ = true;
    }
}

}  // namespace vrn::xml
