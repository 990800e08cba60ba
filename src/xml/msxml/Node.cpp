// What a node is and what stands around it.
#include "errors/Error.h"
#include "xml/Serialiser.h"
#include "xml/msxml/Tree.h"

namespace vrn::xml {

using tree::handle;
using tree::NodePtr;
using tree::required;

namespace {

// Attributes are no children: nothing stands below or beside them.
bool isAttribute(IXMLDOMNode* node) { return tree::typeOf(node) == NODE_ATTRIBUTE; }

}  // namespace

bool Node::operator==(const Node& other) const {
    if (raw_ == other.raw_) {
        return true;
    }
    return raw_ != nullptr && other.raw_ != nullptr && owner_->tree == other.owner_->tree &&
           tree::same(required(*this), required(other));
}

NodeKind Node::kind() const {
    switch (tree::typeOf(required(*this))) {
        case NODE_DOCUMENT:
            return NodeKind::Document;
        case NODE_ELEMENT:
            return NodeKind::Element;
        case NODE_ATTRIBUTE:
            return NodeKind::Attribute;
        case NODE_CDATA_SECTION:
            return NodeKind::CData;
        case NODE_COMMENT:
            return NodeKind::Comment;
        case NODE_PROCESSING_INSTRUCTION:
            return NodeKind::ProcessingInstruction;
        case NODE_DOCUMENT_FRAGMENT:
            return NodeKind::Fragment;
        default:
            return NodeKind::Text;
    }
}

std::string Node::name() const { return tree::nameOf(required(*this)); }

std::string Node::xml() const {
    (void)required(*this);
    return serialise(*this);
}

bool Node::hasChildNodes() const { return static_cast<bool>(firstChild()); }

Node Node::firstChild() const {
    IXMLDOMNode* const node = required(*this);
    return isAttribute(node) ? Node() : handle(owner_->tree, tree::firstChild(node));
}

Node Node::lastChild() const {
    IXMLDOMNode* const node = required(*this);
    return isAttribute(node) ? Node() : handle(owner_->tree, tree::lastChild(node));
}

Node Node::nextSibling() const {
    IXMLDOMNode* const node = required(*this);
    return isAttribute(node) ? Node() : handle(owner_->tree, tree::nextSibling(node));
}

Node Node::parentNode() const {
    IXMLDOMNode* const node = required(*this);
    return isAttribute(node) ? Node() : handle(owner_->tree, tree::parentOf(node));
}

std::vector<Node> Node::childNodes() const {
    std::vector<Node> children;
    for (Node child = firstChild(); child; child = child.nextSibling()) {
        children.push_back(child);
    }
    return children;
}

namespace {

// From this node on, the first element among it and its next siblings that has the name.
NodePtr elementNamed(NodePtr node, std::wstring_view name, std::string_view uri) {
    while (node != nullptr && (tree::typeOf(node.Get()) != NODE_ELEMENT || tree::rawName(node.Get()).view() != name ||
                               tree::namespaceOf(node.Get()) != uri)) {
        node = tree::nextSibling(node.Get());
    }
    return node;
}

}  // namespace

Node Node::child(std::string_view name) const {
    IXMLDOMNode* const node = required(*this);
    if (isAttribute(node)) {
        return {};
    }
    return handle(owner_->tree, elementNamed(tree::firstChild(node), com::Bstr(name).view(), {}));
}

Node Node::nextOfSameName() const {
    IXMLDOMNode* const node = required(*this);
    if (tree::typeOf(node) != NODE_ELEMENT) {
        return {};
    }
    const com::Bstr name = tree::rawName(node);
    return handle(owner_->tree, elementNamed(tree::nextSibling(node), name.view(), tree::namespaceOf(node)));
}

}  // namespace vrn::xml
