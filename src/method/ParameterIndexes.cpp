#include "method/ParameterIndexes.h"

#include <utility>

#include "errors/Error.h"
#include "method/Format.h"
#include "text/Lists.h"
#include "text/Numbers.h"

namespace vrn::method {

ParamIndexes::ParamIndexes(const std::vector<std::string>& indexList) {
    for (const auto& entry : indexList) {
        if (const auto number = text::parseNumber(entry, ".")) {
            numbers.insert(*number);
        }
    }
}

bool CanRemoveParamIndexFromMacroValues(std::int16_t index, const ParamIndexes& indexes) {
    return indexes.numbers.contains(index);
}

std::string RemoveParamIndexFromMacroValues(const std::string& line, const std::vector<std::string>& indexList) {
    const auto parts = text::split(line, "(");
    if (parts.size() < 2) {
        return line;
    }
    const auto body = text::replacedAll(parts[1], ")", "");
    const auto items = text::split(body, ",");
    if (items.size() < 2) {
        return parts[0] + body;
    }
    const ParamIndexes indexes(indexList);
    std::string kept = "(";
    std::string_view separator = ",";
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i + 2 == items.size()) {
            separator = "";
        }
        if (!CanRemoveParamIndexFromMacroValues(static_cast<std::int16_t>(i), indexes)) {
            kept += items[i];
            kept += separator;
        }
    }
    return parts[0] + kept + ")";
}

MacroDataLines::MacroDataLines(const xml::Document& method) {
    const auto data = method.documentElement().selectSingleNode(format::cycles.belowRoot());
    if (!data) {
        errors::throwObjectNotSet();
    }
    for (auto line = data.child(format::cycleLine.name()); line; line = line.nextOfSameName()) {
        texts.push_back(line.text());
    }
    for (const auto& piece : text::split(data.text(), "+")) {
        searches += text::contains(piece, "-") ? 0 : 1;
    }
}

std::vector<std::string> PositionsInMacroData(const MacroDataLines& lines, const std::string& parameterText,
                                              std::int16_t position) {
    const auto items = text::split(text::replacedAll(text::replacedAll(parameterText, "(", ""), ")", ""), ",");
    std::vector<std::string> positions;
    if (lines.searches == 0 || position < 1 || std::cmp_greater(position, items.size())) {
        return positions;
    }
    const auto wanted = text::trimBlanks(items[static_cast<std::size_t>(position) - 1]);
    for (std::size_t i = 0; i < lines.texts.size(); ++i) {
        if (text::contains(lines.texts[i], wanted)) {
            positions.push_back(std::to_string(i));
        }
    }
    return positions;
}

void FindIndexOfParamInMacroData(const std::string& methodText, const std::string& parameterText, std::int16_t position,
                                 std::vector<std::string>& indexList) {
    xml::Document method;
    if (!method.loadXML(methodText)) {
        return;
    }
    const MacroDataLines lines(method);
    const auto positions = PositionsInMacroData(lines, parameterText, position);
    for (std::size_t search = 0; search < lines.searches; ++search) {
        indexList.insert(indexList.end(), positions.begin(), positions.end());
    }
}

}  // namespace vrn::method
