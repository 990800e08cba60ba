// What the files of this back end share: the MSXML nodes behind the handles, and the ways around them.
//
// MSXML differs between systems where it is not watched: one of them makes a new object for every look at a node, joins
// neighbouring texts (and destroys the second, which a handle may still name), and shows the declarations of namespaces in
// part. So nodes are compared by `same`, put in by `insert`, and walked by `walk`, never by MSXML's own functions alone.
#pragma once

#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "xml/msxml/Msxml.h"

namespace vrn::xml {

namespace tree {

using com::ComPtr;
using NodePtr = ComPtr<IXMLDOMNode>;

/// Elements in a text may be this deep.
inline constexpr int maximumDepth = 1000;

/// A document, and what must be known of it beside its nodes.
struct Tree {
    ComPtr<IXMLDOMDocument2> document;
    std::size_t depthBound = 0;  ///< no element is deeper; may be far too high
    /// Namespaces that elements were created in. Such an element needs no declaration under one with the same default,
    /// though MSXML may show one.
    std::set<std::string, std::less<>> createdIn;
};
using TreePtr = std::shared_ptr<Tree>;

}  // namespace tree

/// What one handle holds. MSXML keeps a document as long as one of its nodes is held.
struct Node::Owner {
    tree::NodePtr node;
    tree::TreePtr tree;
};

struct Document::Content {
    tree::TreePtr tree;
    ParseError error;
};

namespace tree {

[[nodiscard]] TreePtr newTree();

/// Held while MSXML parses a text or an expression: one of them notes the last error for all threads in one place.
[[nodiscard]] std::unique_lock<std::mutex> lockParser();

/// A handle on the node, or none.
[[nodiscard]] Node handle(const TreePtr& tree, NodePtr node);
/// The node behind a handle; error 91 for none.
[[nodiscard]] IXMLDOMNode* required(const Node& node);
/// Fails with error 5 when MSXML refused; std::bad_alloc when memory ran out.
void requireAccepted(HRESULT result);

[[nodiscard]] DOMNodeType typeOf(IXMLDOMNode* node);
/// The name as MSXML has it; see `nameOf`.
[[nodiscard]] com::Bstr rawName(IXMLDOMNode* node);
/// The name as callers see it.
[[nodiscard]] std::string nameOf(IXMLDOMNode* node);
[[nodiscard]] std::string valueOf(IXMLDOMNode* node);
void setValue(IXMLDOMNode* node, std::string_view value);
/// A text node of the document that is not in it yet.
[[nodiscard]] com::ComPtr<IXMLDOMText> newText(const Tree& tree, std::string_view text);
[[nodiscard]] std::string namespaceOf(IXMLDOMNode* node);

[[nodiscard]] NodePtr firstChild(IXMLDOMNode* node);
[[nodiscard]] NodePtr lastChild(IXMLDOMNode* node);
[[nodiscard]] NodePtr nextSibling(IXMLDOMNode* node);
[[nodiscard]] NodePtr previousSibling(IXMLDOMNode* node);
[[nodiscard]] NodePtr parentOf(IXMLDOMNode* node);

/// MSXML judges the data of a declaration and writes it anew, so the declaration stands in the tree as an instruction with this
/// target, which no text may use itself.
inline constexpr std::string_view declarationTarget = "vrn-xml-declaration";
[[nodiscard]] bool isDeclaration(IXMLDOMNode* node);

/// Whether both are the same node of one document.
[[nodiscard]] bool same(IXMLDOMNode* a, IXMLDOMNode* b);

/// Gives an element an attribute that it has not, first or last of its attributes, while this lives.
class TemporaryAttribute {
  public:
    explicit TemporaryAttribute(IXMLDOMNode* element);
    ~TemporaryAttribute();
    TemporaryAttribute(const TemporaryAttribute&) = delete;
    TemporaryAttribute& operator=(const TemporaryAttribute&) = delete;

  private:
    ComPtr<IXMLDOMElement> element_;
    com::Bstr name_;
};

/// Puts the child before the reference, or last for null, without joining texts. Nothing is checked.
void insert(Tree& tree, IXMLDOMNode* child, IXMLDOMNode* parent, IXMLDOMNode* reference);
void remove(IXMLDOMNode* parent, IXMLDOMNode* child);

/// Whether elements stand deeper than a text could have them, so that MSXML's own functions would need too much stack.
[[nodiscard]] bool isDeep(Tree& tree);
/// Copies all below the source's document into the target's, which is empty.
void copyAll(Tree& source, Tree& target);

/// Leads through the node and all below it in document order, without recursion. `enter` answers whether to go on with the
/// node's children; `leave` is called behind them then.
template <typename Enter, typename Leave>
void walk(IXMLDOMNode* top, Enter enter, Leave leave) {
    std::vector<NodePtr> open;
    NodePtr node(top);
    for (;;) {
        if (enter(node.Get())) {
            if (NodePtr child = firstChild(node.Get())) {
                open.push_back(std::move(node));
                node = std::move(child);
                continue;
            }
            leave(node.Get());
        }
        NodePtr next;
        while (!open.empty() && (next = nextSibling(node.Get())) == nullptr) {
            node = std::move(open.back());
            open.pop_back();
            leave(node.Get());
        }
        if (next == nullptr) {
            return;
        }
        node = std::move(next);
    }
}

}  // namespace tree

}  // namespace vrn::xml
