#include "StepMaker.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vrn::samples {

StepMaker::StepMaker(const Installation& installation, std::string_view syringe, Random& random)
    : installation_(installation), random_(random) {
    for (const Object& object : installation.objects) {
        objects_[object.type].push_back(object.name);
        if (object.type == "SYRINGE" && object.name == syringe) {
            for (const Property& property : object.properties) {
                syringe_.emplace(property.name, property.value);
            }
        }
    }
    for (const NameGroup& group : installation.names) {
        Names& names = names_[group.key];
        names.insert(names.end(), group.names.begin(), group.names.end());
    }
}

Step StepMaker::step() {
    const Macro& macro = installation_.macros[random_.below(installation_.macros.size())];
    Step step{macro.name, {}};
    for (const std::string& definition : macro.definitions) {
        step.values.push_back(value(Definition(definition)));
    }
    return step;
}

std::string StepMaker::value(const Definition& definition) {
    if (definition.isObject()) {
        return objectName(definition);
    }
    if (definition.takesAnyText()) {
        return random_.oneIn(4) ? std::string() : "Lot " + std::to_string(random_.between(1000, 9999));
    }
    const auto names = names_.find(definition.unit);
    if (names != names_.end() && !names->second.empty() && random_.oneIn(8)) {
        return std::string(names->second[random_.below(names->second.size())]);
    }
    return number(definition);
}

std::string StepMaker::objectName(const Definition& definition) {
    // The user-defined names of a type may stand wherever its objects may; a type without either has the empty value.
    const std::string& type = definition.fields[random_.below(definition.fields.size())];
    std::array sources{&objects_, &names_};
    if (random_.oneIn(8)) {
        std::swap(sources[0], sources[1]);
    }
    for (const auto* source : sources) {
        const auto found = source->find(type);
        if (found != source->end() && !found->second.empty()) {
            return std::string(found->second[random_.below(found->second.size())]);
        }
    }
    return {};
}

std::string StepMaker::number(const Definition& definition) {
    const std::vector<std::string>& fields = definition.fields;
    const std::int64_t usual = limit(fields[0]);
    const std::int64_t lowest = fields.size() > 1 ? limit(fields[1]) : usual;
    const std::int64_t highest = fields.size() > 2 ? limit(fields[2]) : std::max(usual, lowest) + 1000;
    switch (random_.below(6)) {
        case 0:
            return tenthsText(lowest);
        case 1:
            return tenthsText(highest);
        case 2:
        case 3:
            return tenthsText(std::clamp(usual, lowest, highest));
        default:
            break;
    }
    if (lowest % 10 == 0 && highest % 10 == 0) {
        return tenthsText(10 * random_.between(lowest / 10, highest / 10));
    }
    return tenthsText(random_.between(lowest, highest));
}

std::int64_t StepMaker::limit(const std::string& field) const {
    if (const auto number = tenths(field)) {
        return *number;
    }
    const std::size_t point = field.find('.');
    const auto property = syringe_.find(point == std::string::npos ? field : field.substr(point + 1));
    return property == syringe_.end() ? 0 : tenths(property->second).value_or(0);
}

}  // namespace vrn::samples
