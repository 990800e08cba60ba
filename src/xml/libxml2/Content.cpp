// Text in and out of nodes, and their attributes.
#include <new>

#include "errors/Error.h"
#include "xml/DescendantText.h"
#include "xml/Names.h"
#include "xml/libxml2/Tree.h"

namespace vrn::xml {

using tree::required;
using tree::view;

namespace {

bool hasOwnContent(const xmlNode* node) noexcept {
    return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE || node->type == XML_COMMENT_NODE ||
           node->type == XML_PI_NODE;
}

DescendantText collect(const xmlNode* top) {
    DescendantText collected;
    const xmlNode* node = top->children;
    while (node != nullptr) {
        if (node->type == XML_ELEMENT_NODE && node->children != nullptr) {
            node = node->children;
            continue;
        }
        if (node->type == XML_TEXT_NODE) {
            collected.addText(view(node->content));
        } else if (node->type == XML_CDATA_SECTION_NODE) {
            collected.addCData(view(node->content));
        }
        node = tree::nextBeyond(node, top);
    }
    return collected;
}

void setOwnContent(xmlNode* node, std::string_view text) {
    switch (node->type) {
        case XML_PI_NODE:
            return tree::setContent(node, instructionContent(text));
        case XML_COMMENT_NODE:
            return tree::setContent(node, commentContent(text));
        case XML_CDATA_SECTION_NODE:
            return tree::setContent(node, cdataContent(text));
        default:
            requireText(text);
            return tree::setContent(node, text);
    }
}

// The one text of an element that has just that is changed in place, so that setting a text time and again does not pile up
// nodes in limbo.
void replaceChildren(Node::Owner& owner, xmlNode* parent, std::string_view text) {
    requireText(text);
    xmlNode* const first = parent->children;
    if (!text.empty() && first != nullptr && first->next == nullptr && first->type == XML_TEXT_NODE) {
        tree::setContent(first, text);
        return;
    }
    xmlNode* const added = text.empty() ? nullptr : tree::newText(parent->doc, text);
    while (xmlNode* const child = parent->children) {
        tree::unlink(child);
        tree::toLimbo(owner, child);
    }
    if (added != nullptr) {
        tree::link(added, parent, nullptr);
    }
}

// By qualified name, so that attributes with a prefix can be read too.
xmlAttr* findAttribute(const xmlNode* element, std::string_view name) {
    if (element->type != XML_ELEMENT_NODE) {
        errors::throwInvalidProcedureCall();
    }
    const std::size_t colon = name.find(':');
    const bool prefixed = colon != std::string_view::npos;
    const std::string_view prefix = prefixed ? name.substr(0, colon) : std::string_view{};
    const std::string_view local = prefixed ? name.substr(colon + 1) : name;
    for (xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next) {
        const std::string_view own = tree::namespacePrefix(attribute->ns);
        if (own == prefix && tree::equals(attribute->name, local)) {
            return attribute;
        }
    }
    return nullptr;
}

}  // namespace

std::string Node::text() const {
    const xmlNode* const node = required(*this);
    if (node->type == XML_ATTRIBUTE_NODE || hasOwnContent(node)) {
        return stringValue();
    }
    return collect(node).trimmed();
}

std::string Node::stringValue() const {
    const xmlNode* const node = required(*this);
    if (hasOwnContent(node)) {
        return std::string(view(node->content));
    }
    if (node->type == XML_ATTRIBUTE_NODE) {
        return std::string(tree::attributeValue(tree::asAttribute(node)));
    }
    return collect(node).whole();
}

void Node::setText(std::string_view text) const {
    xmlNode* const node = required(*this);
    if (node->type == XML_DOCUMENT_NODE) {
        errors::throwInvalidProcedureCall();
    }
    if (node->type == XML_ATTRIBUTE_NODE) {
        requireText(text);
        tree::setAttributeValue(reinterpret_cast<xmlAttr*>(node), text);
    } else if (hasOwnContent(node)) {
        setOwnContent(node, text);
    } else {
        replaceChildren(*owner_, node, text);
    }
}

std::optional<std::string> Node::attribute(std::string_view name) const {
    const xmlAttr* const found = findAttribute(required(*this), name);
    if (found == nullptr) {
        return std::nullopt;
    }
    return std::string(tree::attributeValue(found));
}

void Node::setAttribute(std::string_view name, std::string_view value) const {
    xmlNode* const element = required(*this);
    requireAttributeName(name);
    requireText(value);
    xmlAttr* attribute = findAttribute(element, name);
    if (attribute == nullptr) {
        const xmlChar* const interned = tree::intern(element->doc, name);
        attribute = xmlNewProp(element, interned, nullptr);
        if (attribute == nullptr) {
            throw std::bad_alloc();
        }
    }
    tree::setAttributeValue(attribute, value);
}

void Node::removeAttribute(std::string_view name) const {
    xmlAttr* const attribute = findAttribute(required(*this), name);
    if (attribute == nullptr) {
        return;
    }
    xmlNode* const element = attribute->parent;
    (attribute->prev != nullptr ? attribute->prev->next : element->properties) = attribute->next;
    if (attribute->next != nullptr) {
        attribute->next->prev = attribute->prev;
    }
    tree::toLimbo(*owner_, attribute);
}

}  // namespace vrn::xml
