#include "xml/msxml/Tree.h"

#include <new>
#include <utility>

#include "errors/Error.h"

namespace vrn::xml::tree {

using com::Bstr;
using com::Variant;

namespace {

using Getter = HRESULT (WINAPI IXMLDOMNode::*)(IXMLDOMNode**);

NodePtr related(IXMLDOMNode* node, Getter getter) {
    NodePtr other;
    com::require((node->*getter)(&other));
    return other;
}

// Of one document, so that an object that was made anew for the same node can be told by what it shows of a change.
constexpr std::string_view probe = "vrn-probe";

bool isContainer(DOMNodeType type) noexcept { return type == NODE_ELEMENT || type == NODE_DOCUMENT_FRAGMENT; }

NodePtr created(IXMLDOMNode* node, std::string_view name) {
    ComPtr<IXMLDOMDocument> document;
    com::require(node->get_ownerDocument(&document));
    ComPtr<IXMLDOMElement> element;
    com::require(document->createElement(Bstr(name).get(), &element));
    return element;
}

bool showsAddedChild(IXMLDOMNode* a, IXMLDOMNode* b) {
    const NodePtr child = created(a, probe);
    NodePtr added;
    com::require(a->appendChild(child.Get(), &added));
    const NodePtr last = lastChild(b);
    const bool shown = last != nullptr && rawName(last.Get()).view() == rawName(child.Get()).view();
    remove(a, child.Get());
    return shown;
}

bool showsChangedValue(IXMLDOMNode* a, IXMLDOMNode* b) {
    const std::string value = valueOf(a);
    if (valueOf(b) != value) {
        return false;
    }
    setValue(a, value + "x");
    const bool shown = valueOf(b) != value;
    setValue(a, value);
    return shown;
}

void insertPlainly(IXMLDOMNode* child, IXMLDOMNode* parent, IXMLDOMNode* reference) {
    NodePtr added;
    if (reference == nullptr) {
        requireAccepted(parent->appendChild(child, &added));
    } else {
        requireAccepted(parent->insertBefore(child, Variant(reference).get(), &added));
    }
}

bool isText(const NodePtr& node) { return node != nullptr && typeOf(node.Get()) == NODE_TEXT; }

// A text comes between two elements, which then go.
void insertApart(IXMLDOMNode* text, IXMLDOMNode* parent, IXMLDOMNode* reference) {
    const NodePtr before = created(text, probe);
    const NodePtr behind = created(text, probe);
    insertPlainly(before.Get(), parent, reference);
    insertPlainly(behind.Get(), parent, reference);
    insertPlainly(text, parent, behind.Get());
    remove(parent, before.Get());
    remove(parent, behind.Get());
}

void raiseDepthBound(Tree& tree, IXMLDOMNode* child) {
    constexpr std::size_t farTooDeep = 1000000;
    if (tree.depthBound < farTooDeep && typeOf(child) == NODE_ELEMENT) {
        tree.depthBound += firstChild(child) == nullptr ? 1 : tree.depthBound + 1;
    }
}

}  // namespace

TreePtr newTree() {
    auto tree = std::make_shared<Tree>();
    tree->document = newMsxmlDocument();
    return tree;
}

std::unique_lock<std::mutex> lockParser() {
    static std::mutex parser;
    return std::unique_lock(parser);
}

Node handle(const TreePtr& tree, NodePtr node) {
    if (node == nullptr) {
        return {};
    }
    void* const raw = node.Get();
    return {std::make_shared<Node::Owner>(Node::Owner{std::move(node), tree}), raw};
}

IXMLDOMNode* required(const Node& node) {
    if (!node) {
        errors::throwObjectNotSet();
    }
    return static_cast<IXMLDOMNode*>(node.raw());
}

void requireAccepted(HRESULT result) {
    if (result == E_OUTOFMEMORY) {
        throw std::bad_alloc();
    }
    if (FAILED(result)) {
        errors::throwInvalidProcedureCall();
    }
}

DOMNodeType typeOf(IXMLDOMNode* node) {
    DOMNodeType type = NODE_INVALID;
    com::require(node->get_nodeType(&type));
    return type;
}

Bstr rawName(IXMLDOMNode* node) {
    Bstr name;
    com::require(node->get_nodeName(name.put()));
    return name;
}

std::string nameOf(IXMLDOMNode* node) {
    std::string name = rawName(node).utf8();
    return name == declarationTarget ? "xml" : name;
}

std::string valueOf(IXMLDOMNode* node) {
    Variant value;
    com::require(node->get_nodeValue(value.put()));
    return value.get().vt == VT_BSTR ? com::utf8Of(value.get().bstrVal) : std::string();
}

void setValue(IXMLDOMNode* node, std::string_view value) { com::require(node->put_nodeValue(Variant(value).get())); }

// A node is created with line feeds in the place of carriage returns; a value that is set stays as it is.
ComPtr<IXMLDOMText> newText(const Tree& tree, std::string_view text) {
    ComPtr<IXMLDOMText> node;
    requireAccepted(tree.document->createTextNode(Bstr(text).get(), &node));
    if (text.find('\r') != std::string_view::npos) {
        setValue(node.Get(), text);
    }
    return node;
}

std::string namespaceOf(IXMLDOMNode* node) {
    Bstr uri;
    com::require(node->get_namespaceURI(uri.put()));
    return uri.utf8();
}

NodePtr firstChild(IXMLDOMNode* node) { return related(node, &IXMLDOMNode::get_firstChild); }
NodePtr lastChild(IXMLDOMNode* node) { return related(node, &IXMLDOMNode::get_lastChild); }
NodePtr nextSibling(IXMLDOMNode* node) { return related(node, &IXMLDOMNode::get_nextSibling); }
NodePtr previousSibling(IXMLDOMNode* node) { return related(node, &IXMLDOMNode::get_previousSibling); }
NodePtr parentOf(IXMLDOMNode* node) { return related(node, &IXMLDOMNode::get_parentNode); }

bool isDeclaration(IXMLDOMNode* node) {
    return typeOf(node) == NODE_PROCESSING_INSTRUCTION && rawName(node).utf8() == declarationTarget;
}

bool same(IXMLDOMNode* a, IXMLDOMNode* b) {
    ComPtr<IUnknown> identityOfA;
    ComPtr<IUnknown> identityOfB;
    com::require(a->QueryInterface(IID_PPV_ARGS(&identityOfA)));
    com::require(b->QueryInterface(IID_PPV_ARGS(&identityOfB)));
    if (identityOfA.Get() == identityOfB.Get()) {
        return true;
    }
    const DOMNodeType type = typeOf(a);
    if (type != typeOf(b) || rawName(a).view() != rawName(b).view()) {
        return false;
    }
    if (type == NODE_DOCUMENT) {
        return true;  // there is one
    }
    return isContainer(type) ? showsAddedChild(a, b) : showsChangedValue(a, b);
}

TemporaryAttribute::TemporaryAttribute(IXMLDOMNode* element) : name_(probe) {
    com::require(element->QueryInterface(IID_IXMLDOMElement, reinterpret_cast<void**>(element_.GetAddressOf())));
    com::require(element_->setAttribute(name_.get(), Variant(std::string_view()).get()));
}

TemporaryAttribute::~TemporaryAttribute() { element_->removeAttribute(name_.get()); }

void insert(Tree& tree, IXMLDOMNode* child, IXMLDOMNode* parent, IXMLDOMNode* reference) {
    raiseDepthBound(tree, child);
    if (typeOf(child) == NODE_TEXT &&
        (isText(reference) || isText(reference == nullptr ? lastChild(parent) : previousSibling(reference)))) {
        insertApart(child, parent, reference);
    } else {
        insertPlainly(child, parent, reference);
    }
}

void remove(IXMLDOMNode* parent, IXMLDOMNode* child) {
    NodePtr removed;
    requireAccepted(parent->removeChild(child, &removed));
}

}  // namespace vrn::xml::tree
