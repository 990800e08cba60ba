// What a node is and what stands around it.
#include "errors/Error.h"
#include "xml/Serialiser.h"
#include "xml/libxml2/Tree.h"

namespace vrn::xml {

using tree::required;
using tree::view;

namespace {

std::string qualifiedName(const xmlNode* node) {
    std::string name(tree::namespacePrefix(node->ns));
    if (!name.empty()) {
        name += ':';
    }
    return name += view(node->name);
}

// Attributes are no children: nothing stands below or beside them.
bool isAttribute(const xmlNode* node) noexcept { return node->type == XML_ATTRIBUTE_NODE; }

Node related(const Node& node, xmlNode* other) { return other == nullptr ? Node() : Node(node.owner(), other); }

}  // namespace

bool Node::operator==(const Node& other) const { return raw_ == other.raw_; }

NodeKind Node::kind() const {
    switch (required(*this)->type) {
        case XML_DOCUMENT_NODE:
            return NodeKind::Document;
        case XML_ELEMENT_NODE:
            return NodeKind::Element;
        case XML_ATTRIBUTE_NODE:
            return NodeKind::Attribute;
        case XML_CDATA_SECTION_NODE:
            return NodeKind::CData;
        case XML_COMMENT_NODE:
            return NodeKind::Comment;
        case XML_PI_NODE:
            return NodeKind::ProcessingInstruction;
        case XML_DOCUMENT_FRAG_NODE:
            return NodeKind::Fragment;
        default:
            return NodeKind::Text;
    }
}

std::string Node::name() const {
    const xmlNode* const node = required(*this);
    switch (kind()) {
        case NodeKind::Document:
            return "#document";
        case NodeKind::Element:
        case NodeKind::Attribute:
            return qualifiedName(node);
        case NodeKind::ProcessingInstruction:
            return std::string(view(node->name));
        case NodeKind::CData:
            return "#cdata-section";
        case NodeKind::Comment:
            return "#comment";
        case NodeKind::Fragment:
            return "#document-fragment";
        case NodeKind::Text:
            break;
    }
    return "#text";
}

std::string Node::xml() const {
    (void)required(*this);
    return serialise(*this);
}

bool Node::hasChildNodes() const {
    const xmlNode* const node = required(*this);
    return !isAttribute(node) && node->children != nullptr;
}

Node Node::firstChild() const {
    xmlNode* const node = required(*this);
    return isAttribute(node) ? Node() : related(*this, node->children);
}

Node Node::lastChild() const {
    xmlNode* const node = required(*this);
    return isAttribute(node) ? Node() : related(*this, node->last);
}

Node Node::nextSibling() const {
    const xmlNode* const node = required(*this);
    return isAttribute(node) || tree::visibleParent(*owner_, node) == nullptr ? Node() : related(*this, node->next);
}

Node Node::parentNode() const {
    const xmlNode* const node = required(*this);
    return isAttribute(node) ? Node() : related(*this, tree::visibleParent(*owner_, node));
}

std::vector<Node> Node::childNodes() const {
    std::vector<Node> children;
    for (Node child = firstChild(); child; child = child.nextSibling()) {
        children.push_back(child);
    }
    return children;
}

Node Node::child(std::string_view name) const {
    for (xmlNode* node = required(*this)->children; node != nullptr; node = node->next) {
        if (node->type == XML_ELEMENT_NODE && tree::hasPlainName(node, name)) {
            return {owner_, node};
        }
    }
    return {};
}

Node Node::nextOfSameName() const {
    const xmlNode* const node = required(*this);
    if (node->type != XML_ELEMENT_NODE || tree::visibleParent(*owner_, node) == nullptr) {
        return {};
    }
    const std::string_view name = view(node->name);
    const std::string_view uri = tree::namespaceUri(node->ns);
    for (xmlNode* next = node->next; next != nullptr; next = next->next) {
        if (next->type == XML_ELEMENT_NODE && tree::equals(next->name, name) && tree::namespaceUri(next->ns) == uri) {
            return {owner_, next};
        }
    }
    return {};
}

}  // namespace vrn::xml
