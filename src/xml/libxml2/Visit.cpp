// The walk of a visitor through a tree, without recursion and without an allocation for each node.
#include "xml/libxml2/Tree.h"

namespace vrn::xml {

using tree::view;

namespace {

class Visit {
  public:
    explicit Visit(NodeVisitor& visitor) : visitor_(visitor) {}

    /// Whether to go on with the node's children.
    bool enter(const xmlNode* node);
    void leave(const xmlNode* node);

  private:
    ElementView elementView(const xmlNode* element);
    std::string_view qualified(std::string_view prefix, std::string_view name);
    void addDeclarations(const xmlNode* element);
    void addAttributes(const xmlNode* element);

    NodeVisitor& visitor_;
    std::vector<AttributeView> attributes_;
    std::string names_;  ///< names with prefixes, which the tree has in two pieces; never grows while views on it live
};

std::size_t roomFor(std::string_view prefix, std::string_view name) noexcept {
    return prefix.empty() ? 0 : prefix.size() + 1 + name.size();
}

constexpr std::string_view declarationPrefix = "xmlns";

std::size_t roomForNames(const xmlNode* element) noexcept {
    std::size_t room = roomFor(tree::namespacePrefix(element->ns), view(element->name));
    for (const xmlNs* ns = element->nsDef; ns != nullptr; ns = ns->next) {
        room += roomFor(declarationPrefix, view(ns->prefix));
    }
    for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next) {
        if (attribute->ns != nullptr) {
            room += roomFor(tree::namespacePrefix(attribute->ns), view(attribute->name));
        }
    }
    return room;
}

std::string_view Visit::qualified(std::string_view prefix, std::string_view name) {
    if (prefix.empty()) {
        return name;
    }
    const std::size_t start = names_.size();
    names_.append(prefix).append(1, ':').append(name);
    return std::string_view(names_).substr(start);
}

ElementView Visit::elementView(const xmlNode* element) {
    names_.clear();
    names_.reserve(roomForNames(element));
    ElementView shown;
    shown.prefix = tree::namespacePrefix(element->ns);
    shown.localName = view(element->name);
    shown.namespaceUri = tree::namespaceUri(element->ns);
    shown.qualifiedName = qualified(shown.prefix, shown.localName);
    shown.hasChildNodes = element->children != nullptr;
    return shown;
}

void Visit::addDeclarations(const xmlNode* element) {
    for (const xmlNs* ns = element->nsDef; ns != nullptr; ns = ns->next) {
        const std::string_view prefix = view(ns->prefix);
        const std::string_view uri = view(ns->href);
        if (prefix.empty()) {
            attributes_.push_back({declarationPrefix, {}, declarationPrefix, xmlnsNamespace, uri});
        } else {
            attributes_.push_back(
                {qualified(declarationPrefix, prefix), declarationPrefix, prefix, xmlnsNamespace, uri});
        }
    }
}

void Visit::addAttributes(const xmlNode* element) {
    for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next) {
        const std::string_view prefix = tree::namespacePrefix(attribute->ns);
        const std::string_view name = view(attribute->name);
        attributes_.push_back({qualified(prefix, name), prefix, name, tree::namespaceUri(attribute->ns),
                               tree::attributeValue(attribute)});
    }
}

bool Visit::enter(const xmlNode* node) {
    switch (node->type) {
        case XML_ELEMENT_NODE: {
            ElementView element = elementView(node);
            attributes_.clear();
            addDeclarations(node);
            addAttributes(node);
            element.attributes = attributes_;
            return visitor_.startElement(element);
        }
        case XML_TEXT_NODE:
            visitor_.text(view(node->content));
            return false;
        case XML_CDATA_SECTION_NODE:
            visitor_.cdata(view(node->content));
            return false;
        case XML_COMMENT_NODE:
            visitor_.comment(view(node->content));
            return false;
        case XML_PI_NODE:
            visitor_.processingInstruction(view(node->name), view(node->content));
            return false;
        default:
            return node->type == XML_DOCUMENT_NODE || node->type == XML_DOCUMENT_FRAG_NODE;
    }
}

void Visit::leave(const xmlNode* node) {
    if (node->type == XML_ELEMENT_NODE) {
        visitor_.endElement(elementView(node));
    }
}

}  // namespace

void Node::accept(NodeVisitor& visitor) const {
    const xmlNode* const top = tree::required(*this);
    Visit visit(visitor);
    const xmlNode* node = top;
    for (;;) {
        if (visit.enter(node)) {
            if (node->children != nullptr) {
                node = node->children;
                continue;
            }
            visit.leave(node);
        }
        while (node != top && node->next == nullptr) {
            node = node->parent;
            visit.leave(node);
        }
        if (node == top) {
            return;
        }
        node = node->next;
    }
}

}  // namespace vrn::xml
