#include "catalogue/ValueStatus.h"

#include <algorithm>

#include "catalogue/Configuration.h"
#include "catalogue/CxmlValuesHandler.h"
#include "catalogue/ParameterDefinition.h"
#include "catalogue/Validation.h"
#include "text/Lists.h"
#include "text/Numbers.h"

namespace vrn::catalogue {

namespace {

bool isAmong(const std::vector<std::string>& items, std::string_view value) {
    return std::find(items.begin(), items.end(), value) != items.end();
}

bool isDefined(method::EditorState& state, const Parameter& parameter, const std::string& name) {
    if (parameter.row.offers(name)) {
        return true;
    }
    const auto own = state.services.instrument->ObjectNames(categoryKey(parameter.model.field0));
    return (own && isAmong(*own, name)) || state.xmlValues->configuration(state.domConfig).keyOfName(name).has_value();
}

// A reference may carry an offset or an index behind the name.
bool isDefinedReference(method::EditorState& state, const Parameter& parameter, const std::string& value) {
    auto cleaned = value;
    ClearSpaces(cleaned);
    return isDefined(state, parameter, value) || isDefined(state, parameter, cleaned);
}

// Besides its objects the window's menu offers the names that stand under no type.
bool isOfferedForAnyType(method::EditorState& state, const std::string& value) {
    static_cast<void>(state.xmlValues->RetrieveValues(1, state.domlatestKex, state.domConfig, ""));
    return isAmong(text::split(state.xmlValues->SLObject("None"), ";"), value) ||
           isAmong(text::split(state.xmlValues->SLObject("FREE TEXT"), ";"), value);
}

// A number in the range is accepted whatever names there are; so nearly all values are, and this costs the least.
bool isNumberInRange(const method::EditorState& state, const method::MacroParam& model, std::string_view value) {
    const auto separator = state.services.locale->decimalSeparator();
    const auto number = separator == "." ? text::parseNumber(value, separator) : std::nullopt;
    const auto single = number ? static_cast<float>(*number) : 0.0F;
    return number && (!model.minimum || single >= *model.minimum) && (!model.maximum || single <= *model.maximum);
}

std::string boundsText(const method::MacroParam& param) {
    if (!param.minimum) {
        return {};
    }
    const auto minimum = text::shortestText(*param.minimum);
    return param.maximum ? minimum + " to " + text::shortestText(*param.maximum) : minimum + " or more";
}

}  // namespace

ValueStatus valueStatus(method::EditorState& state, const Parameter& parameter, std::string_view value) {
    if (value.starts_with("SL.")) {
        return isDefinedReference(state, parameter, std::string(value)) ? ValueStatus::Valid : ValueStatus::UnknownName;
    }
    if (parameter.isObject) {
        const bool known = parameter.row.offers(value) || isOfferedForAnyType(state, std::string(value));
        return known ? ValueStatus::Valid : ValueStatus::NotInList;
    }
    if (isNumberInRange(state, parameter.model, value)) {
        return ValueStatus::Valid;
    }
    switch (checkValue(state, parameter.model, std::string(value))) {
        case Verdict::NotANumber:
            return ValueStatus::NotANumber;
        case Verdict::OutOfRange:
            return parameter.followsSyringe && state.cboSyringe.text().empty() ? ValueStatus::NotKnown
                                                                               : ValueStatus::OutOfRange;
        case Verdict::Accepted:
            break;
    }
    return ValueStatus::Valid;
}

std::string statusText(const Parameter& parameter, ValueStatus status) {
    switch (status) {
        case ValueStatus::NotANumber:
            return "is neither a number nor a configured name";
        case ValueStatus::OutOfRange:
            return "is out of range: " + boundsText(parameter.model);
        case ValueStatus::NotInList:
            return parameter.row.items().empty() ? "names nothing: the instrument has no " + parameter.model.text
                                                 : "is not among the instrument's objects: " + parameter.model.text;
        case ValueStatus::UnknownName:
            return "is a user-defined name that is no longer defined";
        case ValueStatus::NotKnown:
            return "cannot be checked: its range is that of the syringe";
        case ValueStatus::Valid:
            break;
    }
    return {};
}

}  // namespace vrn::catalogue
