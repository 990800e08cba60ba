// What the files of this back end share: the tree behind the handles, and the few ways to change it by hand.
//
// Nodes are linked and unlinked here and not by libxml2's own functions, because those free nodes (they join neighbouring
// texts) that a handle may still name. A node that stands nowhere is kept in its document's limbo until the document goes.
#pragma once

#include <libxml/tree.h>

#include <memory>
#include <string_view>

#include "xml/Dom.h"

namespace vrn::xml {

namespace tree {

struct FreeDoc {
    void operator()(xmlDoc* doc) const noexcept { xmlFreeDoc(doc); }
};
using DocPtr = std::unique_ptr<xmlDoc, FreeDoc>;

}  // namespace tree

/// A tree and all that was ever taken out of it.
struct Node::Owner {
    explicit Owner(tree::DocPtr document) noexcept : doc(document.release()) {}
    ~Owner();
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;

    xmlDoc* doc;
    xmlNode* limbo = nullptr;  ///< an element whose children and attributes are the nodes that stand nowhere
};

struct Document::Content {
    std::shared_ptr<Node::Owner> owner;
    ParseError error;
};

namespace tree {

/// Prepares the library for use by several threads. Called before anything else of it.
void initialise();

/// An empty document, which will have a dictionary of its own.
[[nodiscard]] DocPtr newDocument();
/// A copy that shares nothing with the original, so that each may go its own way on its own thread.
[[nodiscard]] DocPtr copyDocument(const xmlDoc* source);

[[nodiscard]] inline std::string_view view(const xmlChar* text) noexcept {
    return text == nullptr ? std::string_view{} : std::string_view(reinterpret_cast<const char*>(text));
}

[[nodiscard]] inline std::string_view namespaceUri(const xmlNs* ns) noexcept {
    return ns == nullptr ? std::string_view{} : view(ns->href);
}
[[nodiscard]] inline std::string_view namespacePrefix(const xmlNs* ns) noexcept {
    return ns == nullptr ? std::string_view{} : view(ns->prefix);
}

[[nodiscard]] inline const xmlChar* chars(const char* text) noexcept { return reinterpret_cast<const xmlChar*>(text); }

/// The document as a node: both begin with the same members.
[[nodiscard]] inline xmlNode* asNode(const xmlDoc* doc) noexcept {
    return reinterpret_cast<xmlNode*>(const_cast<xmlDoc*>(doc));
}

[[nodiscard]] inline const xmlAttr* asAttribute(const xmlNode* node) noexcept {
    return reinterpret_cast<const xmlAttr*>(node);
}

/// The node behind a handle; error 91 for none.
[[nodiscard]] xmlNode* required(const Node& node);

/// Whether a C text is exactly this one.
[[nodiscard]] bool equals(const xmlChar* text, std::string_view other) noexcept;
/// Whether an element or attribute has this name and no namespace.
[[nodiscard]] bool hasPlainName(const xmlNode* node, std::string_view name) noexcept;
[[nodiscard]] bool isXmlDeclaration(const xmlNode* node) noexcept;

/// The name in the document's dictionary, which it makes if there is none. Throws std::bad_alloc.
[[nodiscard]] const xmlChar* intern(xmlDoc* doc, std::string_view name);

/// A text that is linked nowhere yet. Throws std::bad_alloc.
[[nodiscard]] xmlNode* newText(xmlDoc* doc, std::string_view content);
/// Replaces the content of a text, CDATA section, comment or instruction. Throws std::bad_alloc.
void setContent(xmlNode* node, std::string_view content);
/// The value of an attribute. It has one text at most: there are no entities that could part it.
[[nodiscard]] inline std::string_view attributeValue(const xmlAttr* attribute) noexcept {
    return attribute->children == nullptr ? std::string_view{} : view(attribute->children->content);
}
/// The value of an attribute becomes this one text. Throws std::bad_alloc.
void setAttributeValue(xmlAttr* attribute, std::string_view value);

/// Links a node that stands nowhere under `parent`, before `reference` or last.
void link(xmlNode* node, xmlNode* parent, xmlNode* reference) noexcept;
/// Takes a node out of its parent.
void unlink(xmlNode* node) noexcept;

/// Puts a node that is linked nowhere into limbo. Throws std::bad_alloc.
void toLimbo(Node::Owner& owner, xmlNode* node);
void toLimbo(Node::Owner& owner, xmlAttr* attribute);
/// The parent that a caller may see: none for what is in limbo.
[[nodiscard]] inline xmlNode* visibleParent(const Node::Owner& owner, const xmlNode* node) noexcept {
    return node->parent == owner.limbo ? nullptr : node->parent;
}

/// What comes after `node` in document order when its children are passed over; null behind the last node below `top`.
[[nodiscard]] const xmlNode* nextBeyond(const xmlNode* node, const xmlNode* top) noexcept;

/// Keeps the library's reports of one thread off stderr while it lives, and puts the host's handlers back.
class QuietErrors {
  public:
    QuietErrors() noexcept;
    ~QuietErrors();
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;

  private:
    xmlGenericErrorFunc generic_;
    void* genericContext_;
    xmlStructuredErrorFunc structured_;
    void* structuredContext_;
};

}  // namespace tree

}  // namespace vrn::xml
