// The walk of a visitor through a tree.
#include <algorithm>
#include <optional>

#include "xml/msxml/Tree.h"

namespace vrn::xml {

using com::ComPtr;
using tree::NodePtr;

namespace {

struct QualifiedName {
    explicit QualifiedName(std::string_view qualified) {
        const std::size_t colon = qualified.find(':');
        const bool prefixed = colon != std::string_view::npos;
        prefix = prefixed ? qualified.substr(0, colon) : std::string_view{};
        local = prefixed ? qualified.substr(colon + 1) : qualified;
    }
    std::string_view prefix;
    std::string_view local;
};

struct Attribute {
    std::string name;
    std::string uri;
    std::string value;
};

class Visit {
  public:
    Visit(NodeVisitor& visitor, const tree::Tree& owner) : visitor_(visitor), owner_(owner) {}

    bool enter(IXMLDOMNode* node);
    void leave(IXMLDOMNode* node);

  private:
    // An element that was entered.
    struct Level {
        std::string name;
        std::string uri;
        bool hasChildNodes = false;
        std::string defaultUri;  ///< of what it contains, as far as declarations below the visit's top tell
    };

    bool enterElement(IXMLDOMNode* element);
    static ElementView viewOf(const Level& level);
    void readAttributes(IXMLDOMNode* element, Level& level);
    void readByIndex(IXMLDOMNode* element, IXMLDOMNamedNodeMap& map, LONG first, LONG count);
    void addAttribute(IXMLDOMNode* attribute);
    void settleDefault(Level& level);
    void showAttributes();

    NodeVisitor& visitor_;
    const tree::Tree& owner_;
    std::vector<Level> levels_;
    // Of the element that is being entered.
    std::vector<Attribute> declarations_;
    std::vector<Attribute> attributes_;
    std::vector<AttributeView> views_;
};

bool Visit::enter(IXMLDOMNode* node) {
    switch (tree::typeOf(node)) {
        case NODE_ELEMENT:
            return enterElement(node);
        case NODE_TEXT:
            visitor_.text(tree::valueOf(node));
            return false;
        case NODE_CDATA_SECTION:
            visitor_.cdata(tree::valueOf(node));
            return false;
        case NODE_COMMENT:
            visitor_.comment(tree::valueOf(node));
            return false;
        case NODE_PROCESSING_INSTRUCTION:
            visitor_.processingInstruction(tree::nameOf(node), tree::valueOf(node));
            return false;
        case NODE_DOCUMENT:
        case NODE_DOCUMENT_FRAGMENT:
            return true;
        default:
            return false;
    }
}

void Visit::leave(IXMLDOMNode* node) {
    if (tree::typeOf(node) == NODE_ELEMENT) {
        visitor_.endElement(viewOf(levels_.back()));
        levels_.pop_back();
    }
}

bool Visit::enterElement(IXMLDOMNode* element) {
    Level level;
    level.name = tree::nameOf(element);
    level.uri = tree::namespaceOf(element);
    level.hasChildNodes = tree::firstChild(element) != nullptr;
    level.defaultUri = levels_.empty() ? std::string() : levels_.back().defaultUri;
    readAttributes(element, level);
    showAttributes();
    ElementView view = viewOf(level);
    view.attributes = views_;
    const bool entered = visitor_.startElement(view);
    if (entered) {
        levels_.push_back(std::move(level));
    }
    return entered;
}

ElementView Visit::viewOf(const Level& level) {
    const QualifiedName name(level.name);
    ElementView view;
    view.qualifiedName = level.name;
    view.prefix = name.prefix;
    view.localName = name.local;
    view.namespaceUri = level.uri;
    view.hasChildNodes = level.hasChildNodes;
    return view;
}

// One MSXML counts an element's declarations among its attributes but leads through the attributes only. The declarations are
// found by their index then, but for the default one, which is the element's own namespace where that has no prefix.
void Visit::readAttributes(IXMLDOMNode* element, Level& level) {
    declarations_.clear();
    attributes_.clear();
    ComPtr<IXMLDOMNamedNodeMap> map;
    com::require(element->get_attributes(&map));
    LONG count = 0;
    com::require(map->get_length(&count));
    LONG seen = 0;
    NodePtr attribute;
    for (; seen < count && SUCCEEDED(map->nextNode(&attribute)) && attribute != nullptr; ++seen) {
        addAttribute(attribute.Get());
    }
    if (seen < count) {
        readByIndex(element, *map.Get(), seen, count);
    }
    settleDefault(level);
}

// Where there is no attribute before them, that MSXML shows the first declaration in place of each: it is given one for the time.
void Visit::readByIndex(IXMLDOMNode* element, IXMLDOMNamedNodeMap& map, LONG first, LONG count) {
    std::optional<tree::TemporaryAttribute> before;
    if (first == 0 && count > 1) {
        before.emplace(element);
        ++first;
        ++count;
    }
    NodePtr attribute;
    for (LONG i = first; i < count; ++i) {
        if (SUCCEEDED(map.get_item(i, &attribute)) && attribute != nullptr) {
            addAttribute(attribute.Get());
        } else if (tree::nameOf(element).find(':') == std::string::npos) {
            declarations_.push_back({"xmlns", std::string(xmlnsNamespace), tree::namespaceOf(element)});
        }
    }
}

void Visit::addAttribute(IXMLDOMNode* attribute) {
    Attribute added{tree::nameOf(attribute), {}, tree::valueOf(attribute)};
    const QualifiedName name(added.name);
    if (added.name == "xmlns" || name.prefix == "xmlns") {
        added.uri = xmlnsNamespace;
        if (name.local != "xml") {  // known to every reader; a copy may have gained it
            declarations_.push_back(std::move(added));
        }
        return;
    }
    if (!name.prefix.empty()) {
        added.uri = tree::namespaceOf(attribute);
    }
    attributes_.push_back(std::move(added));
}

// An element that was created in the default namespace of its parent declares nothing.
void Visit::settleDefault(Level& level) {
    const auto declared = std::find_if(declarations_.begin(), declarations_.end(),
                                       [](const Attribute& declaration) { return declaration.name == "xmlns"; });
    if (declared == declarations_.end()) {
        return;
    }
    const bool repeated = !declared->value.empty() && declared->value == level.defaultUri;
    level.defaultUri = declared->value;
    if (repeated && owner_.createdIn.contains(level.defaultUri)) {
        declarations_.erase(declared);
    }
}

void Visit::showAttributes() {
    views_.clear();
    for (const auto* const list : {&declarations_, &attributes_}) {
        for (const Attribute& attribute : *list) {
            const QualifiedName name(attribute.name);
            views_.push_back({attribute.name, name.prefix, name.local, attribute.uri, attribute.value});
        }
    }
}

}  // namespace

void Node::accept(NodeVisitor& visitor) const {
    IXMLDOMNode* const top = tree::required(*this);
    Visit visit(visitor, *owner_->tree);
    tree::walk(
        top, [&visit](IXMLDOMNode* node) { return visit.enter(node); },
        [&visit](IXMLDOMNode* node) { visit.leave(node); });
}

}  // namespace vrn::xml
