#include "xml/ComparedTree.h"

#include <algorithm>
#include <map>
#include <utility>

namespace vrn::xml {

namespace {

constexpr std::string_view whiteSpace = " \t\r\n";

class TreeBuilder final : public NodeVisitor {
  public:
    explicit TreeBuilder(ComparedTree& root) : open_{&root} {}

    bool startElement(const ElementView& element) override {
        auto& tree = add(NodeKind::Element, element.qualifiedName);
        tree.namespaceUri = element.namespaceUri;
        for (const auto& attribute : element.attributes) {
            tree.attributes.push_back({std::string(attribute.qualifiedName), std::string(attribute.namespaceUri),
                                       std::string(attribute.value)});
        }
        std::sort(tree.attributes.begin(), tree.attributes.end(),
                  [](const TreeAttribute& a, const TreeAttribute& b) { return a.name < b.name; });
        open_.push_back(&tree);
        return true;
    }
    void endElement(const ElementView& /*element*/) override {
        number(*open_.back());
        open_.pop_back();
    }
    void text(std::string_view content) override {
        auto& children = open_.back()->children;
        if (children.empty() || children.back().kind != NodeKind::Text) {
            add(NodeKind::Text, {});
        }
        children.back().content += content;
    }
    void cdata(std::string_view content) override { text(content); }
    void comment(std::string_view content) override { add(NodeKind::Comment, {}).content = content; }
    void processingInstruction(std::string_view target, std::string_view data) override {
        if (target != "xml") {
            add(NodeKind::ProcessingInstruction, target).content = data;
        }
    }

    // Gives the children their places.
    static void number(ComparedTree& tree) {
        std::map<std::pair<NodeKind, std::string>, std::size_t> counts;
        std::size_t place = 0;
        for (auto& child : tree.children) {
            child.place = ++place;
            child.position = ++counts[{child.kind, child.name}];
        }
        for (auto& child : tree.children) {
            child.isOnly = counts[{child.kind, child.name}] == 1;
        }
    }

  private:
    ComparedTree& add(NodeKind kind, std::string_view name) {
        auto& tree = open_.back()->children.emplace_back();
        tree.kind = kind;
        tree.name = name;
        return tree;
    }

    std::vector<ComparedTree*> open_;  // only the last one's children grow, so the others stay where they are
};

}  // namespace

ComparedTree* ComparedTree::child(std::string_view wanted) {
    const auto found = std::find_if(children.begin(), children.end(), [wanted](const ComparedTree& tree) {
        return tree.kind == NodeKind::Element && tree.namespaceUri.empty() && tree.name == wanted;
    });
    return found == children.end() ? nullptr : &*found;
}

bool ComparedTree::isPlainLeaf() const {
    if (kind != NodeKind::Element || !namespaceUri.empty() || !attributes.empty() || children.size() > 1) {
        return false;
    }
    if (children.empty()) {
        return true;
    }
    const auto& text = children.front();
    const auto isWhite = [](char c) { return whiteSpace.find(c) != std::string_view::npos; };
    return text.kind == NodeKind::Text && !text.content.empty() && !isWhite(text.content.front()) &&
           !isWhite(text.content.back());
}

std::string_view ComparedTree::leafText() const {
    return children.empty() ? std::string_view() : std::string_view(children.front().content);
}

ComparedTree treeOf(const Document& document) {
    ComparedTree tree;
    TreeBuilder builder(tree);
    document.node().accept(builder);
    TreeBuilder::number(tree);
    return tree;
}

}  // namespace vrn::xml
