// What a node is, what stands around it, and its texts and attributes.
#include <algorithm>

#include "errors/Error.h"
#include "text/Unicode.h"
#include "xml/Names.h"
#include "xml/Serialiser.h"
#include "xml/Tree.h"

namespace vrn::xml {

namespace {

// What comes after `node` in document order when its children are passed over; null after the last node below `top`.
const NodeData* nextBeyond(const NodeData* node, const NodeData* top) noexcept {
    while (node != top && node->next == nullptr) {
        node = node->parent;
    }
    return node == top ? nullptr : node->next;
}

const NodeData* nextBelow(const NodeData* node, const NodeData* top) noexcept {
    const NodeData* const child = firstChildOf(node);
    return child != nullptr ? child : nextBeyond(node, top);
}

struct DescendantText {
    std::string text;
    // What no trimming may touch: from the first CDATA section to the last, empty ones too, since a section that had to be
    // parted may begin or end with one.
    std::size_t keepFrom = std::string::npos;
    std::size_t keepTo = 0;

    explicit DescendantText(const NodeData& top) {
        for (const NodeData* node = firstChildOf(&top); node != nullptr; node = nextBelow(node, &top)) {
            if (node->kind == NodeKind::Text) {
                text += static_cast<const Leaf*>(node)->text;
            } else if (node->kind == NodeKind::CData) {
                keepFrom = std::min(keepFrom, text.size());
                text += static_cast<const Leaf*>(node)->text;
                keepTo = text.size();
            }
        }
    }

