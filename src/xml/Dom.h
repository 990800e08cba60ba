// XML documents as the editor sees them: a tree that owns its nodes, and handles on it. All text is UTF-8.
//
// How documents are read:
//  - Text that consists of white space only is dropped on load, unless it was written with character references or as
//    CDATA: what a document's author could not have meant as layout is kept.
//  - The XML declaration is a node: a processing instruction named "xml", first child of the document. The encoding it
//    names is not acted on, since text in memory is UTF-8 whatever file it came from (see text/XmlFile.h).
//  - A DOCTYPE is refused. No external entity, DTD subset or URL is ever fetched.
//  - Serialising and loading again gives an equal tree, but for what text cannot say: neighbouring texts become one, and a
//    CDATA section that holds "]]>" becomes two. The output carries no white space that the tree does not.
//  - Every text is read in time linear to its length. What could cost more is a parse error: elements deeper than 1000, more
//    than 1000 attributes or declarations on one element, more than 100,000 different names.
//
// A document and the handles on it belong to one thread at a time; different documents share nothing, whatever one was
// copied from.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vrn::xml {

enum class NodeKind { Document, Element, Text, CData, Comment, ProcessingInstruction, Fragment };

/// Why and where a text was not well-formed. All values are of the first error; a `errorCode` of 0 means none.
struct ParseError {
    int errorCode = 0;    ///< expat's code, or one of those below
    std::string reason;   ///< one line, without line end
    int filepos = 0;      ///< offset of the error in the text, in UTF-16 units, from 0
    int line = 0;         ///< from 1
    int linepos = 0;      ///< position in that line, in UTF-16 units, from 1
    std::string srcText;  ///< the line, without its line end
    std::string url;      ///< where the text came from; empty for text from memory

    static constexpr int dtdProhibited = -1072896636;  ///< a document with a DOCTYPE
    static constexpr int limitExceeded = 1000;         ///< one beyond the limits named above
};

/// Where a node begins in the text that was parsed, both from 1; the column in UTF-16 units. Zeros for a node made since.
struct Position {
    int line = 0;
    int column = 0;
};

/// One attribute during a visit. Namespace declarations come as attributes in the namespace of declarations.
struct AttributeView {
    std::string_view qualifiedName;
    std::string_view prefix;
    std::string_view localName;
    std::string_view namespaceUri;
    std::string_view value;
};

/// One element during a visit; the views live until the visitor's function returns.
struct ElementView {
    std::string_view qualifiedName;
    std::string_view prefix;
    std::string_view localName;
    std::string_view namespaceUri;
    std::span<const AttributeView> attributes;  ///< declarations first, then attributes in document order
    bool hasChildNodes = false;
};

inline constexpr std::string_view xmlnsNamespace = "http://www.w3.org/2000/xmlns/";

/// Meets the nodes of a tree in document order; see `Node::accept`. A visitor must not change the tree it is led through.
class NodeVisitor {
  public:
    virtual ~NodeVisitor() = default;
    /// Returns whether to go into the element; `endElement` follows only then.
    virtual bool startElement(const ElementView& element) = 0;
    virtual void endElement(const ElementView& element) = 0;  ///< `attributes` is empty here
    virtual void text(std::string_view content) = 0;
    virtual void cdata(std::string_view content) = 0;
    virtual void comment(std::string_view content) = 0;
    virtual void processingInstruction(std::string_view target, std::string_view data) = 0;
};

class Tree;
struct NodeData;

/// Shares a tree among its handles. Counts without atomics: a tree belongs to one thread at a time.
class TreePointer {
  public:
    TreePointer() noexcept = default;
    explicit TreePointer(Tree* tree) noexcept;
    TreePointer(const TreePointer& other) noexcept : TreePointer(other.tree_) {}
    TreePointer(TreePointer&& other) noexcept : tree_(std::exchange(other.tree_, nullptr)) {}
    TreePointer& operator=(TreePointer other) noexcept {
        std::swap(tree_, other.tree_);
        return *this;
    }
    ~TreePointer();

    [[nodiscard]] Tree* get() const noexcept { return tree_; }
    Tree* operator->() const noexcept { return tree_; }
    bool operator==(const TreePointer& other) const noexcept { return tree_ == other.tree_; }

  private:
    Tree* tree_ = nullptr;
};

/// A node of a document, or none. A value: copies name the same node and keep its document alive. Nodes taken out of a
/// document stay usable for as long as any handle on that document lives.
///
/// Every operation on "none" fails with error 91, "Object variable or With block variable not set"; a name or text that
/// XML cannot hold, or a node put where it cannot stand, fails with error 5.
class Node {
  public:
    Node() = default;

    explicit operator bool() const noexcept { return data_ != nullptr; }
    /// Whether both name the same node.
    bool operator==(const Node& other) const noexcept { return data_ == other.data_; }

