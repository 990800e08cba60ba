// Nodes by XPath. Plain child paths ("a/b/c"), which is nearly all the editor asks for, are walked without XPath's machinery.
#include <libxml/xpath.h>

#include <algorithm>
#include <new>

#include "errors/Error.h"
#include "xml/libxml2/Tree.h"

namespace vrn::xml {

using tree::required;

namespace {

// Longer expressions are nobody's; the library's own limits on nesting are made for a large stack.
constexpr std::size_t maximumExpression = 100000;

constexpr bool isAsciiNameStart(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

constexpr bool isAsciiNamePart(char c) noexcept {
    return isAsciiNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

bool isAsciiName(std::string_view name) noexcept {
    return !name.empty() && isAsciiNameStart(name.front()) && std::all_of(name.begin(), name.end(), isAsciiNamePart);
}

// A path of names, from the context node or from the document.
struct ChildPath {
    bool fromDocument = false;
    std::vector<std::string_view> names;
};

// False when the expression is anything more than such a path.
bool readChildPath(std::string_view xpath, ChildPath& path) {
    path.fromDocument = xpath.starts_with('/');
    if (path.fromDocument) {
        xpath.remove_prefix(1);
    }
    for (;;) {
        const std::size_t slash = xpath.find('/');
        const std::string_view name = xpath.substr(0, slash);
        if (!isAsciiName(name)) {
            return false;
        }
        path.names.push_back(name);
        if (slash == std::string_view::npos) {
            return true;
        }
        xpath.remove_prefix(slash + 1);
    }
}

xmlNode* matching(xmlNode* node, std::string_view name) noexcept {
    while (node != nullptr && (node->type != XML_ELEMENT_NODE || !tree::hasPlainName(node, name))) {
        node = node->next;
    }
    return node;
}

// Calls `found` for the nodes at the end of the path in document order, until it answers false.
template <typename Found>
void walkPath(xmlNode* start, const ChildPath& path, Found found) {
    if (start->type == XML_ATTRIBUTE_NODE) {
        return;
    }
    std::size_t level = 0;
    xmlNode* parent = start;
    xmlNode* node = matching(start->children, path.names[0]);
    while (node != nullptr || level > 0) {
        if (node == nullptr) {
            --level;
            node = matching(parent->next, path.names[level]);
            parent = parent->parent;
        } else if (level + 1 < path.names.size()) {
            ++level;
            parent = node;
            node = matching(node->children, path.names[level]);
        } else if (found(node)) {
            node = matching(node->next, path.names[level]);
        } else {
            return;
        }
    }
}

// Takes the tree that stands nowhere out of limbo while XPath looks at it, which could else see what shares limbo with it.
class OutOfLimbo {
  public:
    OutOfLimbo(const Node::Owner& owner, xmlNode* node) noexcept : limbo_(owner.limbo), top_(node) {
        while (limbo_ != nullptr && top_->parent != nullptr && top_->parent != limbo_) {
            top_ = top_->parent;
        }
        if (limbo_ == nullptr || top_->parent != limbo_) {
            top_ = nullptr;
            return;
        }
        next_ = top_->next;
        previous_ = top_->prev;
        top_->parent = top_->next = top_->prev = nullptr;
    }
    ~OutOfLimbo() {
        if (top_ != nullptr) {
            top_->parent = limbo_;
            top_->next = next_;
            top_->prev = previous_;
        }
    }
    OutOfLimbo(const OutOfLimbo&) = delete;
    OutOfLimbo& operator=(const OutOfLimbo&) = delete;

  private:
    xmlNode* limbo_;
    xmlNode* top_;
    xmlNode* next_ = nullptr;
    xmlNode* previous_ = nullptr;
};

struct FreeContext {
    void operator()(xmlXPathContext* context) const noexcept { xmlXPathFreeContext(context); }
};
struct FreeExpression {
    void operator()(xmlXPathCompExpr* expression) const noexcept { xmlXPathFreeCompExpr(expression); }
};
struct FreeObject {
    void operator()(xmlXPathObject* object) const noexcept { xmlXPathFreeObject(object); }
};
using XPathResult = std::unique_ptr<xmlXPathObject, FreeObject>;

void ignoreError(void* /*context*/, xmlError* /*error*/) {}

// The node set of an expression, in document order; error 5 for anything else.
XPathResult evaluate(xmlNode* node, std::string_view xpath) {
    if (xpath.size() > maximumExpression || xpath.find('\0') != std::string_view::npos) {
        errors::throwInvalidProcedureCall();
    }
    const tree::QuietErrors quiet;
    const std::unique_ptr<xmlXPathContext, FreeContext> context(xmlXPathNewContext(node->doc));
    if (context == nullptr) {
        throw std::bad_alloc();
    }
    context->node = node;
    context->error = ignoreError;
    const std::string expression(xpath);
    const std::unique_ptr<xmlXPathCompExpr, FreeExpression> compiled(
        xmlXPathCtxtCompile(context.get(), tree::chars(expression.c_str())));
    XPathResult result(compiled == nullptr ? nullptr : xmlXPathCompiledEval(compiled.get(), context.get()));
    if (result == nullptr || result->type != XPATH_NODESET) {
        errors::throwInvalidProcedureCall();
    }
    return result;
}

std::vector<Node> selectByXPath(const Node& node, std::string_view xpath, std::size_t limit) {
    xmlNode* const start = required(node);
    const OutOfLimbo outOfLimbo(*node.owner(), start);
    const XPathResult result = evaluate(start, xpath);
    std::vector<Node> nodes;
    const xmlNodeSet* const set = result->nodesetval;
    const int count = set == nullptr ? 0 : set->nodeNr;
    for (int i = 0; i < count && nodes.size() < limit; ++i) {
        if (set->nodeTab[i]->type != XML_NAMESPACE_DECL) {  // those belong to the result, not to the tree
            nodes.emplace_back(node.owner(), set->nodeTab[i]);
        }
    }
    return nodes;
}

xmlNode* startOf(const ChildPath& path, xmlNode* node) noexcept {
    return path.fromDocument ? tree::asNode(node->doc) : node;
}

}  // namespace

Node Node::selectSingleNode(std::string_view xpath) const {
    xmlNode* const start = required(*this);
    if (ChildPath path; readChildPath(xpath, path)) {
        xmlNode* first = nullptr;
        walkPath(startOf(path, start), path, [&first](xmlNode* node) {
            first = node;
            return false;
        });
        return first == nullptr ? Node() : Node(owner_, first);
    }
    const std::vector<Node> selected = selectByXPath(*this, xpath, 1);
    return selected.empty() ? Node() : selected.front();
}

std::vector<Node> Node::selectNodes(std::string_view xpath) const {
    xmlNode* const start = required(*this);
    ChildPath path;
    if (!readChildPath(xpath, path)) {
        return selectByXPath(*this, xpath, std::string_view::npos);
    }
    std::vector<Node> nodes;
    walkPath(startOf(path, start), path, [this, &nodes](xmlNode* node) {
        nodes.emplace_back(owner_, node);
        return true;
    });
    return nodes;
}

}  // namespace vrn::xml
