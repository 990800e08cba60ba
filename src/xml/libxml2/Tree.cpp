#include "xml/libxml2/Tree.h"

#include <libxml/globals.h>
#include <libxml/parser.h>

#include <array>
#include <cstring>
#include <new>

#include "errors/Error.h"

namespace vrn::xml {

Node::Owner::~Owner() {
    if (limbo != nullptr) {
        xmlFreeNode(limbo);
    }
    xmlFreeDoc(doc);
}

namespace tree {

namespace {

// A text this short lies in the node itself, where elements have their attributes: one allocation less. libxml2 does the same
// on load and knows on release.
constexpr std::size_t inlineCapacity = 2 * sizeof(void*);

xmlChar* inlineContent(xmlNode* node) noexcept { return reinterpret_cast<xmlChar*>(&node->properties); }

void releaseContent(xmlNode* node) noexcept {
    xmlChar* const content = node->content;
    node->content = nullptr;
    if (content == nullptr || content == inlineContent(node)) {
        return;
    }
    if (node->doc->dict == nullptr || xmlDictOwns(node->doc->dict, content) == 0) {
        xmlFree(content);
    }
}

void ignoreGeneric(void* /*context*/, const char* /*format*/, ...) {}
void ignoreStructured(void* /*context*/, xmlError* /*error*/) {}

xmlNode* limboOf(Node::Owner& owner) {
    if (owner.limbo == nullptr) {
        xmlNode* const limbo =
            xmlNewDocNodeEatName(owner.doc, nullptr, const_cast<xmlChar*>(intern(owner.doc, "limbo")), nullptr);
        if (limbo == nullptr) {
            throw std::bad_alloc();
        }
        owner.limbo = limbo;
    }
    return owner.limbo;
}

}  // namespace

void initialise() {
    static const bool done = [] {
        xmlInitParser();
        return true;
    }();
    (void)done;
}

DocPtr newDocument() {
    initialise();
    const QuietErrors quiet;
    DocPtr doc(xmlNewDoc(chars("1.0")));
    if (doc == nullptr) {
        throw std::bad_alloc();
    }
    return doc;
}

xmlNode* required(const Node& node) {
    if (!node) {
        errors::throwObjectNotSet();
    }
    return static_cast<xmlNode*>(node.raw());
}

bool equals(const xmlChar* text, std::string_view other) noexcept { return view(text) == other; }

bool hasPlainName(const xmlNode* node, std::string_view name) noexcept {
    return node->ns == nullptr && equals(node->name, name);
}

bool isXmlDeclaration(const xmlNode* node) noexcept { return node->type == XML_PI_NODE && equals(node->name, "xml"); }

const xmlChar* intern(xmlDoc* doc, std::string_view name) {
    // Made with the first name only: many a document stays empty, and threads meet at a lock to make a dictionary.
    if (doc->dict == nullptr) {
        doc->dict = xmlDictCreate();
    }
    if (doc->dict == nullptr) {
        throw std::bad_alloc();
    }
    const xmlChar* const interned = xmlDictLookup(doc->dict, chars(name.data()), static_cast<int>(name.size()));
    if (interned == nullptr) {
        throw std::bad_alloc();
    }
    return interned;
}

xmlNode* newText(xmlDoc* doc, std::string_view content) {
    xmlNode* const text = xmlNewDocText(doc, nullptr);
    if (text == nullptr) {
        throw std::bad_alloc();
    }
    try {
        setContent(text, content);
    } catch (...) {
        xmlFreeNode(text);
        throw;
    }
    return text;
}

void setContent(xmlNode* node, std::string_view content) {
    xmlChar* place = inlineContent(node);
    if (node->type != XML_TEXT_NODE || content.size() >= inlineCapacity) {
        place = static_cast<xmlChar*>(xmlMallocAtomic(content.size() + 1));
        if (place == nullptr) {
            throw std::bad_alloc();
        }
    }
    // The new content may be part of the old one: copy first, release then. Inline to inline may overlap.
    if (place == inlineContent(node)) {
        std::array<char, inlineCapacity> copy{};
        content.copy(copy.data(), content.size());
        releaseContent(node);
        std::memcpy(place, copy.data(), copy.size());
    } else {
        content.copy(reinterpret_cast<char*>(place), content.size());
        place[content.size()] = 0;
        releaseContent(node);
    }
    node->content = place;
}

void setAttributeValue(xmlAttr* attribute, std::string_view value) {
    xmlNode* const text = newText(attribute->doc, value);
    xmlNode* const old = attribute->children;
    attribute->children = attribute->last = text;
    text->parent = reinterpret_cast<xmlNode*>(attribute);
    if (old != nullptr) {
        xmlFreeNodeList(old);  // no handle can name it: attributes show no children
    }
}

void link(xmlNode* node, xmlNode* parent, xmlNode* reference) noexcept {
    xmlNode* const before = reference != nullptr ? reference->prev : parent->last;
    node->parent = parent;
    node->prev = before;
    node->next = reference;
    (before != nullptr ? before->next : parent->children) = node;
    (reference != nullptr ? reference->prev : parent->last) = node;
}

void unlink(xmlNode* node) noexcept {
    if (node->parent != nullptr) {
        (node->prev != nullptr ? node->prev->next : node->parent->children) = node->next;
        (node->next != nullptr ? node->next->prev : node->parent->last) = node->prev;
    }
    node->parent = node->prev = node->next = nullptr;
}

void toLimbo(Node::Owner& owner, xmlNode* node) { link(node, limboOf(owner), nullptr); }

void toLimbo(Node::Owner& owner, xmlAttr* attribute) {
    xmlNode* const limbo = limboOf(owner);
    attribute->parent = limbo;
    attribute->prev = nullptr;
    attribute->next = limbo->properties;
    if (attribute->next != nullptr) {
        attribute->next->prev = attribute;
    }
    limbo->properties = attribute;
}

const xmlNode* nextBeyond(const xmlNode* node, const xmlNode* top) noexcept {
    while (node != top && node->next == nullptr) {
        node = node->parent;
    }
    return node == top ? nullptr : node->next;
}

QuietErrors::QuietErrors() noexcept
    : generic_(xmlGenericError),
      genericContext_(xmlGenericErrorContext),
      structured_(xmlStructuredError),
      structuredContext_(xmlStructuredErrorContext) {
    xmlSetGenericErrorFunc(nullptr, &ignoreGeneric);
    xmlSetStructuredErrorFunc(nullptr, &ignoreStructured);
}

QuietErrors::~QuietErrors() {
    xmlSetGenericErrorFunc(genericContext_, generic_);
    xmlSetStructuredErrorFunc(structuredContext_, structured_);
    xmlResetLastError();
}

}  // namespace tree

}  // namespace vrn::xml
