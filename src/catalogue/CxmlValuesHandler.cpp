#include "catalogue/CxmlValuesHandler.h"

#include <algorithm>
#include <unordered_set>

#include "catalogue/NameSearch.h"
#include "errors/Handlers.h"
#include "method/Format.h"
#include "text/Lists.h"

namespace vrn::catalogue {

namespace {

constexpr std::string_view freeText = "FREE TEXT";
constexpr std::string_view retrieving = "vrnMethodEditor.CxmlValuesHandler.RetrieveValues ";

bool addsNothing(const std::string& list, std::string_view item) { return text::contains(list, item); }

// The object types of a definition, all in one piece: what stands behind the name.
void addTypes(std::string& types, std::string_view definition) {
    auto own = definition.substr(definition.find(';') + 1);
    if (own.ends_with(';')) {
        own.remove_suffix(1);
    }
    if (!own.empty() && !addsNothing(types, own)) {
        types += own;
        types.push_back(';');
    }
}

}  // namespace

bool ItIsObject(std::string_view text) noexcept {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return (c >= 'A' && c <= 'Z') || c == '_'; });
}

template <typename Index, typename Make>
const Index& CxmlValuesHandler::keep(Kept<Index>& kept, const xml::Document& document, Make&& make) {
    if (!kept.index || !kept.document.sameAs(document)) {
        kept.index.reset();
        kept.document = document;
        kept.index.emplace(make());
    }
    return *kept.index;
}

const MacroIndex& CxmlValuesHandler::macros(const xml::Document& catalogue) {
    return keep(macros_, catalogue, [&] { return MacroIndex(catalogue); });
}

const ObjectListIndex& CxmlValuesHandler::objects(const xml::Document& objectList) {
    return keep(objects_, objectList, [&] { return ObjectListIndex(objectList); });
}

const ArgumentsIndex& CxmlValuesHandler::configuration(const xml::Document& configuration) {
    return keep(arguments_, configuration, [&] {
        return ArgumentsIndex(childrenNamed(configuration.selectSingleNode("Config/Arguments"), "OBJECT"));
    });
}

const ArgumentsIndex& CxmlValuesHandler::baselineArguments(const xml::Document& method) {
    return keep(baseline_, method, [&] {
        return ArgumentsIndex(
            childrenNamed(method.selectSingleNode(method::format::arguments.path), method::format::object.name()));
    });
}

void CxmlValuesHandler::forget(const xml::Document& document) {
    const auto drop = [&document](auto& kept) {
        if (kept.document.sameAs(document)) {
            kept = {};
        }
    };
    drop(macros_);
    drop(baseline_);
    // The lists are made of both.
    if (objects_.document.sameAs(document) || arguments_.document.sameAs(document)) {
        drop(objects_);
        drop(arguments_);
        userDefined_.forget();
        choices_.forget();
    }
}

void CxmlValuesHandler::forgetLastQuestion() {
    objectList_ = {};
    configuration_ = {};
}

std::string CxmlValuesHandler::RetrieveValues(std::int16_t kind, const xml::Document& objectList,
                                              const xml::Document& configuration, const std::string& key) {
    return errors::rethrowing(retrieving, [&] {
        const auto names = retrieve(objectList, configuration, kind == 1 ? key : std::string());
        return kind == 2 && !key.empty() ? atomText(objectList, key) : names.text();
    });
}

std::shared_ptr<const controls::Choices> CxmlValuesHandler::objectChoices(const xml::Document& objectList,
                                                                          const xml::Document& configuration,
                                                                          std::span<const std::string> types) {
    return errors::rethrowing(retrieving, [&] {
        std::string key;
        std::vector<TypeNames> names;
        names.reserve(types.size());
        for (const auto& type : types) {
            names.push_back(retrieve(objectList, configuration, type));
            key += type;
            key.push_back(';');
        }
        return choices_.of(key, std::move(names), itemsOf);
    });
}

TypeNames CxmlValuesHandler::retrieve(const xml::Document& objectList, const xml::Document& configuration,
                                      const std::string& type) {
    objectList_ = objectList;
    configuration_ = configuration;
    TypeNames names;
    if (type.empty()) {
        return names;
    }
    const auto& index = objects(objectList_);
    if (!index.hasObjects()) {
        return names;
    }
    names.objects = index.namesOfType(type);
    names.userDefined = userDefined(type);
    if (type != "SYRINGE") {
        names.freeText = userDefined(std::string(freeText));
    }
    return names;
}

