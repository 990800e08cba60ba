#include <algorithm>
#include <unordered_map>
#include <utility>

#include "text/Alignment.h"
#include "xml/ComparedTree.h"
#include "xml/Serialiser.h"

namespace vrn::xml {

namespace {

void appendXml(std::string& out, const ComparedTree& tree) {
    switch (tree.kind) {
        case NodeKind::Text:
            appendEscapedText(out, tree.content);
            return;
        case NodeKind::Comment:
            out += "<!--" + tree.content + "-->";
            return;
        case NodeKind::ProcessingInstruction:
            out += "<?" + tree.name + " " + tree.content + "?>";
            return;
        default:
            break;
    }
    out += "<" + tree.name;
    for (const auto& attribute : tree.attributes) {
        out += " " + attribute.name + "=\"";
        appendEscapedText(out, attribute.value);
        out += "\"";
    }
    out += tree.children.empty() ? "/>" : ">";
    for (const auto& child : tree.children) {
        appendXml(out, child);
    }
    if (!tree.children.empty()) {
        out += "</" + tree.name + ">";
    }
}

bool isLeaf(const ComparedTree& tree) {
    return tree.children.empty() || (tree.children.size() == 1 && tree.children.front().kind == NodeKind::Text);
}

// The value of a node of which the other document has nothing.
std::string valueOf(const ComparedTree& tree) {
    if (tree.kind != NodeKind::Element) {
        return tree.content;
    }
    if (isLeaf(tree) && tree.attributes.empty()) {
        return std::string(tree.leafText());
    }
    std::string xml;
    appendXml(xml, tree);
    return xml;
}

std::string stepOf(const ComparedTree& tree) {
    switch (tree.kind) {
        case NodeKind::Text:
            return "text()";
        case NodeKind::Comment:
            return "comment()";
        case NodeKind::ProcessingInstruction:
            return "processing-instruction(" + tree.name + ")";
        default:
            return tree.name + (tree.isOnly ? "" : "[" + std::to_string(tree.position) + "]");
    }
}

class Comparison {
  public:
    std::vector<TreeDifference> compare(const ComparedTree& before, const ComparedTree& after) {
        number(before);
        number(after);
        compareChildren(before, after, "");
        return std::move(differences_);
    }

  private:
    // Equal trees get equal numbers.
    std::size_t number(const ComparedTree& tree) {
        auto key = std::to_string(static_cast<int>(tree.kind));
        const auto add = [&key](std::string_view part) {
            key += std::to_string(part.size()) + ":";
            key += part;
        };
        add(tree.name);
        add(tree.namespaceUri);
        add(tree.content);
        for (const auto& attribute : tree.attributes) {
            key += "@";
            add(attribute.name);
            add(attribute.namespaceUri);
            add(attribute.value);
        }
        for (const auto& child : tree.children) {
            key += "," + std::to_string(number(child));
        }
        return numbers_[&tree] = values_.of(key);
    }

    void add(std::string path, std::optional<std::string> before, std::optional<std::string> after) {
        differences_.push_back({std::move(path), std::move(before), std::move(after)});
    }

    std::vector<text::Alignable> alignables(const ComparedTree& tree) {
        std::vector<text::Alignable> items;
        items.reserve(tree.children.size());
        for (const auto& child : tree.children) {
            const auto kind = std::to_string(static_cast<int>(child.kind)) + child.name + " " + child.namespaceUri;
            items.push_back({numbers_.at(&child), kinds_.of(kind)});
        }
        return items;
    }

    void compareChildren(const ComparedTree& before, const ComparedTree& after, const std::string& parent) {
        auto pairs = text::alignment(alignables(before), alignables(after));
        pairs.emplace_back(before.children.size(), after.children.size());
        std::vector<const ComparedTree*> gone;
        std::vector<const ComparedTree*> added;
        std::size_t i = 0;
        std::size_t j = 0;
        for (const auto& [nextBefore, nextAfter] : pairs) {
            for (; i < nextBefore; ++i) {
                gone.push_back(&before.children[i]);
            }
            for (; j < nextAfter; ++j) {
                added.push_back(&after.children[j]);
            }
            if (i < before.children.size()) {
                compareNodes(before.children[i++], after.children[j++], parent);
            }
        }
        addUnpaired(gone, added, parent);
    }

