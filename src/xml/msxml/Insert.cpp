// Nodes put in and taken out.
#include "errors/Error.h"
#include "xml/msxml/Tree.h"

namespace vrn::xml {

using tree::NodePtr;
using tree::required;
using tree::same;
using tree::typeOf;

namespace {

void require(bool good) {
    if (!good) {
        errors::throwInvalidProcedureCall();
    }
}

bool takesChildren(DOMNodeType type) noexcept {
    return type == NODE_ELEMENT || type == NODE_DOCUMENT || type == NODE_DOCUMENT_FRAGMENT;
}

bool isWithin(NodePtr node, IXMLDOMNode* ancestor) {
    while (node != nullptr && !same(node.Get(), ancestor)) {
        node = tree::parentOf(node.Get());
    }
    return node != nullptr;
}

NodePtr elementChild(IXMLDOMNode* document) {
    NodePtr child = tree::firstChild(document);
    while (child != nullptr && typeOf(child.Get()) != NODE_ELEMENT) {
        child = tree::nextSibling(child.Get());
    }
    return child;
}

// A document takes one element, comments and instructions; the declaration stands first there and nowhere else.
void requireTopLevel(IXMLDOMNode* child, IXMLDOMNode* document, IXMLDOMNode* reference) {
    const DOMNodeType type = typeOf(child);
    require(type == NODE_ELEMENT || type == NODE_COMMENT || type == NODE_PROCESSING_INSTRUCTION);
    if (type == NODE_ELEMENT) {
        const NodePtr present = elementChild(document);
        require(present == nullptr || same(present.Get(), child));
    }
    if (!tree::isDeclaration(child)) {
        require(reference == nullptr || !tree::isDeclaration(reference));
        return;
    }
    NodePtr first = tree::firstChild(document);
    if (first != nullptr && same(first.Get(), child)) {
        first = tree::nextSibling(first.Get());
    }
    require(first == nullptr ||
            (reference != nullptr && same(reference, first.Get()) && !tree::isDeclaration(first.Get())));
}

void requirePlace(IXMLDOMNode* child, IXMLDOMNode* parent, IXMLDOMNode* reference) {
    const DOMNodeType type = typeOf(child);
    require(type != NODE_DOCUMENT && type != NODE_ATTRIBUTE && type != NODE_DOCUMENT_FRAGMENT);
    if (typeOf(parent) == NODE_DOCUMENT) {
        requireTopLevel(child, parent, reference);
        return;
    }
    require(!tree::isDeclaration(child));
    // A node without children is nobody's ancestor: a tree built from its root down costs no climb.
    require(tree::firstChild(child) == nullptr ? !same(child, parent) : !isWithin(parent, child));
}

// All is checked before anything moves.
void requireFragmentPlace(IXMLDOMNode* fragment, IXMLDOMNode* parent, IXMLDOMNode* reference) {
    require(!isWithin(parent, fragment));
    const bool toDocument = typeOf(parent) == NODE_DOCUMENT;
    int elements = toDocument && elementChild(parent) != nullptr ? 1 : 0;
    for (NodePtr child = tree::firstChild(fragment); child != nullptr; child = tree::nextSibling(child.Get())) {
        requirePlace(child.Get(), parent, reference);
        elements += typeOf(child.Get()) == NODE_ELEMENT ? 1 : 0;
    }
    require(!toDocument || elements <= 1);
}

bool isParent(IXMLDOMNode* parent, IXMLDOMNode* child) {
    const NodePtr actual = tree::parentOf(child);
    return actual != nullptr && same(actual.Get(), parent);
}

// One by one: a fragment that is put in whole may show its children afterwards.
void moveAll(tree::Tree& owner, IXMLDOMNode* fragment, IXMLDOMNode* parent, IXMLDOMNode* reference) {
    while (const NodePtr child = tree::firstChild(fragment)) {
        tree::insert(owner, child.Get(), parent, reference);
    }
}

}  // namespace

Node Node::appendChild(const Node& child) const { return insertBefore(child, Node()); }

Node Node::insertBefore(const Node& child, const Node& reference) const {
    IXMLDOMNode* const parent = required(*this);
    IXMLDOMNode* const added = required(child);
    NodePtr before(static_cast<IXMLDOMNode*>(reference.raw()));
    require(takesChildren(typeOf(parent)) && child.owner()->tree == owner_->tree);
    require(before == nullptr || (reference.owner()->tree == owner_->tree && typeOf(before.Get()) != NODE_ATTRIBUTE &&
                                  isParent(parent, before.Get())));
    if (typeOf(added) == NODE_DOCUMENT_FRAGMENT) {
        requireFragmentPlace(added, parent, before.Get());
        moveAll(*owner_->tree, added, parent, before.Get());
        return child;
    }
    requirePlace(added, parent, before.Get());
    if (before != nullptr && same(before.Get(), added)) {
        before = tree::nextSibling(added);
    }
    tree::insert(*owner_->tree, added, parent, before.Get());
    return child;
}

void Node::removeChild(const Node& child) const {
    IXMLDOMNode* const parent = required(*this);
    IXMLDOMNode* const removed = required(child);
    require(child.owner()->tree == owner_->tree && typeOf(removed) != NODE_ATTRIBUTE);
    tree::remove(parent, removed);
}

}  // namespace vrn::xml
