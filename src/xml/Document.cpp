// Documents as a whole, and the nodes they make.
#include "xml/Names.h"
#include "xml/Parse.h"
#include "xml/Tree.h"

namespace vrn::xml {

Document::Document() : tree_(new Tree()) {}

bool Document::loadXML(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    tree_ = Document().tree_;  // the old tree goes before the new one takes memory
    TreePointer loaded(new Tree());
    if (parse(text, *loaded.get())) {
        tree_ = std::move(loaded);
    } else {
        tree_->error = std::move(loaded->error);
    }
    return tree_->error.errorCode == 0;
}

bool Document::load(const Document& other) {
    TreePointer copy(new Tree());
    copy->error = other.tree_->error;
    copy->copyFrom(*other.tree_.get());
    tree_ = std::move(copy);
    return tree_->error.errorCode == 0;
}

const ParseError& Document::parseError() const { return tree_->error; }

std::string_view Document::source() const noexcept { return tree_->source; }

bool Document::equals(const Document& other) const noexcept { return tree_->equals(*other.tree_.get()); }

Node Document::node() const { return {tree_, &tree_->document}; }

Node Document::documentElement() const {
    NodeData* child = tree_->document.first;
    while (child != nullptr && child->kind != NodeKind::Element) {
        child = child->next;
    }
    return child == nullptr ? Node() : Node(tree_, child);
}

Node Document::createElement(std::string_view name) const {
    requirePlainName(name);
    return {tree_, tree_->newBranch(NodeKind::Element, tree_->plainName(name))};
}

Node Document::createElement(std::string_view name, std::string_view namespaceUri) const {
    if (namespaceUri.empty()) {
        return createElement(name);
    }
    requirePlainName(name);
    requireNamespaceUri(namespaceUri);
    const Name* const full = tree_->name({}, name, namespaceUri);
    Branch* const element = tree_->newBranch(NodeKind::Element, full);
    tree_->addAttribute(*element, nullptr, tree_->name({}, "xmlns", xmlnsNamespace), full->uri);
    return {tree_, element};
}

Node Document::createTextNode(std::string_view text) const {
    requireText(text);
    return {tree_, tree_->newLeaf(NodeKind::Text, tree_->keep(text))};
}

Node Document::createProcessingInstruction(std::string_view target, std::string_view data) const {
    requireTarget(target);
    return {tree_, tree_->newLeaf(NodeKind::ProcessingInstruction, tree_->keep(instructionContent(data)),
                                  tree_->plainName(target))};
}

Node Document::createDocumentFragment() const { return {tree_, tree_->newBranch(NodeKind::Fragment, nullptr)}; }

}  // namespace vrn::xml