    // Nodes that are in one document alone, or stand elsewhere in the other.
    void addUnpaired(const std::vector<const ComparedTree*>& gone, const std::vector<const ComparedTree*>& added,
                     const std::string& parent) {
        std::unordered_multimap<std::size_t, const ComparedTree*> moved;
        for (const auto* const tree : added) {
            moved.emplace(numbers_.at(tree), tree);
        }
        std::unordered_map<const ComparedTree*, const ComparedTree*> origins;
        for (const auto* const tree : gone) {
            if (const auto found = moved.find(numbers_.at(tree)); found != moved.end()) {
                origins.emplace(found->second, tree);
                moved.erase(found);
            } else {
                add(parent + stepOf(*tree), valueOf(*tree), std::nullopt);
            }
        }
        const auto place = [](const ComparedTree& tree) { return "child " + std::to_string(tree.place); };
        for (const auto* const tree : added) {
            if (const auto origin = origins.find(tree); origin != origins.end()) {
                add(parent + stepOf(*tree) + " (place)", place(*origin->second), place(*tree));
            } else {
                add(parent + stepOf(*tree), std::nullopt, valueOf(*tree));
            }
        }
    }

    // Two nodes of one kind and name.
    void compareNodes(const ComparedTree& before, const ComparedTree& after, const std::string& parent) {
        if (numbers_.at(&before) == numbers_.at(&after)) {
            return;
        }
        // Paths begin below the root element, whose name is no news.
        const bool isRoot = before.kind == NodeKind::Element && parent.empty() && !inRoot_;
        const auto path = isRoot ? std::string() : parent + stepOf(after);
        if (before.kind != NodeKind::Element) {
            add(path, before.content, after.content);
            return;
        }
        const bool wasInRoot = std::exchange(inRoot_, true);
        const auto prefix = isRoot ? std::string() : path + "/";
        compareAttributes(before, after, prefix);
        if (!isRoot && isLeaf(before) && isLeaf(after)) {
            if (before.leafText() != after.leafText()) {
                add(path, std::string(before.leafText()), std::string(after.leafText()));
            }
        } else {
            compareChildren(before, after, prefix);
        }
        inRoot_ = wasInRoot;
    }

    void compareAttributes(const ComparedTree& before, const ComparedTree& after, const std::string& prefix) {
        const auto find = [](const ComparedTree& tree, const TreeAttribute& wanted) {
            const auto found = std::find_if(tree.attributes.begin(), tree.attributes.end(), [&](const auto& attribute) {
                return attribute.name == wanted.name && attribute.namespaceUri == wanted.namespaceUri;
            });
            return found == tree.attributes.end() ? nullptr : &*found;
        };
        for (const auto& attribute : before.attributes) {
            const auto* const now = find(after, attribute);
            if (now == nullptr) {
                add(prefix + "@" + attribute.name, attribute.value, std::nullopt);
            } else if (now->value != attribute.value) {
                add(prefix + "@" + attribute.name, attribute.value, now->value);
            }
        }
        for (const auto& attribute : after.attributes) {
            if (find(before, attribute) == nullptr) {
                add(prefix + "@" + attribute.name, std::nullopt, attribute.value);
            }
        }
    }

    text::Numbering values_;
    text::Numbering kinds_;
    std::unordered_map<const ComparedTree*, std::size_t> numbers_;
    bool inRoot_ = false;
    std::vector<TreeDifference> differences_;
};

}  // namespace

std::vector<TreeDifference> treeDifferences(const ComparedTree& before, const ComparedTree& after) {
    return Comparison().compare(before, after);
}

}  // namespace vrn::xml
