#include "method/ParameterIndexes.h"

#include <algorithm>
#include <utility>

#include "errors/Error.h"

#include "text/Lists.h"
#include "text/Numbers.h"

namespace vrn::method {

bool CanRemoveParamIndexFromMacroValues(std::int16_t index, const std::vector<std::string>& indexList) {
    return std::any_of(indexList.begin(), indexList.end(), [index](const std::string& entry) {
        const auto number = text::parseNumber(entry, ".");
        return number && *number == index;
    });
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
    std::string kept = "(";
    std::string_view separator = ",";
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i + 2 == items.size()) {
            separator = "";
        }
        if (!CanRemoveParamIndexFromMacroValues(static_cast<std::int16_t>(i), indexList)) {
            kept += items[i];
            kept += separator;
        }
    }
    return parts[0] + kept + ")";
}

void FindIndexOfParamInMacroData(const std::string& methodText, const std::string& parameterText, std::int16_t position,
                                 std::vector<std::string>& indexList) {
    xml::Document method;
    if (method.loadXML(methodText)) {
        FindIndexOfParamInMacroData(method, parameterText, position, indexList);
    }
}

void FindIndexOfParamInMacroData(const xml::Document& method, const std::string& parameterText, std::int16_t position,
                                 std::vector<std::string>& indexList) {
    const auto root = method.documentElement();
    const auto items = text::split(text::replacedAll(text::replacedAll(parameterText, "(", ""), ")", ""), ",");
    if (!root || position < 1 || std::cmp_greater(position, items.size())) {
        return;
    }
    const auto data = root.selectSingleNode("Macros/MacroData");
    if (!data) {
        errors::throwObjectNotSet();
    }
    const std::string wanted(text::trimBlanks(items[static_cast<std::size_t>(position) - 1]));
    std::vector<std::string> found;
    int counter = -1;
    for (auto line = data.child("MacroLine"); line; line = line.nextOfSameName()) {
        ++counter;
        if (text::contains(line.text(), wanted)) {
            found.push_back(std::to_string(counter));
        }
    }
    for (const auto& piece : text::split(data.text(), "+")) {
        if (!text::contains(piece, "-")) {
            indexList.insert(indexList.end(), found.begin(), found.end());
        }
    }
}

}  // namespace vrn::method
