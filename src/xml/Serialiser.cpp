#include "xml/Serialiser.h"

#include <algorithm>
#include <span>
#include <vector>

#include "text/Unicode.h"
#include "xml/Escape.h"
#include "xml/NamespaceScope.h"

namespace vrn::xml {

namespace {

constexpr EscapeTable textEscapes = escapeTable({{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'\r', "&#13;"}});
constexpr EscapeTable attributeEscapes = escapeTable(
    {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\r', "&#13;"}, {'\n', "&#10;"}, {'\t', "&#9;"}});

void appendAttribute(std::string& out, std::string_view name, std::string_view value) {
    out.append(name).append("=\"");
    appendEscaped(out, value, attributeEscapes);
    out += '"';
}

class Writer final : public NodeVisitor {
  public:
    bool startElement(const ElementView& element) override;
    void endElement(const ElementView& element) override;
    void text(std::string_view content) override { appendEscapedText(out_, content); }
    void cdata(std::string_view content) override { appendCData(out_, content); }
    void comment(std::string_view content) override { out_.append("<!--").append(content).append("-->"); }
    void processingInstruction(std::string_view target, std::string_view data) override;

    std::string take() { return std::move(out_); }

  private:
    void writeAttribute(const AttributeView& attribute) {
        out_ += ' ';
        appendAttribute(out_, attribute.qualifiedName, attribute.value);
    }
    void declareIfMissing(std::string_view prefix, std::string_view uri);

    std::string out_;
    NamespaceScope scope_;
};

bool Writer::startElement(const ElementView& element) {
    out_.append(1, '<').append(element.qualifiedName);
    scope_.open();
    auto next = element.attributes.begin();
    for (; next != element.attributes.end() && next->namespaceUri == xmlnsNamespace; ++next) {
        writeAttribute(*next);
        scope_.declare(next->prefix.empty() ? std::string_view{} : next->localName, next->value);
    }
    const std::span attributes(next, element.attributes.end());
    // An element that was moved, or made in no namespace under one that has a default, needs a declaration of its own.
    declareIfMissing(element.prefix, element.namespaceUri);
    for (const AttributeView& attribute : attributes) {
        if (!attribute.prefix.empty()) {
            declareIfMissing(attribute.prefix, attribute.namespaceUri);
        }
    }
    for (const AttributeView& attribute : attributes) {
        writeAttribute(attribute);
    }
    out_ += element.hasChildNodes ? ">" : "/>";
    return true;
}

void Writer::endElement(const ElementView& element) {
    if (element.hasChildNodes) {
        out_.append("</").append(element.qualifiedName).append(1, '>');
    }
    scope_.close();
}

void Writer::processingInstruction(std::string_view target, std::string_view data) {
    out_.append("<?").append(target);
    if (!data.empty()) {
        out_.append(1, ' ').append(data);
    }
    out_ += "?>";
}

void Writer::declareIfMissing(std::string_view prefix, std::string_view uri) {
    if (prefix == "xml" || scope_.uriOf(prefix) == uri) {
        return;
    }
    out_ += ' ';
    appendAttribute(out_, prefix.empty() ? std::string("xmlns") : "xmlns:" + std::string(prefix), uri);
    scope_.declare(prefix, uri);
}

// Layout white space is dropped on load, but a character reference in it says that it is meant.
void appendProtectedSpace(std::string& out, std::string_view text) {
    out.append("&#").append(std::to_string(static_cast<int>(text.front()))).append(1, ';');
    appendEscaped(out, text.substr(1), textEscapes);
}

constexpr std::string_view cdataOpening = "<![CDATA[";
constexpr std::string_view cdataClosing = "]]>";

void appendCDataContent(std::string& out, std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text.substr(at).starts_with(cdataClosing)) {
            out.append("]]").append(cdataClosing).append(cdataOpening).append(">");
            at += cdataClosing.size() - 1;
        } else {
            out.push_back(text[at] == '\r' ? '\n' : text[at]);
        }
    }
}

struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;
};

// The carriage return at this place, all white space around it and the characters next to that; empty, at the end of the text, when
// there is no such character on one side.
Span betweenCharacters(std::string_view text, std::size_t carriageReturn) {
    const auto isInner = [text](std::size_t at) { return (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U; };
    Span span{text.find_last_not_of(text::xmlSpace, carriageReturn),
              text.find_first_not_of(text::xmlSpace, carriageReturn)};
    if (span.begin == std::string_view::npos || span.end == std::string_view::npos) {
        return {text.size(), text.size()};
    }
    while (span.begin > 0 && isInner(span.begin)) {
        --span.begin;
    }
    do {
        ++span.end;
    } while (span.end < text.size() && isInner(span.end));
    return span;
}

// Where the text has to leave the section for its carriage returns, which no section can hold.
std::vector<Span> spansOfReturns(std::string_view text) {
    std::vector<Span> spans;
    for (auto at = text.find('\r'); at != std::string_view::npos; at = text.find('\r', at + 1)) {
        const Span span = betweenCharacters(text, at);
        if (!spans.empty() && span.begin < spans.back().end) {
            spans.back().end = std::max(spans.back().end, span.end);
        } else if (span.begin < span.end) {
            spans.push_back(span);
        }
    }
    return spans;
}

}  // namespace

std::string serialise(const Node& node) {
    Writer writer;
    node.accept(writer);
    return writer.take();
}

void appendEscapedText(std::string& out, std::string_view text) {
    const bool isSpace = !text.empty() && std::all_of(text.begin(), text.end(), text::isXmlSpace);
    if (isSpace) {
        appendProtectedSpace(out, text);
    } else {
        appendEscaped(out, text, textEscapes);
    }
}

void appendCData(std::string& out, std::string_view text) {
    std::size_t at = 0;
    out += cdataOpening;
    for (const Span& span : spansOfReturns(text)) {
        appendCDataContent(out, text.substr(at, span.begin - at));
        out += cdataClosing;
        appendEscapedText(out, text.substr(span.begin, span.end - span.begin));
        out += cdataOpening;
        at = span.end;
    }
    appendCDataContent(out, text.substr(at));
    out += cdataClosing;
}

void appendContent(std::string& out, std::string_view text) {
    const std::string_view kept = text::trimXmlSpace(text);
    if (kept.empty()) {
        return;
    }
    if (kept.size() == text.size()) {
        appendEscapedText(out, text);
    } else {
        appendCData(out, text);
    }
}

}  // namespace vrn::xml
