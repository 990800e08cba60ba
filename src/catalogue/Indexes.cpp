#include "catalogue/Indexes.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "errors/Error.h"
#include "text/Ansi.h"
#include "text/Lists.h"

namespace vrn::catalogue {

namespace {

constexpr auto never = std::numeric_limits<std::size_t>::max();

std::optional<std::string_view> textOf(const xml::Node& node) {
    return node ? std::optional(node.textView()) : std::nullopt;
}

// Type and name together as one key. No text of a document holds the separator.
std::string pairKey(std::string_view type, std::string_view name) {
    std::string key = text::toAnsi(type);
    key.push_back('\0');
    key += text::toAnsi(name);
    return key;
}

template <typename Map>
const std::vector<std::size_t>& positionsOf(const Map& map, const std::string& key) {
    static const std::vector<std::size_t> none;
    const auto found = map.find(key);
    return found == map.end() ? none : found->second;
}

void append(std::string& list, std::string_view item) {
    list += item;
    list.push_back(';');
}

// Lists longer than one character lose their closing separator: a list of one empty name stays ";".
std::string withoutClosingSeparator(std::string list) {
    if (list.size() > 1) {
        list.pop_back();
    }
    return list;
}

}  // namespace

void forEachContentChild(const xml::Node& parent, const MeetContent& meet) {
    xml::Node first;
    std::string bare;
    const auto closeBare = [&] {
        if (!bare.empty()) {
            meet(first, std::exchange(bare, {}), false);
        }
    };
    for (auto node = parent.firstChild(); node; node = node.nextSibling()) {
        switch (node.kind()) {
            case xml::NodeKind::Element:
                closeBare();
                if (const auto only = node.onlyText()) {
                    meet(node, *only, true);
                } else {
                    meet(node, node.text(), true);
                }
                break;
            case xml::NodeKind::Text:
            case xml::NodeKind::CData:
                first = bare.empty() ? node : first;
                bare += node.text();
                break;
            default:
                break;
        }
    }
    closeBare();
}

std::vector<ContentChild> contentChildren(const xml::Node& parent) {
    std::vector<ContentChild> children;
    forEachContentChild(parent, [&](const xml::Node& node, std::string_view text, bool isElement) {
        children.push_back({node, std::string(text), isElement});
    });
    return children;
}

std::vector<xml::Node> childrenNamed(const xml::Node& parent, std::string_view name) {
    std::vector<xml::Node> found;
    if (parent) {
        for (auto node = parent.child(name); node; node = node.nextOfSameName()) {
            found.push_back(node);
        }
    }
    return found;
}

bool isPlainName(std::string_view name) noexcept {
    return !name.empty() && name.size() <= longestPlainName && !text::contains(name, ";");
}

MacroIndex::MacroIndex(const xml::Document& macros) : firstNameless_(never) {
    const auto root = macros.node().child("Macros");
    macros_ = childrenNamed(root, "Macro");
    names_.reserve(macros_.size());
    byName_.reserve(macros_.size());
    for (std::size_t i = 0; i < macros_.size(); ++i) {
        const auto nameNode = macros_[i].child("MacroName");
        names_.push_back(textOf(nameNode));
        if (!names_.back()) {
            firstNameless_ = std::min(firstNameless_, i);
            namesArePlain_ = false;
            continue;
        }
        const bool isFirst = byName_.try_emplace(*names_.back(), i).second;
        namesArePlain_ = namesArePlain_ && isFirst && isPlainName(*names_.back());
        if (namesArePlain_) {
            nameShapes_.add(*names_.back());
        }
        if (auto value = nameNode.stringValue(); !isFirst || value != *names_.back()) {
            byStringValue_.try_emplace(std::move(value), i);
        }
    }
}

std::optional<std::size_t> MacroIndex::position(std::string_view name) const {
    const auto found = byName_.find(name);
    return found == byName_.end() ? std::nullopt : std::optional(found->second);
}

xml::Node MacroIndex::find(const std::string& name) const {
    const auto found = byName_.find(name);
    const auto position = found == byName_.end() ? never : found->second;
    if (firstNameless_ < position) {
        errors::throwObjectNotSet();
    }
    return position == never ? xml::Node() : macros_[position];
}

xml::Node MacroIndex::macroName(const std::string& name) const {
    if (const auto found = byName_.find(name); found != byName_.end()) {
        if (auto node = macros_[found->second].child("MacroName"); node.stringValue() == name) {
            return node;
        }
    }
    const auto found = byStringValue_.find(name);
    return found == byStringValue_.end() ? xml::Node() : macros_[found->second].child("MacroName");
}

ObjectListIndex::ObjectListIndex(const xml::Document& objectList) : firstTypeless_(never), firstIncomplete_(never) {
    const auto root = objectList.node().child("LATESTKEX");
    const auto container = root ? root.child("OBJECTS") : xml::Node();
    hasObjects_ = static_cast<bool>(container);
    for (auto& node : childrenNamed(container, "OBJECT")) {
        const auto i = objects_.size();
        objects_.push_back({node, textOf(node.child("ObjectType")), textOf(node.child("ObjectName"))});
        const auto& object = objects_.back();
        if (!object.type) {
            firstTypeless_ = std::min(firstTypeless_, i);
        } else {
            byType_[*object.type].push_back(i);
        }
        if (!object.type || !object.name) {
            firstIncomplete_ = std::min(firstIncomplete_, i);
        }
    }
}

SharedText ObjectListIndex::namesOfType(const std::string& type) const {
    static const auto noNames = std::make_shared<const std::string>();
    if (firstTypeless_ != never) {
        errors::throwObjectNotSet();
    }
    const auto found = byType_.find(type);
    if (found == byType_.end()) {
        return noNames;
    }
    if (const auto made = names_.find(type); made != names_.end()) {
        return made->second;
    }
    std::string list;
    bool first = true;
    for (const auto i : found->second) {
        if (!objects_[i].name) {
            errors::throwObjectNotSet();
        }
        if (!first) {
            list.push_back(';');
        }
        list += *objects_[i].name;
        first = false;
    }
    return names_.emplace(type, std::make_shared<const std::string>(std::move(list))).first->second;
}

std::string ObjectListIndex::propertyOf(const std::string& type, const std::string& name,
                                        std::string_view property) const {
    for (const auto i : objectsCalled(type, name)) {
        if (i > firstIncomplete_) {
            break;
        }
        for (auto node = objects_[i].node.child("Property"); node; node = node.nextOfSameName()) {
            if (text::equalInAnsi(node.child("PropertyName").text(), property)) {
                return node.child("PropertyValue").text();
            }
        }
    }
    if (firstIncomplete_ != never) {
        errors::throwObjectNotSet();
    }
    return {};
}

const ObjectListIndex::Positions& ObjectListIndex::objectsCalled(const std::string& type,
                                                                 const std::string& name) const {
    if (!byAnsiTypeAndName_) {
        std::unordered_map<std::string, Positions> positions;
        for (std::size_t i = 0; i < objects_.size(); ++i) {
            if (objects_[i].type && objects_[i].name) {
                positions[pairKey(*objects_[i].type, *objects_[i].name)].push_back(i);
            }
        }
        byAnsiTypeAndName_ = std::move(positions);
    }
    return positionsOf(*byAnsiTypeAndName_, pairKey(type, name));
}

const ObjectListIndex::Positions& ObjectListIndex::objectsOfAnsiType(const std::string& type) const {
    if (firstIncomplete_ != never) {
        errors::throwObjectNotSet();
    }
    if (!byAnsiType_) {
        std::unordered_map<std::string, Positions> positions;
        for (std::size_t i = 0; i < objects_.size(); ++i) {
            positions[text::toAnsi(*objects_[i].type)].push_back(i);
        }
        byAnsiType_ = std::move(positions);
    }
    return positionsOf(*byAnsiType_, text::toAnsi(type));
}

std::string ObjectListIndex::namesWithProperty(const std::string& type, const std::string& property) const {
    std::string list;
    for (const auto i : objectsOfAnsiType(type)) {
        bool wanted = property.empty();
        for (auto node = wanted ? xml::Node() : objects_[i].node.child("Property"); node && !wanted;
             node = node.nextOfSameName()) {
            wanted = text::equalInAnsi(node.child("PropertyName").text(), property);
        }
        if (wanted) {
            append(list, *objects_[i].name);
        }
    }
    return withoutClosingSeparator(std::move(list));
}

ArgumentsIndex::ArgumentsIndex(std::vector<xml::Node> objects) : objects_(std::move(objects)) {
    for (const auto& object : objects_) {
        if (const auto key = object.child("OBJECTNAME")) {
            byKey_[key.text()].push_back(object);
        } else {
            keyMissing_ = true;
        }
    }
}

const std::vector<xml::Node>& ArgumentsIndex::ofKey(const std::string& key) const {
    static const std::vector<xml::Node> none;
    if (keyMissing_) {
        errors::throwObjectNotSet();
    }
    const auto found = byKey_.find(key);
    return found == byKey_.end() ? none : found->second;
}

std::optional<std::string> ArgumentsIndex::keyOfName(const std::string& name) const {
    if (!keyByName_) {
        auto& map = keyByName_.emplace();
        for (const auto& object : objects_) {
            const auto key = object.child("OBJECTNAME");
            for (auto udon = key ? object.child("UDON") : xml::Node(); udon; udon = udon.nextOfSameName()) {
                map.try_emplace(udon.stringValue(), key.text());
            }
        }
    }
    const auto found = keyByName_->find(name);
    return found == keyByName_->end() ? std::nullopt : std::optional(found->second);
}

const std::vector<std::string>& ArgumentsIndex::namesOfKey(const std::string& key) const {
    const auto& elements = ofKey(key);
    auto [entry, isNew] = names_.try_emplace(key);
    if (isNew) {
        for (const auto& element : elements) {
            for (auto& child : contentChildren(element)) {
                if (!child.text.empty() && child.text != key) {
                    entry->second.push_back(std::move(child.text));
                }
            }
        }
    }
    return entry->second;
}

bool ArgumentsIndex::lastTextContains(const std::string& key, const std::string& part) const {
    constexpr std::size_t mostAnswers = 1024;
    const auto& elements = ofKey(key);
    auto last = lastTexts_.find(key);
    if (last == lastTexts_.end()) {
        auto whole = elements.empty() ? std::string() : text::replacedAll(elements.back().text(), key, "");
        last = lastTexts_.emplace(key, LastText{std::move(whole), {}}).first;
    }
    auto& [whole, answers] = last->second;
    if (const auto known = answers.find(part); known != answers.end()) {
        return known->second;
    }
    if (answers.size() == mostAnswers) {
        answers.clear();
    }
    return answers.emplace(part, text::contains(whole, part)).first->second;
}

}  // namespace vrn::catalogue
