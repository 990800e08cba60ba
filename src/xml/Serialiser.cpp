#include "xml/Serialiser.h"

#include <algorithm>
#include <span>

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

}  // namespace

std::string serialise(const Node& node) {
    if (node.kind() == NodeKind::Attribute) {
        std::string out;
        appendAttribute(out, node.name(), node.text());
        return out;
    }
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
    constexpr std::string_view opening = "<![CDATA[";
    constexpr std::string_view closing = "]]>";
    out += opening;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text.substr(at).starts_with(closing)) {
            out.append("]]").append(closing).append(opening).append(">");
            at += closing.size() - 1;
        } else if (text[at] == '\r') {
            // A section cannot hold it: a parse would make it LF.
            out.append(closing).append("&#13;").append(opening);
        } else {
            out.push_back(text[at]);
        }
    }
    out += closing;
}

}  // namespace vrn::xml
