// Documents as a whole, and the nodes they make.
#include <libxml/tree.h>

#include <new>
#include <utility>

#include "xml/Names.h"
#include "xml/libxml2/Load.h"
#include "xml/libxml2/Tree.h"

namespace vrn::xml {

namespace {

// A node just made stands nowhere until the caller puts it somewhere.
Node adopt(const std::shared_ptr<Node::Owner>& owner, xmlNode* node) {
    if (node == nullptr) {
        throw std::bad_alloc();
    }
    try {
        tree::toLimbo(*owner, node);
    } catch (...) {
        xmlFreeNode(node);
        throw;
    }
    return {owner, node};
}

}  // namespace

Document::Document() : content_(std::make_shared<Content>()) {
    content_->owner = std::make_shared<Node::Owner>(tree::newDocument());
}

bool Document::loadXML(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    content_ = Document().content_;  // the old tree goes before the new one takes memory
    tree::DocPtr parsed = parseText(text, content_->error);
    if (parsed != nullptr) {
        content_->owner = std::make_shared<Node::Owner>(std::move(parsed));
    }
    return content_->error.errorCode == 0;
}

bool Document::load(const Document& other) {
    auto content = std::make_shared<Content>();
    content->error = other.content_->error;
    content->owner = std::make_shared<Node::Owner>(tree::copyDocument(other.content_->owner->doc));
    content_ = std::move(content);
    return content_->error.errorCode == 0;
}

const ParseError& Document::parseError() const { return content_->error; }

Node Document::node() const { return {content_->owner, tree::asNode(content_->owner->doc)}; }

Node Document::documentElement() const {
    xmlNode* child = content_->owner->doc->children;
    while (child != nullptr && child->type != XML_ELEMENT_NODE) {
        child = child->next;
    }
    return child == nullptr ? Node() : Node(content_->owner, child);
}

Node Document::createElement(std::string_view name) const {
    requirePlainName(name);
    xmlDoc* const doc = content_->owner->doc;
    const xmlChar* const interned = tree::intern(doc, name);
    return adopt(content_->owner, xmlNewDocNodeEatName(doc, nullptr, const_cast<xmlChar*>(interned), nullptr));
}

Node Document::createElement(std::string_view name, std::string_view namespaceUri) const {
    if (namespaceUri.empty()) {
        return createElement(name);
    }
    requireNamespaceUri(namespaceUri);
    Node element = createElement(name);
    xmlNode* const raw = tree::required(element);
    raw->ns = xmlNewNs(raw, tree::chars(std::string(namespaceUri).c_str()), nullptr);
    if (raw->ns == nullptr) {
        throw std::bad_alloc();
    }
    return element;
}

Node Document::createTextNode(std::string_view text) const {
    requireText(text);
    Node node = adopt(content_->owner, xmlNewDocText(content_->owner->doc, nullptr));
    tree::setContent(tree::required(node), text);
    return node;
}

Node Document::createProcessingInstruction(std::string_view target, std::string_view data) const {
    requireTarget(target);
    const std::string content = instructionContent(data);
    xmlDoc* const doc = content_->owner->doc;
    Node node = adopt(content_->owner, xmlNewDocPI(doc, tree::intern(doc, target), nullptr));
    tree::setContent(tree::required(node), content);
    return node;
}

Node Document::createDocumentFragment() const {
    return adopt(content_->owner, xmlNewDocFragment(content_->owner->doc));
}

}  // namespace vrn::xml