std::string CxmlValuesHandler::atomText(const xml::Document& objectList, const std::string& atom) {
    std::string lines;
    for (const auto& candidate : childrenNamed(objectList.selectSingleNode("LATESTKEX/ATOMS"), "ATOM")) {
        if (candidate.child("AtomName").text() != atom) {
            continue;
        }
        // The first child stands for the name, whatever it is.
        const auto children = contentChildren(candidate);
        for (std::size_t i = 1; i < children.size(); ++i) {
            lines += children[i].text;
            lines += text::crlf;
        }
        break;
    }
    return lines;
}

std::string CxmlValuesHandler::SLObject(const std::string& key) { return *userDefined(key); }

SharedText CxmlValuesHandler::userDefined(const std::string& key) {
    return errors::rethrowing("vrnMethodEditor.CxmlValuesHandler.SLObject ", [&] {
        auto own = services_->instrument->ObjectNames(key).value_or(std::vector<std::string>());
        // The service may have had another configuration loaded: the one that is meant now counts.
        return userDefined_.of(key, {std::move(own), configuration_},
                               [&](const UserDefined& parts) { return userDefinedText(key, parts); });
    });
}

std::string CxmlValuesHandler::userDefinedText(const std::string& key, const UserDefined& parts) {
    std::string list;
    for (const auto& name : parts.own) {
        list += name;
        list.push_back(';');
    }
    if (parts.configuration.hasChildNodes()) {
        if (!parts.configuration.selectSingleNode("Config/Arguments")) {
            errors::throwObjectNotSet();
        }
        const std::unordered_set<std::string_view> known(parts.own.begin(), parts.own.end());
        for (const auto& name : configuration(parts.configuration).namesOfKey(key)) {
            if (!known.contains(name)) {
                list += name;
                list.push_back(';');
            }
        }
    }
    if (list.ends_with(';')) {
        list.pop_back();
    }
    return list;
}

std::string CxmlValuesHandler::unitOf(const ParameterDefinition& definition) const {
    if (!text::contains(definition.fields[0], "()")) {
        return definition.unitCode().value_or("");
    }
    std::string first;
    std::string second;
    services_->instrument->UnitPair("E", first, second);
    return first;
}

void CxmlValuesHandler::collectUnits(const xml::Node& macro, std::string& types) {
    for (const auto& line : definitionTexts(macro)) {
        const auto definition = ParameterDefinition(line);
        if (definition.fields.size() < 2) {
            continue;
        }
        if (definition.isObject()) {
            addTypes(types, line);
        } else if (const auto unit = unitOf(definition); !addsNothing(unitsList_, unit)) {
            unitsList_ += unitsList_.empty() ? unit : ";" + unit;
        }
    }
}

std::string CxmlValuesHandler::UnitsInOneMacro(const std::string& macroNames, const xml::Document& catalogue) {
    return errors::rethrowing("vrnMethodEditor.CxmlValuesHandler.UnitsInOneMacro ", [&] {
        unitsList_.clear();
        // The macros themselves are kept over the calls of the service: a host may load other documents from there.
        std::vector<xml::Node> selected;
        const auto& index = macros(catalogue);
        for (const auto position : macrosNamedIn(macroNames, index)) {
            selected.push_back(index.macros()[position]);
        }
        std::string types;
        for (const auto& macro : selected) {
            collectUnits(macro, types);
        }
        return unitsList_ + ";" + CleanRepetition(types);
    });
}

std::string CxmlValuesHandler::CleanRepetition(const std::string& list) {
    return errors::rethrowing("vrnMethodEditor.CxmlValuesHandler.CleanRepetition ", [&]() -> std::string {
        if (list.empty() || list == ";") {
            return {};
        }
        std::string cleaned = list;
        for (const auto& item : text::split(list, ";")) {
            const auto first = item.empty() ? std::string::npos : cleaned.find(item);
            if (first == std::string::npos || cleaned.find(item, first + 1) == std::string::npos) {
                continue;
            }
            text::replaceAll(cleaned, item + ";", "");
            if (!cleaned.ends_with(';')) {
                cleaned.push_back(';');
            }
            cleaned += item;
        }
        if (cleaned.ends_with(';')) {
            cleaned.pop_back();
        }
        return cleaned;
    });
}

}  // namespace vrn::catalogue
