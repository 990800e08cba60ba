#include "method/Format.h"

#include <algorithm>
#include <utility>

#include "method/EditorState.h"
#include "text/Lists.h"
#include "xml/Serialiser.h"

namespace vrn::method::format {

namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 5> entities{
    {{"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\"", "&quot;"}, {"'", "&apos;"}}};

constexpr std::string_view headingStart = "[MACRO ";
constexpr char headingEnd = ']';

// Tags without line ends.
void appendOpeningTag(std::string& out, const Element& element) { out.append("<").append(element.name()).append(">"); }
void appendClosingTag(std::string& out, const Element& element) { out.append("</").append(element.name()).append(">"); }

}  // namespace

std::optional<std::string> textOf(const xml::Document& method, const Element& element) {
    const auto node = method.selectSingleNode(element.path);
    return node ? std::optional(node.text()) : std::nullopt;
}

void appendOpened(std::string& out, const Element& element) {
    appendOpeningTag(out, element);
    out += text::crlf;
}

void appendClosed(std::string& out, const Element& element) {
    appendClosingTag(out, element);
    out += text::crlf;
}

void appendLeaf(std::string& out, const Element& element, std::string_view text) {
    appendOpeningTag(out, element);
    xml::appendContent(out, text);
    appendClosed(out, element);
}

void appendCDataLeaf(std::string& out, const Element& element, std::string_view text) {
    appendOpeningTag(out, element);
    xml::appendCData(out, text);
    appendClosed(out, element);
}

std::string emptyMethod() {
    std::string text(declaration);
    const auto blank = [&text](const Element& element, std::string_view blanks) {
        appendOpeningTag(text, element);
        text += blanks;
        appendClosed(text, element);
    };
    appendOpened(text, root);
    appendOpened(text, description);
    blank(descriptionLine, "  ");
    appendClosed(text, description);
    appendOpened(text, syringe);
    blank(syringeSize, " ");
    appendClosed(text, syringe);
    appendOpened(text, macros);
    appendOpened(text, sequence);
    text += ' ';
    blank(step, " ");
    appendClosed(text, sequence);
    appendOpened(text, cycles);
    blank(cycleHeading, " ");
    blank(cycleLine, " ");
    appendClosed(text, cycles);
    appendClosed(text, macros);
    appendClosed(text, root);
    return text;
}

const KnownVersion* knownVersion(std::string_view text) {
    const auto shown = versionAsShown(text);
    const auto* const found = std::find_if(knownVersions.begin(), knownVersions.end(), [&](const KnownVersion& known) {
        return versionAsShown(known.text) == shown;
    });
    return found == knownVersions.end() ? nullptr : &*found;
}

std::string versionAsShown(std::string_view text) {
    auto digits = text;
    const bool negative = digits.starts_with('-');
    if (negative || digits.starts_with('+')) {
        digits.remove_prefix(1);
    }
    const bool whole =
        !digits.empty() && std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (!whole) {
        return std::string(text);
    }
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size() - 1));
    return (negative && digits != "0" ? "-" : "") + std::string(digits);
}

std::string ConvertDescription(std::string text) {
    for (const auto& [character, entity] : entities) {
        text::replaceAll(text, character, entity);
    }
    return text;
}

std::string ReverseDescription(std::string text) {
    // "&amp;" last, so that an escaped entity comes back as it was written.
    for (std::size_t i = 1; i < entities.size(); ++i) {
        text::replaceAll(text, entities.at(i).second, entities.at(i).first);
    }
    text::replaceAll(text, entities[0].second, entities[0].first);
    return text;
}

void appendStep(std::string& out, const MethodMacroEntry& entry) {
    out += entry.MacroName;
    out += '(';
    if (entry.MacroValues) {
        text::appendJoined(out, *entry.MacroValues, ",");
    }
    out += ')';
}

std::optional<StepParentheses> parenthesesOf(std::string_view text) noexcept {
    const auto open = text.find('(');
    const auto close = text.find(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open) {
        return std::nullopt;
    }
    return StepParentheses{open, close};
}

MethodMacroEntry stepOf(std::string_view text) {
    const auto parentheses = parenthesesOf(text);
    if (!parentheses) {
        errors::throwInvalidProcedureCall();
    }
    const auto [open, close] = *parentheses;
    MethodMacroEntry entry;
    entry.MacroName = text.substr(0, open);
    if (auto values = text::split(text.substr(open + 1, close - open - 1), ","); !values.empty()) {
        entry.MacroValues = std::move(values);
    }
    return entry;
}

std::string_view comparedName(std::string_view text) noexcept { return text::before(text, "("); }

std::string comparedValues(std::string_view text) {
    const auto open = text.find('(');
    return open == std::string_view::npos ? std::string()
                                          : text::replacedAll(std::string(text.substr(open + 1)), ")", "");
}

std::string_view recordedArguments(std::string_view call) noexcept {
    const auto open = call.find('(');
    if (open == std::string_view::npos || open + 1 >= call.size()) {
        return {};
    }
    return call.substr(open + 1, call.size() - open - 2);
}

std::string headingOf(std::string_view name) {
    std::string heading(headingStart);
    heading += name;
    heading += headingEnd;
    return heading;
}

std::optional<std::string_view> nameInHeading(std::string_view text) noexcept {
    if (!text.starts_with(headingStart) || !text.ends_with(headingEnd)) {
        return std::nullopt;
    }
    return text.substr(headingStart.size(), text.size() - headingStart.size() - 1);
}

std::string nameForTimestamp(std::string text) {
    if (const auto start = text.find(headingStart); start != std::string::npos) {
        text.erase(start, headingStart.size());
    }
    const auto end = text.rfind(headingEnd);
    if (end == std::string::npos) {
        errors::throwInvalidProcedureCall();
    }
    text.resize(end);
    return text;
}

}  // namespace vrn::method::format
