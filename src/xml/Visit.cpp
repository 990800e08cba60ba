// The walk of a visitor through a tree, without recursion and without an allocation for each node.
#include "xml/Tree.h"

namespace vrn::xml {

namespace {

class Visit {
  public:
    explicit Visit(NodeVisitor& visitor) : visitor_(visitor) {}

    /// Whether to go on with the node's children.
    bool enter(const NodeData& node);
    void leave(const NodeData& node) {
        if (node.kind == NodeKind::Element) {
            visitor_.endElement(viewOf(static_cast<const Branch&>(node)));
        }
    }

  private:
    bool enterElement(const Branch& element);
    static ElementView viewOf(const Branch& element) noexcept {
        const Name& name = *element.name;
        return {name.qualified, name.prefix, name.local, name.uri, {}, element.first != nullptr};
    }

    NodeVisitor& visitor_;
    std::vector<AttributeView> attributes_;
};

bool Visit::enterElement(const Branch& element) {
    attributes_.clear();
    for (const Attribute* attribute = element.attributes; attribute != nullptr; attribute = attribute->next) {
        const Name& name = *attribute->name;
        attributes_.push_back({name.qualified, name.prefix, name.local, name.uri, attribute->value});
    }
    ElementView view = viewOf(element);
    view.attributes = attributes_;
    return visitor_.startElement(view);
}

bool Visit::enter(const NodeData& node) {
    if (isBranch(node)) {
        return node.kind != NodeKind::Element || enterElement(static_cast<const Branch&>(node));
    }
    const auto& leaf = static_cast<const Leaf&>(node);
    switch (node.kind) {
        case NodeKind::CData:
            visitor_.cdata(leaf.text);
            break;
        case NodeKind::Comment:
            visitor_.comment(leaf.text);
            break;
        case NodeKind::ProcessingInstruction:
            visitor_.processingInstruction(leaf.name->qualified, leaf.text);
            break;
        default:
            visitor_.text(leaf.text);
            break;
    }
    return false;
}

}  // namespace

void Node::accept(NodeVisitor& visitor) const {
    const NodeData* const top = &required();
    Visit visit(visitor);
    const NodeData* node = top;
    for (;;) {
        if (visit.enter(*node)) {
            if (const NodeData* const child = firstChildOf(node)) {
                node = child;
                continue;
            }
            visit.leave(*node);
        }
        while (node != top && node->next == nullptr) {
            node = node->parent;
            visit.leave(*node);
        }
        if (node == top) {
            return;
        }
        node = node->next;
    }
}

}  // namespace vrn::xml
