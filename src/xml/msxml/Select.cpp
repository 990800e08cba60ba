// Nodes by XPath.
#include <algorithm>

#include "errors/Error.h"
#include "xml/msxml/Tree.h"

namespace vrn::xml {

using tree::NodePtr;

namespace {

// MSXML may recurse with each of these, on the stack of the host's thread. Longer expressions are nobody's.
constexpr std::size_t maximumExpression = 10000;
constexpr std::size_t maximumNesting = 500;

bool isBounded(std::string_view xpath) noexcept {
    const auto nesting = std::count_if(xpath.begin(), xpath.end(),
                                       [](char c) { return c == '(' || c == '[' || c == '/' || c == '|' || c == '-'; });
    return xpath.size() <= maximumExpression && static_cast<std::size_t>(nesting) <= maximumNesting &&
           xpath.find('\0') == std::string_view::npos;
}

bool isDeclaration(IXMLDOMNode* node) {
    return tree::typeOf(node) == NODE_ATTRIBUTE && tree::rawName(node).view().starts_with(L"xmlns") &&
           tree::namespaceOf(node) == xmlnsNamespace;
}

std::vector<Node> select(const Node& node, std::string_view xpath, std::size_t limit) {
    IXMLDOMNode* start = tree::required(node);
    if (!isBounded(xpath)) {
        errors::throwInvalidProcedureCall();
    }
    const tree::TreePtr& owner = node.owner()->tree;
    if (xpath.starts_with('/')) {
        start = owner->document.Get();  // also for a node that stands nowhere
    }
    tree::ComPtr<IXMLDOMNodeList> list;
    {
        const auto lock = tree::lockParser();
        tree::requireAccepted(start->selectNodes(com::Bstr(xpath).get(), &list));
    }
    std::vector<Node> nodes;
    while (nodes.size() < limit) {
        NodePtr selected;
        tree::requireAccepted(list->nextNode(&selected));
        if (selected == nullptr) {
            break;
        }
        if (!isDeclaration(selected.Get())) {
            nodes.push_back(tree::handle(owner, std::move(selected)));
        }
    }
    return nodes;
}

}  // namespace

Node Node::selectSingleNode(std::string_view xpath) const {
    const std::vector<Node> selected = select(*this, xpath, 1);
    return selected.empty() ? Node() : selected.front();
}

std::vector<Node> Node::selectNodes(std::string_view xpath) const {
    return select(*this, xpath, std::string_view::npos);
}

}  // namespace vrn::xml
