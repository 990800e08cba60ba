// The form of a method document, in one place: elements and attributes, versions, and the two texts with a form of their own, a
// step and the heading of an embedded cycle. Whatever reads or writes a method takes them from here. docs/method-format.md
// describes the whole for those who read methods elsewhere. The signatures belong to services/.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "xml/Dom.h"

namespace vrn::method {

struct MethodMacroEntry;

/// Which version a method says that it is.
enum class MethodVersion { None, Two, Three, Four, Unsupported };

}  // namespace vrn::method

namespace vrn::method::format {

inline constexpr std::string_view declaration = R"(<?xml version="1.0" encoding="UTF-16"?>)";

/// An element by its place in the document.
struct Element {
    std::string_view path;
    [[nodiscard]] constexpr std::string_view name() const { return path.substr(path.rfind('/') + 1); }
    /// The path from the root element on, whatever that one is called; empty for the root.
    [[nodiscard]] constexpr std::string_view belowRoot() const {
        const auto end = path.find('/', 1);
        return end == std::string_view::npos ? std::string_view() : path.substr(end + 1);
    }
    [[nodiscard]] constexpr Element parent() const { return {path.substr(0, path.rfind('/'))}; }
};

// In the order in which they are written.
inline constexpr Element root{"/Method"};
inline constexpr Element description{"/Method/Description"};
inline constexpr Element descriptionLine{"/Method/Description/DescriptionLine"};
inline constexpr Element syringe{"/Method/Syringe"};
inline constexpr Element syringeSize{"/Method/Syringe/SyringeSize"};
inline constexpr Element macros{"/Method/Macros"};
inline constexpr Element sequence{"/Method/Macros/MacroVariable"};
inline constexpr Element step{"/Method/Macros/MacroVariable/MacroValues"};
inline constexpr Element cycles{"/Method/Macros/MacroData"};
inline constexpr Element cycleHeading{"/Method/Macros/MacroData/MacroName"};
inline constexpr Element cycleLine{"/Method/Macros/MacroData/MacroLine"};
inline constexpr Element configuration{"/Method/SLCONFIG"};
inline constexpr Element atoms{"/Method/ATOMLINE"};
inline constexpr Element atom{"/Method/ATOMLINE/ATOM"};
inline constexpr Element arguments{"/Method/Arguments"};
inline constexpr Element version{"/Method/VERSION"};

// In `configuration` and in `arguments`, as in the configuration document.
inline constexpr Element object{"OBJECT"};
inline constexpr Element objectName{"OBJECT/OBJECTNAME"};
inline constexpr Element udon{"OBJECT/UDON"};

// Attributes of the root.
inline constexpr std::string_view timingAttribute = "TimingInformationID";
/// Also an attribute of the catalogue's macro names, from which it is taken.
inline constexpr std::string_view timestampAttribute = "LastModifiedTimestamp";

/// The text of the first such element; nothing without one.
[[nodiscard]] std::optional<std::string> textOf(const xml::Document& method, const Element& element);

// XML text of an element, each with its line end; what the element holds goes in between.
void appendOpened(std::string& out, const Element& element);
void appendClosed(std::string& out, const Element& element);
/// An element with this text.
void appendLeaf(std::string& out, const Element& element, std::string_view text);
/// An element whose text is a CDATA section.
void appendCDataLeaf(std::string& out, const Element& element, std::string_view text);

/// The method that is shown for none, with declaration.
[[nodiscard]] std::string emptyMethod();

// Versions

enum class SignatureForm {
    Own,  ///< of versions 2 and 3: `services::SignatureV23`
    Xml,  ///< W3C XML Signature: `services::SignatureV4`
};

struct KnownVersion {
    MethodVersion version;
    std::string_view text;  ///< as it is written
    SignatureForm form;
};

/// The last one is what the editor writes. A method without version is signed as those of version 2 are.
inline constexpr std::array knownVersions{
    KnownVersion{MethodVersion::Two, "02", SignatureForm::Own},
    KnownVersion{MethodVersion::Three, "03", SignatureForm::Own},
    KnownVersion{MethodVersion::Four, "04", SignatureForm::Xml},
};
inline constexpr MethodVersion currentVersion = knownVersions.back().version;
inline constexpr std::string_view currentVersionText = knownVersions.back().text;

/// The version that a text names as a number; null for one that is not known.
[[nodiscard]] const KnownVersion* knownVersion(std::string_view text);
/// The value of a version text that is a whole number, as plain decimal; any other text as it is.
[[nodiscard]] std::string versionAsShown(std::string_view text);

// Description: entities within the text of a line, on top of the document's own escaping

/// "&", "<", ">", double quote and apostrophe as entities.
[[nodiscard]] std::string ConvertDescription(std::string text);
/// The five entities as their characters.
[[nodiscard]] std::string ReverseDescription(std::string text);

// Steps: "NAME(v1,v2)"
//
// `stepOf` is how a step is read. Two readers have a rule of their own, since what they give is compared with, or part of, methods that
// exist: change detection and the record of user-defined names. Each reads any text, and differs from `stepOf` where there is no
// step by its form or a value has ")" in it. The timing fingerprint cuts values out of the text that is written, up to its last ")".

/// Appends the text of a step.
void appendStep(std::string& out, const MethodMacroEntry& entry);

/// Where the values of a step's text are: between the first "(" and the first ")". Nothing without these in this order.
struct StepParentheses {
    std::size_t open = 0;
    std::size_t close = 0;
};
[[nodiscard]] std::optional<StepParentheses> parenthesesOf(std::string_view text) noexcept;

/// A step's text as name and values. Error 5 for a text without parentheses in this order.
[[nodiscard]] MethodMacroEntry stepOf(std::string_view text);

/// For change detection: the text before the first "(", or all of it.
[[nodiscard]] std::string_view comparedName(std::string_view text) noexcept;
/// For change detection: the text after the first "(" without any ")".
[[nodiscard]] std::string comparedValues(std::string_view text);

/// For the record of user-defined names, of steps and of atoms: the text after the first "(" without its last character.
[[nodiscard]] std::string_view recordedArguments(std::string_view call) noexcept;

// Headings of embedded cycles: "[MACRO NAME]"
//
// Two rules read them, which agree on every heading that the editor writes. Of others, steps and diff must know what is no heading:
// the text is the name then. The check of timestamps forgives text around the brackets and fails without the closing one, which
// hosts see as error 5 of their call.

[[nodiscard]] std::string headingOf(std::string_view name);
/// The name in a heading; nothing for a text that is none.
[[nodiscard]] std::optional<std::string_view> nameInHeading(std::string_view text) noexcept;
/// For the check of timestamps: the text up to the last "]" with the first "[MACRO " taken out. Error 5 without "]".
[[nodiscard]] std::string nameForTimestamp(std::string text);

}  // namespace vrn::method::format
