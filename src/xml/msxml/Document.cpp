// Documents as a whole, and the nodes they make.
#include "errors/Error.h"
#include "xml/Names.h"
#include "xml/msxml/Load.h"
#include "xml/msxml/Tree.h"

namespace vrn::xml {

using com::Bstr;
using com::ComPtr;
using tree::handle;
using tree::NodePtr;

Document::Document() : content_(std::make_shared<Content>()) { content_->tree = tree::newTree(); }

bool Document::loadXML(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    content_ = Document().content_;  // the old tree goes before the new one takes memory
    if (!parseText(text, *content_->tree, content_->error)) {
        content_->tree = tree::newTree();
    }
    return content_->error.errorCode == 0;
}

bool Document::load(const Document& other) {
    auto content = std::make_shared<Content>();
    content->error = other.content_->error;
    content->tree = tree::newTree();
    tree::copyAll(*other.content_->tree, *content->tree);
    content_ = std::move(content);
    return content_->error.errorCode == 0;
}

const ParseError& Document::parseError() const { return content_->error; }

Node Document::node() const { return handle(content_->tree, NodePtr(content_->tree->document.Get())); }

Node Document::documentElement() const {
    ComPtr<IXMLDOMElement> element;
    com::require(content_->tree->document->get_documentElement(&element));
    return handle(content_->tree, element);
}

Node Document::createElement(std::string_view name) const {
    requirePlainName(name);
    ComPtr<IXMLDOMElement> element;
    tree::requireAccepted(content_->tree->document->createElement(Bstr(name).get(), &element));
    return handle(content_->tree, element);
}

Node Document::createElement(std::string_view name, std::string_view namespaceUri) const {
    if (namespaceUri.empty()) {
        return createElement(name);
    }
    requirePlainName(name);
    requireNamespaceUri(namespaceUri);
    NodePtr element;
    const com::Variant type(std::int32_t{NODE_ELEMENT});
    tree::requireAccepted(
        content_->tree->document->createNode(type.get(), Bstr(name).get(), Bstr(namespaceUri).get(), &element));
    content_->tree->createdIn.emplace(namespaceUri);
    return handle(content_->tree, element);
}

Node Document::createTextNode(std::string_view text) const {
    requireText(text);
    return handle(content_->tree, tree::newText(*content_->tree, text));
}

Node Document::createProcessingInstruction(std::string_view target, std::string_view data) const {
    requireTarget(target);
    if (target == tree::declarationTarget) {
        errors::throwInvalidProcedureCall();
    }
    const std::string content = instructionContent(data);
    const Bstr raw(target == "xml" ? tree::declarationTarget : target);
    ComPtr<IXMLDOMProcessingInstruction> node;
    tree::requireAccepted(content_->tree->document->createProcessingInstruction(raw.get(), Bstr(content).get(), &node));
    return handle(content_->tree, node);
}

Node Document::createDocumentFragment() const {
    ComPtr<IXMLDOMDocumentFragment> node;
    com::require(content_->tree->document->createDocumentFragment(&node));
    return handle(content_->tree, node);
}

}  // namespace vrn::xml
