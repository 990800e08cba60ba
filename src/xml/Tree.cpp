#include "xml/Tree.h"

#include <algorithm>
#include <cstring>

namespace vrn::xml {

void* Arena::allocate(std::size_t size, std::size_t alignment) {
    constexpr std::size_t largestBlock = 64UL << 10U;
    auto padding = (alignment - reinterpret_cast<std::uintptr_t>(free_) % alignment) % alignment;
    if (left_ < size + padding) {
        const std::size_t block = std::max(nextBlock_, size);
        blocks_.push_back(std::make_unique_for_overwrite<std::byte[]>(block));
        if (block > nextBlock_) {  // one large piece leaves the current block to the small ones
            return blocks_.back().get();
        }
        free_ = blocks_.back().get();
        left_ = block;
        nextBlock_ = std::min(2 * nextBlock_, largestBlock);
        padding = 0;
    }
    std::byte* const place = free_ + padding;
    free_ = place + size;
    left_ -= size + padding;
    return place;
}

std::string_view Arena::copy(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    auto* const place = static_cast<char*>(allocate(text.size(), 1));
    std::memcpy(place, text.data(), text.size());
    return {place, text.size()};
}

Branch* Tree::newBranch(NodeKind kind, const Name* name) {
    auto* const node = new (arena_.allocate(sizeof(Branch), alignof(Branch))) Branch();
    node->kind = kind;
    node->name = name;
    return node;
}

Leaf* Tree::newLeaf(NodeKind kind, std::string_view text, const Name* name) {
    auto* const node = new (arena_.allocate(sizeof(Leaf), alignof(Leaf))) Leaf();
    node->kind = kind;
    node->text = text;
    node->name = name;
    return node;
}

std::size_t Tree::HashName::operator()(const Name& name) const noexcept {
    const std::hash<std::string_view> hash;
    const std::size_t local = hash(name.local);
    return name.prefix.empty() && name.uri.empty() ? local : 31 * (31 * local + hash(name.prefix)) + hash(name.uri);
}

const Name* Tree::name(std::string_view prefix, std::string_view local, std::string_view uri) {
    if (const auto known = names_.find(Name{{}, prefix, local, uri}); known != names_.end()) {
        return *known;
    }
    auto* const made = new (arena_.allocate(sizeof(Name), alignof(Name))) Name();
    if (prefix.empty()) {
        made->qualified = made->local = keep(local);
    } else {
        made->qualified = keep(std::string(prefix).append(1, ':').append(local));
        made->prefix = made->qualified.substr(0, prefix.size());
        made->local = made->qualified.substr(prefix.size() + 1);
    }
    made->uri = keep(uri);
    names_.insert(made);
    return made;
}

Attribute* Tree::findAttribute(const Branch& element, std::string_view qualified) noexcept {
    Attribute* attribute = element.attributes;
    while (attribute != nullptr && (attribute->name->qualified != qualified || attribute->name->isDeclaration())) {
        attribute = attribute->next;
    }
    return attribute;
}

Attribute* Tree::addAttribute(Branch& element, Attribute* last, const Name* name, std::string_view keptValue) {
    auto* const added = new (arena_.allocate(sizeof(Attribute), alignof(Attribute))) Attribute();
    added->name = name;
    added->value = keptValue;
    (last == nullptr ? element.attributes : last->next) = added;
    return added;
}

void Tree::link(NodeData& node, Branch& parent, NodeData* reference) noexcept {
    NodeData* const before = reference != nullptr ? reference->previous : parent.last;
    node.parent = &parent;
    node.previous = before;
    node.next = reference;
    (before != nullptr ? before->next : parent.first) = &node;
    (reference != nullptr ? reference->previous : parent.last) = &node;
}

void Tree::unlink(NodeData& node) noexcept {
    if (node.parent != nullptr) {
        (node.previous != nullptr ? node.previous->next : node.parent->first) = node.next;
        (node.next != nullptr ? node.next->previous : node.parent->last) = node.previous;
    }
    node.parent = nullptr;
    node.previous = node.next = nullptr;
}

void Tree::copyAttributes(const Branch& from, Branch& to, std::unordered_map<const Name*, const Name*>& names) {
    Attribute* last = nullptr;
    for (const Attribute* attribute = from.attributes; attribute != nullptr; attribute = attribute->next) {
        const Name*& known = names[attribute->name];
        if (known == nullptr) {
            known = name(attribute->name->prefix, attribute->name->local, attribute->name->uri);
        }
        last = addAttribute(to, last, known, keep(attribute->value));
    }
}

void Tree::copyFrom(const Tree& other) {
    std::unordered_map<const Name*, const Name*> names;
    const auto copied = [&](const Name* original) {
        if (original == nullptr) {
            return original;
        }
        const Name*& known = names[original];
        if (known == nullptr) {
            known = name(original->prefix, original->local, original->uri);
        }
        return known;
    };
    source = other.source;
    sourceOwner = other.sourceOwner;
    const auto kept = [&](std::string_view text) { return isInSource(text) ? text : keep(text); };
    Branch* parent = &document;
    const NodeData* node = other.document.first;
    while (node != nullptr) {
        NodeData* copy = nullptr;
        const Branch* const element = asElement(node);
        if (element != nullptr) {
            Branch* const made = newBranch(NodeKind::Element, copied(element->name));
            copyAttributes(*element, *made, names);
            copy = made;
        } else {
            const auto& leaf = static_cast<const Leaf&>(*node);
            copy = newLeaf(leaf.kind, kept(leaf.text), copied(leaf.name));
        }
        copy->offset = node->offset;
        link(*copy, *parent, nullptr);
        if (element != nullptr && element->first != nullptr) {
            parent = static_cast<Branch*>(copy);
            node = element->first;
            continue;
        }
        while (node != nullptr && node->next == nullptr) {
            node = node->parent == &other.document ? nullptr : node->parent;
            parent = parent->parent;
        }
        node = node == nullptr ? nullptr : node->next;
    }
}

namespace {

bool sameName(const Name* a, const Name* b) noexcept {
    return a == nullptr || b == nullptr ? a == b : a->qualified == b->qualified && a->uri == b->uri;
}

bool sameAttributes(const Attribute* a, const Attribute* b) noexcept {
    while (a != nullptr && b != nullptr && sameName(a->name, b->name) && a->value == b->value) {
        a = a->next;
        b = b->next;
    }
    return a == b;  // both at their end
}

// Apart from what is below them.
bool sameNode(const NodeData& a, const NodeData& b) noexcept {
    if (a.kind != b.kind) {
        return false;
    }
    if (isBranch(a)) {
        const auto& one = static_cast<const Branch&>(a);
        const auto& other = static_cast<const Branch&>(b);
        return sameName(one.name, other.name) && sameAttributes(one.attributes, other.attributes);
    }
    const auto& one = static_cast<const Leaf&>(a);
    const auto& other = static_cast<const Leaf&>(b);
    return sameName(one.name, other.name) && one.text == other.text;
}

}  // namespace

bool Tree::equals(const Tree& other) const noexcept {
    const NodeData* a = &document;
    const NodeData* b = &other.document;
    for (;;) {
        if (!sameNode(*a, *b) || (firstChildOf(a) == nullptr) != (firstChildOf(b) == nullptr)) {
            return false;
        }
        if (const NodeData* const child = firstChildOf(a)) {
            a = child;
            b = firstChildOf(b);
            continue;
        }
        while (a->next == nullptr && b->next == nullptr) {
            a = a->parent;
            b = b->parent;
            if (a == nullptr) {
                return true;
            }
        }
        a = a->next;
        b = b->next;
        if (a == nullptr || b == nullptr) {
            return false;
        }
    }
}

}  // namespace vrn::xml
