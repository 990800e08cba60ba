// Text in and out of nodes, and their attributes.

#include "errors/Error.h"
#include "xml/DescendantText.h"
#include "xml/Names.h"
#include "xml/msxml/Tree.h"

namespace vrn::xml {

using com::Bstr;
using com::ComPtr;
using com::Variant;
using tree::NodePtr;
using tree::required;
using tree::typeOf;

namespace {

bool hasOwnContent(DOMNodeType type) noexcept {
    return type != NODE_ELEMENT && type != NODE_DOCUMENT && type != NODE_DOCUMENT_FRAGMENT;
}

DescendantText collect(IXMLDOMNode* top) {
    DescendantText collected;
    tree::walk(
        top,
        [&](IXMLDOMNode* node) {
            const DOMNodeType type = typeOf(node);
            if (type == NODE_TEXT) {
                collected.addText(tree::valueOf(node));
            } else if (type == NODE_CDATA_SECTION) {
                collected.addCData(tree::valueOf(node));
            }
            return !hasOwnContent(type);
        },
        [](IXMLDOMNode* /*node*/) {});
    return collected;
}

void setOwnContent(IXMLDOMNode* node, DOMNodeType type, std::string_view text) {
    switch (type) {
        case NODE_PROCESSING_INSTRUCTION:
            return tree::setValue(node, instructionContent(text));
        case NODE_COMMENT:
            return tree::setValue(node, commentContent(text));
        case NODE_CDATA_SECTION:
            return tree::setValue(node, cdataContent(text));
        default:
            requireText(text);
            return tree::setValue(node, text);
    }
}

// The one text of an element that has just that is changed in place, so that setting a text time and again does not pile up
// nodes that stand nowhere.
void replaceChildren(tree::Tree& owner, IXMLDOMNode* parent, std::string_view text) {
    requireText(text);
    NodePtr child = tree::firstChild(parent);
    if (!text.empty() && child != nullptr && typeOf(child.Get()) == NODE_TEXT &&
        tree::nextSibling(child.Get()) == nullptr) {
        tree::setValue(child.Get(), text);
        return;
    }
    for (; child != nullptr; child = tree::firstChild(parent)) {
        tree::remove(parent, child.Get());
    }
    if (!text.empty()) {
        tree::insert(owner, tree::newText(owner, text).Get(), parent, nullptr);
    }
}

ComPtr<IXMLDOMElement> elementOf(const Node& node) {
    ComPtr<IXMLDOMElement> element;
    IXMLDOMNode* const raw = required(node);
    if (typeOf(raw) != NODE_ELEMENT) {
        errors::throwInvalidProcedureCall();
    }
    com::require(raw->QueryInterface(IID_IXMLDOMElement, reinterpret_cast<void**>(element.GetAddressOf())));
    return element;
}

bool isDeclarationName(std::string_view name) noexcept { return name == "xmlns" || name.starts_with("xmlns:"); }

}  // namespace

std::string Node::text() const {
    IXMLDOMNode* const node = required(*this);
    return hasOwnContent(typeOf(node)) ? tree::valueOf(node) : collect(node).trimmed();
}

std::string Node::stringValue() const {
    IXMLDOMNode* const node = required(*this);
    return hasOwnContent(typeOf(node)) ? tree::valueOf(node) : collect(node).whole();
}

void Node::setText(std::string_view text) const {
    IXMLDOMNode* const node = required(*this);
    const DOMNodeType type = typeOf(node);
    if (type == NODE_DOCUMENT) {
        errors::throwInvalidProcedureCall();
    }
    if (hasOwnContent(type)) {
        setOwnContent(node, type, text);
    } else {
        replaceChildren(*owner_->tree, node, text);
    }
}

std::optional<std::string> Node::attribute(std::string_view name) const {
    const ComPtr<IXMLDOMElement> element = elementOf(*this);
    if (isDeclarationName(name) || name.find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    Variant value;
    // MSXML fails for what is no name at all.
    if (element->getAttribute(Bstr(name).get(), value.put()) != S_OK || value.get().vt != VT_BSTR) {
        return std::nullopt;
    }
    return com::utf8Of(value.get().bstrVal);
}

void Node::setAttribute(std::string_view name, std::string_view value) const {
    (void)required(*this);
    requireAttributeName(name);
    requireText(value);
    com::require(elementOf(*this)->setAttribute(Bstr(name).get(), Variant(value).get()));
}

// Taken out and not just removed: a handle may name the attribute.
void Node::removeAttribute(std::string_view name) const {
    const ComPtr<IXMLDOMElement> element = elementOf(*this);
    if (isDeclarationName(name) || !attribute(name)) {
        return;
    }
    ComPtr<IXMLDOMNamedNodeMap> attributes;
    NodePtr removed;
    com::require(element->get_attributes(&attributes));
    com::require(attributes->removeNamedItem(Bstr(name).get(), &removed));
}

}  // namespace vrn::xml
