// Look-ups over the host's documents, made once per document. Each gives the answer that a walk through the document from its
// start would give, failures at malformed entries included.
#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "catalogue/SharedLists.h"
#include "xml/Dom.h"

namespace vrn::catalogue {

/// A name that list texts hold as it stands, and short enough to be looked for piece by piece: the pieces of a text grow with the
/// square of its length.
inline constexpr std::size_t longestPlainName = 128;
[[nodiscard]] bool isPlainName(std::string_view name) noexcept;

/// Lengths and first characters of plain names: most pieces of a text are none of them by these alone.
class NameShapes {
  public:
    void add(std::string_view plainName) {
        firstOfLength_.at(plainName.size()).set(static_cast<unsigned char>(plainName.front()));
    }
    /// Whether there is a name of this length at all.
    [[nodiscard]] bool have(std::size_t length) const { return firstOfLength_.at(length).any(); }
    /// `piece` is not empty and no longer than a plain name.
    [[nodiscard]] bool mayHave(std::string_view piece) const {
        return firstOfLength_[piece.size()][static_cast<unsigned char>(piece.front())];
    }

  private:
    std::array<std::bitset<256>, longestPlainName + 1> firstOfLength_;
};

/// The macros of the catalogue by name.
class MacroIndex {
  public:
    explicit MacroIndex(const xml::Document& macros);

    /// The first macro with exactly this name, or none. Error 91 when a walk would meet a macro without name before it.
    [[nodiscard]] xml::Node find(const std::string& name) const;
    /// The first `MacroName` element whose XPath string value is this name, or none.
    [[nodiscard]] xml::Node macroName(const std::string& name) const;
    /// All macros in document order.
    [[nodiscard]] const std::vector<xml::Node>& macros() const noexcept { return macros_; }
    /// Name of each macro; nothing for one without.
    [[nodiscard]] const std::vector<std::optional<std::string_view>>& names() const noexcept { return names_; }
    /// Position of the first macro with exactly this name.
    [[nodiscard]] std::optional<std::size_t> position(std::string_view name) const;
    /// Whether every macro has a plain name, no two the same.
    [[nodiscard]] bool namesArePlain() const noexcept { return namesArePlain_; }
    /// Of the plain names.
    [[nodiscard]] const NameShapes& nameShapes() const noexcept { return nameShapes_; }

  private:
    std::vector<xml::Node> macros_;
    // The views are on the document, which the nodes hold.
    std::vector<std::optional<std::string_view>> names_;
    std::unordered_map<std::string_view, std::size_t> byName_;
    std::unordered_map<std::string, std::size_t> byStringValue_;  ///< names that trimming changes or that come again
    std::size_t firstNameless_;
    NameShapes nameShapes_;
    bool namesArePlain_ = true;
};

/// The objects of the object list by type and name.
class ObjectListIndex {
  public:
    explicit ObjectListIndex(const xml::Document& objectList);

    /// Whether the document has a list of objects at all.
    [[nodiscard]] bool hasObjects() const noexcept { return hasObjects_; }
    /// The names of a type's objects as a list text, in document order; shared by all who ask.
    [[nodiscard]] SharedText namesOfType(const std::string& type) const;
    /// See `ObjectPropertyValue`.
    [[nodiscard]] std::string propertyOf(const std::string& type, const std::string& name,
                                         std::string_view property) const;
    [[nodiscard]] std::string namesWithProperty(const std::string& type, const std::string& property) const;

  private:
    // The views are on the document, which the nodes hold.
    struct Object {
        xml::Node node;
        std::optional<std::string_view> type;
        std::optional<std::string_view> name;
    };
    using Positions = std::vector<std::size_t>;
    [[nodiscard]] const Positions& objectsOfAnsiType(const std::string& type) const;
    [[nodiscard]] const Positions& objectsCalled(const std::string& type, const std::string& name) const;

    std::vector<Object> objects_;
    std::unordered_map<std::string_view, Positions> byType_;
    // Made on first use: a load asks for the syringes alone.
    mutable std::optional<std::unordered_map<std::string, Positions>> byAnsiType_;
    mutable std::optional<std::unordered_map<std::string, Positions>> byAnsiTypeAndName_;
    std::size_t firstTypeless_;    ///< position of the first object without type
    std::size_t firstIncomplete_;  ///< position of the first object without type or name
    bool hasObjects_ = false;
    mutable std::unordered_map<std::string, SharedText> names_;  ///< made on first use
};

/// The categories of user-defined names: of the configuration, or of a method's own copy.
class ArgumentsIndex {
  public:
    /// `objects` are the `OBJECT` elements in document order.
    explicit ArgumentsIndex(std::vector<xml::Node> objects);

    /// The elements of a category, in document order. Error 91 when any element has no key.
    [[nodiscard]] const std::vector<xml::Node>& ofKey(const std::string& key) const;
    /// The key of the first element that holds this user-defined name; nothing when there is none.
    [[nodiscard]] std::optional<std::string> keyOfName(const std::string& name) const;

    /// The texts of a category's children that are neither empty nor the key.
    [[nodiscard]] const std::vector<std::string>& namesOfKey(const std::string& key) const;
    /// Whether the text of the last element of the category, with the key taken out, contains this one.
    [[nodiscard]] bool lastTextContains(const std::string& key, const std::string& part) const;

  private:
    struct LastText {
        std::string whole;
        std::unordered_map<std::string, bool> answers;  ///< the same few values are asked for whenever they are shown
    };
    std::vector<xml::Node> objects_;
    std::unordered_map<std::string, std::vector<xml::Node>> byKey_;
    bool keyMissing_ = false;
    // Made on first use: few of a large configuration's categories are asked for.
    mutable std::unordered_map<std::string, std::vector<std::string>> names_;
    mutable std::unordered_map<std::string, LastText> lastTexts_;
    mutable std::optional<std::unordered_map<std::string, std::string>> keyByName_;
};

/// What a node holds that is read as one item: a child element, or a run of bare text.
struct ContentChild {
    xml::Node node;    ///< the element, or the first text of the run
    std::string text;  ///< of an element as reading gives it, bare text as it stands
    bool isElement = false;
};

/// The items among a node's children. Comments and processing instructions are none, and part no text; nor do the borders of
/// CDATA sections, and a text without characters is none: documents that a signature cannot tell apart read the same.
[[nodiscard]] std::vector<ContentChild> contentChildren(const xml::Node& parent);
/// The same for each item in turn, without a copy of its text: the view lives until `meet` returns.
using MeetContent = std::function<void(const xml::Node& node, std::string_view text, bool isElement)>;
void forEachContentChild(const xml::Node& parent, const MeetContent& meet);

/// The child elements of this name, none when there is no parent.
[[nodiscard]] std::vector<xml::Node> childrenNamed(const xml::Node& parent, std::string_view name);

}  // namespace vrn::catalogue
