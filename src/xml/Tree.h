// The tree that the handles of Dom.h refer to: nodes in an arena that goes with the document, names kept once each.
//
// Texts are views: on the text that was parsed, which the tree keeps, or on the arena. Nothing in the arena is freed
// before the tree is; what was taken out of the document or replaced stays where it is, so that a handle on it stays good.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "xml/Dom.h"
#include "xml/Place.h"

namespace vrn::xml {

/// A name with its namespace, once per tree.
struct Name {
    std::string_view qualified;
    std::string_view prefix;
    std::string_view local;
    std::string_view uri;

    [[nodiscard]] bool isDeclaration() const noexcept { return uri == xmlnsNamespace; }
    [[nodiscard]] bool isPlain(std::string_view name) const noexcept { return uri.empty() && local == name; }
};

/// An attribute or a namespace declaration of an element, in a list with the declarations first.
struct Attribute {
    const Name* name = nullptr;
    std::string_view value;
    Attribute* next = nullptr;
};

struct Branch;

/// What all nodes have. Elements, documents and fragments are branches, all others leaves.
struct NodeData {
    NodeKind kind = NodeKind::Text;
    std::uint32_t offset = noOffset;  ///< of its first byte in the text that was parsed
    Branch* parent = nullptr;
    NodeData* previous = nullptr;
    NodeData* next = nullptr;

    static constexpr std::uint32_t noOffset = 0xFFFFFFFF;
};

struct Branch : NodeData {
    const Name* name = nullptr;  ///< of an element
    Attribute* attributes = nullptr;
    NodeData* first = nullptr;
    NodeData* last = nullptr;
};

struct Leaf : NodeData {
    const Name* name = nullptr;  ///< the target of an instruction
    std::string_view text;
};

[[nodiscard]] inline bool isBranch(const NodeData& node) noexcept {
    return node.kind == NodeKind::Element || node.kind == NodeKind::Document || node.kind == NodeKind::Fragment;
}
[[nodiscard]] inline Branch* asBranch(NodeData* node) noexcept {
    return node != nullptr && isBranch(*node) ? static_cast<Branch*>(node) : nullptr;
}
[[nodiscard]] inline const Branch* asBranch(const NodeData* node) noexcept {
    return asBranch(const_cast<NodeData*>(node));
}
[[nodiscard]] inline NodeData* firstChildOf(const NodeData* node) noexcept {
    const Branch* const branch = asBranch(node);
    return branch == nullptr ? nullptr : branch->first;
}
[[nodiscard]] inline const Branch* asElement(const NodeData* node) noexcept {
    return node->kind == NodeKind::Element ? static_cast<const Branch*>(node) : nullptr;
}
[[nodiscard]] inline bool isXmlDeclaration(const NodeData* node) noexcept {
    return node->kind == NodeKind::ProcessingInstruction && static_cast<const Leaf*>(node)->name->qualified == "xml";
}

/// Memory that is handed out piece by piece and goes back all at once.
class Arena {
  public:
    [[nodiscard]] void* allocate(std::size_t size, std::size_t alignment);
    [[nodiscard]] std::string_view copy(std::string_view text);

  private:
    std::vector<std::unique_ptr<std::byte[]>> blocks_;
    std::byte* free_ = nullptr;
    std::size_t left_ = 0;
    std::size_t nextBlock_ = 512;
};

class Tree {
  public:
    Tree() noexcept { document.kind = NodeKind::Document; }
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    Branch document;
    std::string_view source;                  ///< the text that was parsed
    std::shared_ptr<const void> sourceOwner;  ///< what holds that text; copies of the tree share it
    ParseError error;
    PlaceCounter places;

    [[nodiscard]] Branch* newBranch(NodeKind kind, const Name* name);
    [[nodiscard]] Leaf* newLeaf(NodeKind kind, std::string_view text, const Name* name = nullptr);
    [[nodiscard]] std::string_view keep(std::string_view text) { return arena_.copy(text); }
    /// Whether this is a view on the source, which needs no copy.
    [[nodiscard]] bool isInSource(std::string_view text) const noexcept {
        return std::less_equal<>()(source.data(), text.data()) &&
               std::less<>()(text.data(), source.data() + source.size());
    }

    /// The name in no namespace.
    [[nodiscard]] const Name* plainName(std::string_view name) { return this->name({}, name, {}); }
    /// The name with prefix (may be empty), local part and namespace.
    [[nodiscard]] const Name* name(std::string_view prefix, std::string_view local, std::string_view uri);
    [[nodiscard]] std::size_t nameCount() const noexcept { return names_.size(); }
    void expectNames(std::size_t count) { names_.reserve(count); }

    /// The attribute of an element by qualified name, declarations left out; null when there is none.
    [[nodiscard]] static Attribute* findAttribute(const Branch& element, std::string_view qualified) noexcept;
    /// Adds an attribute after `last`; as the first one when that is null.
    Attribute* addAttribute(Branch& element, Attribute* last, const Name* name, std::string_view keptValue);

    /// Puts a node that stands nowhere under `parent`, before `reference` or last.
    static void link(NodeData& node, Branch& parent, NodeData* reference) noexcept;
    static void unlink(NodeData& node) noexcept;
    /// Whether the other's document holds the same nodes as this one's.
    [[nodiscard]] bool equals(const Tree& other) const noexcept;
    /// A copy of all below the other's document under this tree's document.
    void copyFrom(const Tree& other);

  private:
    friend class TreePointer;

    struct HashName {
        using is_transparent = void;
        std::size_t operator()(const Name& name) const noexcept;
        std::size_t operator()(const Name* name) const noexcept { return (*this)(*name); }
    };
    struct SameName {
        using is_transparent = void;
        static const Name& of(const Name& name) noexcept { return name; }
        static const Name& of(const Name* name) noexcept { return *name; }
        template <typename One, typename Other>
        bool operator()(const One& one, const Other& other) const noexcept {
            return of(one).local == of(other).local && of(one).prefix == of(other).prefix &&
                   of(one).uri == of(other).uri;
        }
    };
    void copyAttributes(const Branch& from, Branch& to, std::unordered_map<const Name*, const Name*>& names);

    Arena arena_;
    std::unordered_set<const Name*, HashName, SameName> names_;
    std::size_t references_ = 0;
};

}  // namespace vrn::xml
