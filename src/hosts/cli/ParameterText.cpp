#include "hosts/cli/ParameterText.h"

#include <algorithm>

#include "catalogue/ParameterDefinition.h"
#include "text/Lists.h"
#include "text/Numbers.h"

namespace vrn::cli {

namespace {

constexpr std::size_t fewItems = 6;

std::string listText(const catalogue::Parameter& parameter, bool full) {
    const auto& items = parameter.row.items();
    if (items.empty()) {
        return "no " + parameter.model.text + " on this instrument";
    }
    const auto shown = full ? items.size() : std::min(items.size(), fewItems);
    std::string list = "one of: ";
    for (std::size_t i = 0; i < shown; ++i) {
        list += (i == 0 ? "" : ", ") + items[i];
    }
    return shown < items.size() ? list + ", and " + std::to_string(items.size() - shown) + " more" : list;
}

std::string numberText(const std::optional<float>& number) {
    return number ? text::shortestText(*number) : std::string();
}

// A number of JSON with the digits that the editor shows.
Json numberJson(float number) { return Json::parse(text::shortestText(number)); }

}  // namespace

std::string limitsText(const catalogue::Parameter& parameter, bool full) {
    if (parameter.isObject) {
        return listText(parameter, full);
    }
    const auto& model = parameter.model;
    if (model.anyText) {
        return "any text";
    }
    std::string limits = "any number";
    if (model.minimum) {
        limits = numberText(model.minimum) + (model.maximum ? " to " + numberText(model.maximum) : " or more");
    }
    return model.defaultValue ? limits + ", default " + numberText(model.defaultValue) : limits;
}

void addLimits(Json& json, const catalogue::Parameter& parameter) {
    if (!parameter.unit.empty()) {
        json["unit"] = parameter.unit;
    }
    if (parameter.isObject) {
        json["types"] = text::split(parameter.model.text, " Or ");
        json["list"] = parameter.row.items();
        return;
    }
    const auto add = [&json](const char* key, const std::optional<float>& number) {
        if (number) {
            json[key] = numberJson(*number);
        }
    };
    add("minimum", parameter.model.minimum);
    add("maximum", parameter.model.maximum);
    add("default", parameter.model.defaultValue);
}

}  // namespace vrn::cli
