// A copy of a whole tree without a parse. libxml2's own copy recurses with the depth of the tree and gives every name an
// allocation of its own; this one does neither.
#include <array>
#include <cstdint>
#include <new>
#include <unordered_map>

#include "xml/libxml2/Tree.h"

namespace vrn::xml::tree {

namespace {

// Names come from the source's dictionary, so equal names are mostly equal pointers: a small table of pointers spares the
// search in the copy's dictionary.
class NameCopier {
  public:
    explicit NameCopier(xmlDoc* target) : target_(target) {}

    const xmlChar* operator()(const xmlChar* name) {
        Known& known = known_[(reinterpret_cast<std::uintptr_t>(name) >> 2U) % known_.size()];
        if (known.source != name) {
            known = {name, intern(target_, view(name))};
        }
        return known.copy;
    }

  private:
    struct Known {
        const xmlChar* source = nullptr;
        const xmlChar* copy = nullptr;
    };
    xmlDoc* target_;
    std::array<Known, 256> known_{};
};

class Copier {
  public:
    explicit Copier(xmlDoc* target) : target_(target), name_(target) {}

    void copyChildren(const xmlNode* top);

  private:
    xmlNode* copyOne(const xmlNode& source, xmlNode* parent);
    xmlNode* make(const xmlNode& source);
    void copyDeclarations(const xmlNode& source, xmlNode& element);
    void copyAttributes(const xmlNode& source, xmlNode& element);
    xmlNs* namespaceOf(const xmlNs* source);
    xmlNs* strayNamespace(const xmlNs& source);

    xmlDoc* target_;
    NameCopier name_;
    std::unordered_map<const xmlNs*, xmlNs*> namespaces_;
};

template <typename T>
T* checked(T* pointer) {
    if (pointer == nullptr) {
        throw std::bad_alloc();
    }
    return pointer;
}

void Copier::copyChildren(const xmlNode* top) {
    xmlNode* parent = asNode(target_);
    const xmlNode* node = top->children;
    while (node != nullptr) {
        xmlNode* const copy = copyOne(*node, parent);
        if (node->type == XML_ELEMENT_NODE && node->children != nullptr) {
            parent = copy;
            node = node->children;
            continue;
        }
        while (node != top && node->next == nullptr) {
            node = node->parent;
            parent = parent->parent;
        }
        node = node == top ? nullptr : node->next;
    }
}

// Linked before it is filled: whatever fails from then on, the copy's document frees it.
xmlNode* Copier::copyOne(const xmlNode& source, xmlNode* parent) {
    xmlNode* const copy = checked(make(source));
    link(copy, parent, nullptr);
    copy->line = source.line;
    if (source.type != XML_ELEMENT_NODE) {
        setContent(copy, view(source.content));
        return copy;
    }
    if (source.nsDef != nullptr) {
        copyDeclarations(source, *copy);
    }
    copy->ns = namespaceOf(source.ns);
    copyAttributes(source, *copy);
    return copy;
}

xmlNode* Copier::make(const xmlNode& source) {
    switch (source.type) {
        case XML_ELEMENT_NODE:
            return xmlNewDocNodeEatName(target_, nullptr, const_cast<xmlChar*>(name_(source.name)), nullptr);
        case XML_CDATA_SECTION_NODE:
            return xmlNewCDataBlock(target_, nullptr, 0);
        case XML_COMMENT_NODE:
            return xmlNewDocComment(target_, nullptr);
        case XML_PI_NODE:
            return xmlNewDocPI(target_, source.name, nullptr);
        default:
            return xmlNewDocText(target_, nullptr);
    }
}

void Copier::copyDeclarations(const xmlNode& source, xmlNode& element) {
    for (const xmlNs* declared = source.nsDef; declared != nullptr; declared = declared->next) {
        namespaces_[declared] = checked(xmlNewNs(&element, declared->href, declared->prefix));
    }
}

void Copier::copyAttributes(const xmlNode& source, xmlNode& element) {
    xmlAttr* last = nullptr;
    for (const xmlAttr* attribute = source.properties; attribute != nullptr; attribute = attribute->next) {
        auto* const copy = static_cast<xmlAttr*>(checked(xmlMalloc(sizeof(xmlAttr))));
        *copy = xmlAttr{};
        copy->type = XML_ATTRIBUTE_NODE;
        copy->doc = target_;
        copy->parent = &element;
        copy->prev = last;
        (last != nullptr ? last->next : element.properties) = copy;
        last = copy;
        copy->name = name_(attribute->name);
        copy->ns = namespaceOf(attribute->ns);
        setAttributeValue(copy, attributeValue(attribute));
    }
}

xmlNs* Copier::namespaceOf(const xmlNs* source) {
    if (source == nullptr) {
        return nullptr;
    }
    const auto found = namespaces_.find(source);
    return found != namespaces_.end() ? found->second : namespaces_[source] = strayNamespace(*source);
}

// A namespace that no ancestor declares: the one of "xml", or one whose declaration stands elsewhere since its user was
// moved. The document itself keeps such, "xml" first.
xmlNs* Copier::strayNamespace(const xmlNs& source) {
    xmlNs* const first = checked(xmlSearchNs(target_, asNode(target_), chars("xml")));
    if (view(source.prefix) == "xml") {
        return first;
    }
    xmlNs* const stray = checked(xmlNewNs(nullptr, source.href, source.prefix));
    stray->next = first->next;
    first->next = stray;
    return stray;
}

}  // namespace

DocPtr copyDocument(const xmlDoc* source) {
    DocPtr target = newDocument();
    const QuietErrors quiet;
    Copier(target.get()).copyChildren(asNode(source));
    return target;
}

}  // namespace vrn::xml::tree
