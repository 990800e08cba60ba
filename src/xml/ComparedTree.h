// A document as plain values, for whoever compares documents: what is left when the known is taken out can be reported in full.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "xml/Dom.h"

namespace vrn::xml {

struct TreeAttribute {
    std::string name;  ///< qualified; declarations of namespaces are attributes here
    std::string namespaceUri;
    std::string value;
};

/// A node with all below it. Text and CDATA are one; the XML declaration is none.
struct ComparedTree {
    NodeKind kind = NodeKind::Document;
    std::string name;  ///< qualified name of an element, target of an instruction
    std::string namespaceUri;
    std::string content;  ///< of a text, comment or instruction
    std::vector<TreeAttribute> attributes;
    std::vector<ComparedTree> children;
    std::size_t position = 1;  ///< among its parent's children of this kind and name, from 1
    std::size_t place = 1;     ///< among all of its parent's children, from 1
    bool isOnly = true;        ///< whether there is no other of this kind and name

    /// The child element of this name (no namespace) that stands first, or null.
    [[nodiscard]] ComparedTree* child(std::string_view wanted);
    /// Whether it is an element without namespace and attributes that holds nothing, or text without white space at its ends.
    [[nodiscard]] bool isPlainLeaf() const;
    /// The text of an element that holds nothing else.
    [[nodiscard]] std::string_view leafText() const;
};
[[nodiscard]] ComparedTree treeOf(const Document& document);

/// Something in which two trees differ.
struct TreeDifference {
    std::string
        path;  ///< from the root element: "@Date", "ATOMLINE/ATOM[2]", "Note"; "(place)" after it when only that differs
    std::optional<std::string> before;  ///< text of a leaf, XML of more; nothing when it is not there
    std::optional<std::string> after;
};

/// All that differs between two documents; below each element first what became something else, then what is gone, new or elsewhere.
/// Takes time linear to documents that are nearly alike.
[[nodiscard]] std::vector<TreeDifference> treeDifferences(const ComparedTree& before, const ComparedTree& after);

}  // namespace vrn::xml
