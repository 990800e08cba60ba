#include "xml/Canonical.h"

#include <algorithm>
#include <vector>

#include "xml/Escape.h"
#include "xml/NamespaceScope.h"

namespace vrn::xml {

namespace {

constexpr EscapeTable textEscapes = escapeTable({{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'\r', "&#xD;"}});
constexpr EscapeTable attributeEscapes =
    escapeTable({{'&', "&amp;"}, {'<', "&lt;"}, {'"', "&quot;"}, {'\t', "&#x9;"}, {'\n', "&#xA;"}, {'\r', "&#xD;"}});

class Canonicaliser final : public NodeVisitor {
  public:
    explicit Canonicaliser(const Omit& omit) : omit_(omit) {}

    bool startElement(const ElementView& element) override;
    void endElement(const ElementView& element) override;
    void text(std::string_view content) override { appendEscaped(out_, content, textEscapes); }
    void cdata(std::string_view content) override { text(content); }
    void comment(std::string_view /*content*/) override {}
    void processingInstruction(std::string_view target, std::string_view data) override;

    std::string take() { return std::move(out_); }

  private:
    struct Declaration {
        std::string_view prefix;
        std::string_view uri;
    };

    void use(std::string_view prefix, std::string_view uri);
    void collect(const ElementView& element);
    void writeDeclarations();
    void writeAttributes();

    const Omit& omit_;
    std::string out_;
    int depth_ = 0;
    bool behindRoot_ = false;
    NamespaceScope rendered_;  ///< what the output declares, not what the tree does
    std::vector<Declaration> declarations_;
    std::vector<const AttributeView*> attributes_;
};

bool Canonicaliser::startElement(const ElementView& element) {
    if (omit_ && omit_(element, depth_ + 1)) {
        return false;
    }
    ++depth_;
    rendered_.open();
    out_.append(1, '<').append(element.qualifiedName);
    collect(element);
    writeDeclarations();
    writeAttributes();
    out_ += '>';
    return true;
}

void Canonicaliser::endElement(const ElementView& element) {
    out_.append("</").append(element.qualifiedName).append(1, '>');
    rendered_.close();
    --depth_;
    behindRoot_ = behindRoot_ || depth_ == 0;
}

// Instructions beside the root stand on lines of their own.
void Canonicaliser::processingInstruction(std::string_view target, std::string_view data) {
    const bool beside = depth_ == 0;
    if (beside && target == "xml") {
        return;
    }
    if (beside && behindRoot_) {
        out_ += '\n';
    }
    out_.append("<?").append(target);
    if (!data.empty()) {
        out_.append(1, ' ').append(data);
    }
    out_ += "?>";
    if (beside && !behindRoot_) {
        out_ += '\n';
    }
}

// A prefix that the element or an attribute of it has is declared unless the output around it says the same already.
void Canonicaliser::use(std::string_view prefix, std::string_view uri) {
    if (prefix != "xml" && rendered_.uriOf(prefix) != uri) {
        rendered_.declare(prefix, uri);
        declarations_.push_back({prefix, uri});
    }
}

void Canonicaliser::collect(const ElementView& element) {
    declarations_.clear();
    attributes_.clear();
    use(element.prefix, element.namespaceUri);
    for (const AttributeView& attribute : element.attributes) {
        if (attribute.namespaceUri == xmlnsNamespace) {
            continue;
        }
        attributes_.push_back(&attribute);
        if (!attribute.prefix.empty()) {
            use(attribute.prefix, attribute.namespaceUri);
        }
    }
}

void Canonicaliser::writeDeclarations() {
    std::sort(declarations_.begin(), declarations_.end(),
              [](const Declaration& a, const Declaration& b) { return a.prefix < b.prefix; });
    for (const Declaration& declaration : declarations_) {
        out_ += " xmlns";
        if (!declaration.prefix.empty()) {
            out_.append(1, ':').append(declaration.prefix);
        }
        out_ += "=\"";
        appendEscaped(out_, declaration.uri, attributeEscapes);
        out_ += '"';
    }
}

void Canonicaliser::writeAttributes() {
    std::sort(attributes_.begin(), attributes_.end(), [](const AttributeView* a, const AttributeView* b) {
        const int order = a->namespaceUri.compare(b->namespaceUri);
        return order != 0 ? order < 0 : a->localName < b->localName;
    });
    for (const AttributeView* attribute : attributes_) {
        out_.append(1, ' ').append(attribute->qualifiedName).append("=\"");
        appendEscaped(out_, attribute->value, attributeEscapes);
        out_ += '"';
    }
}

}  // namespace

std::string exclusiveCanonicalForm(const Node& node, const Omit& omit) {
    Canonicaliser canonicaliser(omit);
    node.accept(canonicaliser);
    return canonicaliser.take();
}

}  // namespace vrn::xml