    [[nodiscard]] NodeKind kind() const;
    /// Qualified name of an element or target of an instruction; "#text", "#document" … of others.
    [[nodiscard]] std::string name() const;
    /// Of an element; empty when it is in none, and of all other kinds.
    [[nodiscard]] std::string namespaceUri() const;
    /// For an element, document or fragment the text of all its descendants, trimmed of white space at both ends except
    /// within CDATA, comments and instructions left out; for other kinds their content as it stands.
    [[nodiscard]] std::string text() const;
    /// `text` of an element with one text, as most have: a view that lives as long as the document. Nothing for any other content.
    [[nodiscard]] std::optional<std::string_view> onlyText() const;
    /// `text` as a view that lives as long as the document, which keeps what had to be put together: for whoever asks once.
    [[nodiscard]] std::string_view textView() const;
    /// Replaces the content by this text; "" leaves no child. Error 5 on a document. What cannot be escaped (CDATA, comments,
    /// instructions) is kept as a parse would read it: line ends as LF.
    void setText(std::string_view text) const;
    /// The string value of XPath: like `text` but not trimmed.
    [[nodiscard]] std::string stringValue() const;
    /// This node and all below it as XML text.
    [[nodiscard]] std::string xml() const;
    [[nodiscard]] Position position() const;

    [[nodiscard]] bool hasChildNodes() const;
    [[nodiscard]] Node firstChild() const;
    [[nodiscard]] Node lastChild() const;
    [[nodiscard]] Node nextSibling() const;
    [[nodiscard]] Node parentNode() const;  ///< none for a node that stands nowhere and for the document
    [[nodiscard]] std::vector<Node> childNodes() const;
    /// The first child element of this name (no namespace), or none.
    [[nodiscard]] Node child(std::string_view name) const;
    /// All child elements of this name (no namespace).
    [[nodiscard]] std::vector<Node> children(std::string_view name) const;
    /// The next sibling element with the name of this one, or none.
    [[nodiscard]] Node nextOfSameName() const;
    /// The first element in document order on a path of child names (no namespace) such as "Macros/Macro", or none. "*" is any
    /// name; a path that begins with "/" starts at the document. Fails with error 5 for what is no such path.
    [[nodiscard]] Node selectSingleNode(std::string_view path) const;

    /// Puts `child` last, taking it out of where it stood. A fragment gives its children and is empty then. A node of
    /// another document is refused (5). Returns `child`.
    [[nodiscard("may be ignored with (void)")]] Node appendChild(const Node& child) const;
    /// As `appendChild`, before `reference`; last when `reference` is none.
    [[nodiscard("may be ignored with (void)")]] Node insertBefore(const Node& child, const Node& reference) const;
    /// Takes a child out; error 5 when it is not a child of this node.
    void removeChild(const Node& child) const;

    /// By qualified name; namespace declarations are no attributes here.
    [[nodiscard]] std::optional<std::string> attribute(std::string_view name) const;
    /// Sets or replaces an attribute (no namespace).
    void setAttribute(std::string_view name, std::string_view value) const;
    void removeAttribute(std::string_view name) const;

    /// Leads the visitor through this node and all below it. Does not recurse: depth costs no stack.
    void accept(NodeVisitor& visitor) const;

  private:
    friend class Document;
    Node(TreePointer tree, NodeData* data) : tree_(std::move(tree)), data_(data) {}
    [[nodiscard]] NodeData& required() const;
    [[nodiscard]] Node sibling(NodeData* data) const { return data == nullptr ? Node() : Node(tree_, data); }

    TreePointer tree_;
    NodeData* data_ = nullptr;
};

/// A document object, empty when created. A handle: copies share the document, so that a change to its nodes shows in all of
/// them. Loading gives this handle a new document and leaves the copies with the old one.
class Document {
  public:
    Document();

    /// Replaces the content by a parse of `text` (UTF-8, a leading byte order mark is skipped). On an error the content
    /// is empty, `parseError` tells why, and the answer is false. Never throws for bad input.
    bool loadXML(std::string_view text);
    /// Replaces the content by a copy of the other document's, without a parse; error record included. Nodes taken from
    /// either stay what they are. Answers whether the copy has no parse error.
    bool load(const Document& other);
    [[nodiscard]] const ParseError& parseError() const;
    /// The text that was loaded, without byte order mark, whatever has changed in the document since; empty when none was.
    [[nodiscard]] std::string_view source() const noexcept;

    [[nodiscard]] Node node() const;  ///< the document node
    [[nodiscard]] Node documentElement() const;
    [[nodiscard]] bool hasChildNodes() const { return node().hasChildNodes(); }
    [[nodiscard]] std::string xml() const { return node().xml(); }
    [[nodiscard]] Node selectSingleNode(std::string_view path) const { return node().selectSingleNode(path); }

    [[nodiscard]] Node createElement(std::string_view name) const;  ///< no namespace
    /// An element with a default-namespace declaration of its own when `namespaceUri` is not empty; put under a parent with
    /// the same default namespace it needs none and has none.
    [[nodiscard]] Node createElement(std::string_view name, std::string_view namespaceUri) const;
    [[nodiscard]] Node createTextNode(std::string_view text) const;
    [[nodiscard]] Node createProcessingInstruction(std::string_view target, std::string_view data) const;
    [[nodiscard]] Node createDocumentFragment() const;

    /// Whether both hold the same nodes: their `xml()` is the same text then.
    [[nodiscard]] bool equals(const Document& other) const noexcept;
    /// Whether both handles share one document: neither was loaded since one was copied from the other.
    [[nodiscard]] bool sameAs(const Document& other) const noexcept { return tree_ == other.tree_; }

  private:
    TreePointer tree_;
};

}  // namespace vrn::xml
