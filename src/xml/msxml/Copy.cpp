// Copies of whole trees.
#include <algorithm>

#include "xml/msxml/Tree.h"

namespace vrn::xml::tree {

namespace {

std::size_t depthOf(IXMLDOMNode* top) {
    std::size_t depth = 0;
    std::size_t deepest = 0;
    walk(
        top,
        [&](IXMLDOMNode* node) {
            const DOMNodeType type = typeOf(node);
            const bool entered = type == NODE_ELEMENT || type == NODE_DOCUMENT;
            depth += entered ? 1 : 0;
            deepest = std::max(deepest, depth);
            return entered;
        },
        [&](IXMLDOMNode* /*node*/) { --depth; });
    return deepest;
}

NodePtr cloned(IXMLDOMNode* node, bool deep) {
    NodePtr clone;
    com::require(node->cloneNode(deep ? VARIANT_TRUE : VARIANT_FALSE, &clone));
    return clone;
}

// MSXML takes a node of another document over when it is put into this one.
void copyNodeByNode(IXMLDOMNode* source, Tree& target) {
    std::vector<NodePtr> parents{NodePtr(target.document.Get())};
    walk(
        source,
        [&](IXMLDOMNode* node) {
            if (typeOf(node) == NODE_DOCUMENT) {
                return true;
            }
            NodePtr copy = cloned(node, false);
            insert(target, copy.Get(), parents.back().Get(), nullptr);
            const bool entered = typeOf(node) == NODE_ELEMENT;
            if (entered) {
                parents.push_back(std::move(copy));
            }
            return entered;
        },
        [&](IXMLDOMNode* /*node*/) { parents.pop_back(); });
}

}  // namespace

bool isDeep(Tree& tree) {
    if (tree.depthBound > maximumDepth) {
        tree.depthBound = depthOf(tree.document.Get());
    }
    return tree.depthBound > maximumDepth;
}

void copyAll(Tree& source, Tree& target) {
    target.createdIn = source.createdIn;
    if (isDeep(source)) {
        copyNodeByNode(source.document.Get(), target);
        return;
    }
    for (NodePtr child = firstChild(source.document.Get()); child != nullptr; child = nextSibling(child.Get())) {
        const NodePtr copy = cloned(child.Get(), true);
        insert(target, copy.Get(), target.document.Get(), nullptr);
    }
    target.depthBound = source.depthBound;
}

}  // namespace vrn::xml::tree
