// Nodes put in and taken out.
#include "errors/Error.h"
#include "xml/libxml2/Tree.h"

namespace vrn::xml {

using tree::required;

namespace {

void require(bool good) {
    if (!good) {
        errors::throwInvalidProcedureCall();
    }
}

bool takesChildren(const xmlNode* node) noexcept {
    return node->type == XML_ELEMENT_NODE || node->type == XML_DOCUMENT_NODE || node->type == XML_DOCUMENT_FRAG_NODE;
}

bool isWithin(const xmlNode* node, const xmlNode* ancestor) noexcept {
    while (node != nullptr && node != ancestor) {
        node = node->parent;
    }
    return node != nullptr;
}

const xmlNode* elementChild(const xmlNode* document) noexcept {
    const xmlNode* child = document->children;
    while (child != nullptr && child->type != XML_ELEMENT_NODE) {
        child = child->next;
    }
    return child;
}

// A document takes one element, comments and instructions; the declaration stands first there and nowhere else.
void requireTopLevel(const xmlNode* child, const xmlNode* document, const xmlNode* reference) {
    require(child->type == XML_ELEMENT_NODE || child->type == XML_COMMENT_NODE || child->type == XML_PI_NODE);
    if (child->type == XML_ELEMENT_NODE) {
        const xmlNode* const present = elementChild(document);
        require(present == nullptr || present == child);
    }
    const xmlNode* first = document->children;
    if (first == child) {
        first = first->next;
    }
    if (tree::isXmlDeclaration(child)) {
        require(first == nullptr || (reference == first && !tree::isXmlDeclaration(first)));
    } else {
        require(reference == nullptr || !tree::isXmlDeclaration(reference));
    }
}

void requirePlace(const xmlNode* child, const xmlNode* parent, const xmlNode* reference) {
    require(child->type != XML_DOCUMENT_NODE && child->type != XML_ATTRIBUTE_NODE &&
            child->type != XML_DOCUMENT_FRAG_NODE);
    if (parent->type == XML_DOCUMENT_NODE) {
        requireTopLevel(child, parent, reference);
        return;
    }
    require(!tree::isXmlDeclaration(child));
    // A node without children is nobody's ancestor: a tree built from its root down costs no climb.
    require(child->children == nullptr ? child != parent : !isWithin(parent, child));
}

// All is checked before anything moves.
void requireFragmentPlace(const xmlNode* fragment, const xmlNode* parent, const xmlNode* reference) {
    require(!isWithin(parent, fragment));
    int elements = parent->type == XML_DOCUMENT_NODE && elementChild(parent) != nullptr ? 1 : 0;
    for (const xmlNode* child = fragment->children; child != nullptr; child = child->next) {
        requirePlace(child, parent, reference);
        elements += child->type == XML_ELEMENT_NODE ? 1 : 0;
    }
    require(parent->type != XML_DOCUMENT_NODE || elements <= 1);
}

// An element that repeats the default namespace of its parent needs no declaration of its own. The declaration itself stays until
// the document goes: elements below this one, and some that were taken out of it, are in its namespace.
void dropRepeatedDeclaration(Node::Owner& owner, xmlNode* child) noexcept {
    const xmlNode* const parent = child->parent;
    xmlNs* const declared = child->type == XML_ELEMENT_NODE ? child->nsDef : nullptr;
    if (declared == nullptr || declared != child->ns || declared->next != nullptr || declared->prefix != nullptr ||
        owner.limbo == nullptr) {
        return;
    }
    const bool repeated = parent->type == XML_ELEMENT_NODE && parent->ns != nullptr && parent->ns->prefix == nullptr &&
                          xmlStrEqual(declared->href, parent->ns->href) != 0;
    if (repeated) {
        declared->next = owner.limbo->nsDef;
        owner.limbo->nsDef = declared;
        child->nsDef = nullptr;
        child->ns = parent->ns;
    }
}

void move(Node::Owner& owner, xmlNode* child, xmlNode* parent, xmlNode* reference) noexcept {
    tree::unlink(child);
    tree::link(child, parent, reference);
    dropRepeatedDeclaration(owner, child);
}

void moveAll(Node::Owner& owner, xmlNode* fragment, xmlNode* parent, xmlNode* reference) noexcept {
    while (fragment->children != nullptr) {
        move(owner, fragment->children, parent, reference);
    }
}

}  // namespace

Node Node::appendChild(const Node& child) const { return insertBefore(child, Node()); }

Node Node::insertBefore(const Node& child, const Node& reference) const {
    xmlNode* const parent = required(*this);
    xmlNode* const added = required(child);
    auto* before = static_cast<xmlNode*>(reference.raw());
    require(takesChildren(parent) && child.owner() == owner_);
    require(before == nullptr || (before->parent == parent && before->type != XML_ATTRIBUTE_NODE));
    if (added->type == XML_DOCUMENT_FRAG_NODE) {
        requireFragmentPlace(added, parent, before);
        moveAll(*owner_, added, parent, before);
        return child;
    }
    requirePlace(added, parent, before);
    if (before == added) {
        before = added->next;
    }
    move(*owner_, added, parent, before);
    return child;
}

void Node::removeChild(const Node& child) const {
    xmlNode* const parent = required(*this);
    xmlNode* const removed = required(child);
    require(removed->parent == parent && removed->type != XML_ATTRIBUTE_NODE);
    tree::unlink(removed);
    tree::toLimbo(*owner_, removed);
}

}  // namespace vrn::xml
