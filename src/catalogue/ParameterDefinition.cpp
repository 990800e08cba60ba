#include "catalogue/ParameterDefinition.h"

#include "catalogue/CxmlValuesHandler.h"
#include "catalogue/Indexes.h"
#include "text/Lists.h"

namespace vrn::catalogue {

namespace {

std::optional<std::string> inFirstParentheses(std::string_view text) {
    const auto open = text.find('(');
    const auto close = text.find(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open) {
        return std::nullopt;
    }
    return std::string(text.substr(open + 1, close - open - 1));
}

}  // namespace

ParameterDefinition::ParameterDefinition(std::string_view text) : fields(text::split(text, ";")) {
    if (fields.empty()) {
        fields.emplace_back();
    }
}

bool ParameterDefinition::isObject() const { return fields.size() > 1 && ItIsObject(fields[1]); }

std::string ParameterDefinition::displayName() const {
    return std::string(text::before(text::replacedAll(fields[0], "()", ""), "("));
}

std::optional<std::string> ParameterDefinition::unitCode() const { return inFirstParentheses(fields[0]); }

std::string categoryKey(std::string_view field0) {
    const auto code = inFirstParentheses(text::trimBlanks(field0));
    return code && !code->empty() ? *code : "None";
}

std::vector<std::string> definitionTexts(const xml::Node& macro) {
    std::vector<std::string> texts;
    if (const auto variables = macro.child("Variables")) {
        for (auto& child : contentChildren(variables)) {
            texts.push_back(std::move(child.text));
        }
    }
    return texts;
}

}  // namespace vrn::catalogue
