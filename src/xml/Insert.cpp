// Nodes put in and taken out.
#include "errors/Error.h"
#include "xml/Tree.h"

namespace vrn::xml {

namespace {

void require(bool good) {
    if (!good) {
        errors::throwInvalidProcedureCall();
    }
}

bool isWithin(const NodeData* node, const NodeData* ancestor) noexcept {
    while (node != nullptr && node != ancestor) {
        node = node->parent;
    }
    return node != nullptr;
}

const NodeData* elementChild(const Branch& document) noexcept {
    const NodeData* child = document.first;
    while (child != nullptr && child->kind != NodeKind::Element) {
        child = child->next;
    }
    return child;
}

// A document takes one element, comments and instructions; the declaration stands first there and nowhere else.
void requireTopLevel(const NodeData* child, const Branch& document, const NodeData* reference) {
    require(child->kind == NodeKind::Element || child->kind == NodeKind::Comment ||
            child->kind == NodeKind::ProcessingInstruction);
    if (child->kind == NodeKind::Element) {
        const NodeData* const present = elementChild(document);
        require(present == nullptr || present == child);
    }
    const NodeData* first = document.first;
    if (first == child) {
        first = first->next;
    }
    if (isXmlDeclaration(child)) {
        require(first == nullptr || (reference == first && !isXmlDeclaration(first)));
    } else {
        require(reference == nullptr || !isXmlDeclaration(reference));
    }
}

void requirePlace(const NodeData* child, const Branch& parent, const NodeData* reference) {
    require(child->kind != NodeKind::Document && child->kind != NodeKind::Fragment);
    if (parent.kind == NodeKind::Document) {
        requireTopLevel(child, parent, reference);
        return;
    }
    require(!isXmlDeclaration(child));
    // A node without children is nobody's ancestor: a tree built from its root down costs no climb.
    require(firstChildOf(child) == nullptr ? child != &parent : !isWithin(&parent, child));
}

// All is checked before anything moves.
void requireFragmentPlace(const Branch& fragment, const Branch& parent, const NodeData* reference) {
    require(!isWithin(&parent, &fragment));
    int elements = parent.kind == NodeKind::Document && elementChild(parent) != nullptr ? 1 : 0;
    for (const NodeData* child = fragment.first; child != nullptr; child = child->next) {
        requirePlace(child, parent, reference);
        elements += child->kind == NodeKind::Element ? 1 : 0;
    }
    require(parent.kind != NodeKind::Document || elements <= 1);
}

// An element that repeats the default namespace of its parent needs no declaration of its own.
void dropRepeatedDeclaration(NodeData& child) noexcept {
    if (child.kind != NodeKind::Element || child.parent->kind != NodeKind::Element) {
        return;
    }
    auto& element = static_cast<Branch&>(child);
    const Attribute* const declared = element.attributes;
    const Name& outer = *child.parent->name;
    const bool isOnlyDeclaration = declared != nullptr && declared->name->isDeclaration() &&
                                   declared->name->prefix.empty() &&
                                   (declared->next == nullptr || !declared->next->name->isDeclaration());
    if (isOnlyDeclaration && element.name->prefix.empty() && outer.prefix.empty() && !outer.uri.empty() &&
        declared->value == outer.uri) {
        element.attributes = declared->next;
    }
}

void move(NodeData& child, Branch& parent, NodeData* reference) noexcept {
    Tree::unlink(child);
    Tree::link(child, parent, reference);
    dropRepeatedDeclaration(child);
}

}  // namespace

Node Node::appendChild(const Node& child) const { return insertBefore(child, Node()); }

Node Node::insertBefore(const Node& child, const Node& reference) const {
    Branch* const parent = asBranch(&required());
    NodeData& added = child.required();
    NodeData* before = reference.data_;
    require(parent != nullptr && child.tree_ == tree_);
    require(before == nullptr || before->parent == parent);
    if (added.kind == NodeKind::Fragment) {
        auto& fragment = static_cast<Branch&>(added);
        requireFragmentPlace(fragment, *parent, before);
        while (fragment.first != nullptr) {
            move(*fragment.first, *parent, before);
        }
        return child;
    }
    requirePlace(&added, *parent, before);
    if (before == &added) {
        before = added.next;
    }
    move(added, *parent, before);
    return child;
}

void Node::removeChild(const Node& child) const {
    NodeData& parent = required();
    NodeData& removed = child.required();
    require(removed.parent == &parent);
    Tree::unlink(removed);
}

}  // namespace vrn::xml