    [[nodiscard]] std::string trimmed() && {
        std::size_t end = text.size();
        while (end > keepTo && text::isXmlSpace(text[end - 1])) {
            --end;
        }
        text.resize(end);
        std::size_t start = 0;
        while (start < std::min(end, keepFrom) && text::isXmlSpace(text[start])) {
            ++start;
        }
        text.erase(0, start);
        return std::move(text);
    }
};

// The one text of an element that has just that: most have.
const Leaf* onlyLeaf(const NodeData& node) noexcept {
    const NodeData* const first = firstChildOf(&node);
    const bool isOnly = first != nullptr && first->next == nullptr && first->kind == NodeKind::Text;
    return isOnly ? static_cast<const Leaf*>(first) : nullptr;
}

std::string contentFor(NodeKind kind, std::string_view text) {
    switch (kind) {
        case NodeKind::ProcessingInstruction:
            return instructionContent(text);
        case NodeKind::Comment:
            return commentContent(text);
        case NodeKind::CData:
            return cdataContent(text);
        default:
            requireText(text);
            return std::string(text);
    }
}

Branch& requiredElement(NodeData& node) {
    if (node.kind != NodeKind::Element) {
        errors::throwInvalidProcedureCall();
    }
    return static_cast<Branch&>(node);
}

constexpr std::string_view anyName = "*";

NodeData* nextElement(NodeData* node, std::string_view local, std::string_view uri) noexcept {
    for (; node != nullptr; node = node->next) {
        const Branch* const element = asElement(node);
        if (element != nullptr && (local == anyName || (element->name->local == local && element->name->uri == uri))) {
            return node;
        }
    }
    return nullptr;
}

// The first node on the path below `start`. Recurses once per step of the path.
NodeData* firstOnPath(NodeData* start, std::string_view path) {
    const std::string_view step = path.substr(0, path.find('/'));
    if (step != anyName && !isPlainName(step)) {
        errors::throwInvalidProcedureCall();
    }
    const bool isLast = step.size() == path.size();
    const std::string_view rest = isLast ? std::string_view() : path.substr(step.size() + 1);
    if (!isLast && rest.empty()) {
        errors::throwInvalidProcedureCall();
    }
    for (NodeData* node = nextElement(firstChildOf(start), step, {}); node != nullptr;
         node = nextElement(node->next, step, {})) {
        NodeData* const found = isLast ? node : firstOnPath(node, rest);
        if (found != nullptr) {
            return found;
        }
    }
    return nullptr;
}

}  // namespace

TreePointer::TreePointer(Tree* tree) noexcept : tree_(tree) {
    if (tree != nullptr) {
        ++tree->references_;
    }
}

TreePointer::~TreePointer() {
    if (tree_ != nullptr && --tree_->references_ == 0) {
        delete tree_;
    }
}

NodeData& Node::required() const {
    if (data_ == nullptr) {
        errors::throwObjectNotSet();
    }
    return *data_;
}

NodeKind Node::kind() const { return required().kind; }

std::string Node::name() const {
    const NodeData& node = required();
    switch (node.kind) {
        case NodeKind::Document:
            return "#document";
        case NodeKind::Element:
            return std::string(static_cast<const Branch&>(node).name->qualified);
        case NodeKind::ProcessingInstruction:
            return std::string(static_cast<const Leaf&>(node).name->qualified);
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

std::string Node::namespaceUri() const {
    const Branch* const element = asElement(&required());
    return element == nullptr ? std::string() : std::string(element->name->uri);
}

std::string Node::text() const {
    const NodeData& node = required();
    if (!isBranch(node)) {
        return std::string(static_cast<const Leaf&>(node).text);
    }
    if (const Leaf* const only = onlyLeaf(node)) {
        return std::string(text::trimXmlSpace(only->text));
    }
    return DescendantText(node).trimmed();
}

std::optional<std::string_view> Node::onlyText() const {
    const Leaf* const only = onlyLeaf(required());
    return only == nullptr ? std::nullopt : std::optional(text::trimXmlSpace(only->text));
}

std::string_view Node::textView() const {
    const auto only = onlyText();
    return only ? *only : tree_->keep(text());
}

std::string Node::stringValue() const {
    const NodeData& node = required();
    return isBranch(node) ? DescendantText(node).text : std::string(static_cast<const Leaf&>(node).text);
}

void Node::setText(std::string_view text) const {
    NodeData& node = required();
    if (node.kind == NodeKind::Document) {
        errors::throwInvalidProcedureCall();
    }
    const std::string_view kept = tree_->keep(contentFor(node.kind, text));
    Branch* const branch = asBranch(&node);
    if (branch == nullptr) {
        static_cast<Leaf&>(node).text = kept;
        return;
    }
    Leaf* const leaf = kept.empty() ? nullptr : tree_->newLeaf(NodeKind::Text, kept);
    while (branch->first != nullptr) {
        Tree::unlink(*branch->first);
    }
    if (leaf != nullptr) {
        Tree::link(*leaf, *branch, nullptr);
    }
}

std::string Node::xml() const {
    (void)required();
    return serialise(*this);
}

Position Node::position() const {
    const NodeData& node = required();
    return node.offset == NodeData::noOffset ? Position() : tree_->places.at(tree_->source, node.offset);
}

bool Node::hasChildNodes() const { return firstChildOf(&required()) != nullptr; }

Node Node::firstChild() const { return sibling(firstChildOf(&required())); }

Node Node::lastChild() const {
    const Branch* const branch = asBranch(&required());
    return branch == nullptr ? Node() : sibling(branch->last);
}

Node Node::nextSibling() const { return sibling(required().next); }

Node Node::parentNode() const { return sibling(required().parent); }

std::vector<Node> Node::childNodes() const {
    std::vector<Node> children;
    for (NodeData* child = firstChildOf(&required()); child != nullptr; child = child->next) {
        children.push_back(sibling(child));
    }
    return children;
}

Node Node::child(std::string_view name) const { return sibling(nextElement(firstChildOf(&required()), name, {})); }

std::vector<Node> Node::children(std::string_view name) const {
    std::vector<Node> found;
    for (NodeData* child = nextElement(firstChildOf(&required()), name, {}); child != nullptr;
         child = nextElement(child->next, name, {})) {
        found.push_back(sibling(child));
    }
    return found;
}

Node Node::nextOfSameName() const {
    const Branch* const element = asElement(&required());
    return element == nullptr ? Node() : sibling(nextElement(element->next, element->name->local, element->name->uri));
}

Node Node::selectSingleNode(std::string_view path) const {
    NodeData& start = required();
    if (path.starts_with('/')) {
        return sibling(firstOnPath(&tree_->document, path.substr(1)));
    }
    return sibling(firstOnPath(&start, path));
}

std::optional<std::string> Node::attribute(std::string_view name) const {
    const Attribute* const found = Tree::findAttribute(requiredElement(required()), name);
    return found == nullptr ? std::nullopt : std::optional<std::string>(found->value);
}

void Node::setAttribute(std::string_view name, std::string_view value) const {
    Branch& element = requiredElement(required());
    requireAttributeName(name);
    requireText(value);
    const std::string_view kept = tree_->keep(value);
    if (Attribute* const present = Tree::findAttribute(element, name)) {
        present->value = kept;
        return;
    }
    Attribute* last = element.attributes;
    while (last != nullptr && last->next != nullptr) {
        last = last->next;
    }
    tree_->addAttribute(element, last, tree_->plainName(name), kept);
}

void Node::removeAttribute(std::string_view name) const {
    Branch& element = requiredElement(required());
    const Attribute* const removed = Tree::findAttribute(element, name);
    if (removed == nullptr) {
        return;
    }
    Attribute** link = &element.attributes;
    while (*link != removed) {
        link = &(*link)->next;
    }
    *link = removed->next;
}

}  // namespace vrn::xml
