#include "method/MethodWriter.h"

#include "catalogue/CxmlValuesHandler.h"
#include "catalogue/NameSearch.h"
#include "catalogue/ParameterDefinition.h"
#include "method/Format.h"
#include "method/MethodText.h"
#include "method/Timestamps.h"
#include "text/Lists.h"
#include "text/Unicode.h"

namespace vrn::method {

namespace {

void appendObject(std::string& out, std::string_view name, std::string_view udon) {
    format::appendOpened(out, format::object);
    format::appendLeaf(out, format::objectName, name);
    format::appendLeaf(out, format::udon, udon);
    format::appendClosed(out, format::object);
}

// What the user has entered and not stored goes in first, as by the button that would store it.
bool commitGrid(EditorState& state) {
    if (!state.grdMacro.commitEdit()) {
        return false;
    }
    if (state.booUnsavedEdits) {
        (sequenceIsEmpty(state) ? state.cmdInsert : state.cmdReplace).press();
    }
    return !state.booUnsavedEdits;
}

// The sequence as XML text, and what the other parts of the method need to know of it.
struct Sequence {
    std::string text;
    std::string names;  // list text of the distinct macro names in order of first use
    UdonsByMacro udons;
};

bool isEmptyRecord(const MethodMacroEntry& step) { return step.MacroName.empty() && !step.MacroValues; }

Sequence sequenceOf(const EditorState& state) {
    Sequence sequence;
    std::vector<std::string> distinct;
    std::string call;  // room for the text that many steps share
    for (const auto& step : state.arrMethodMacros) {
        call.clear();
        if (!isEmptyRecord(step)) {
            format::appendStep(call, step);
        }
        format::appendLeaf(sequence.text, format::step, call);
        auto [entry, isNew] = sequence.udons.try_emplace(step.MacroName);
        if (isNew) {
            distinct.push_back(step.MacroName);
        }
        if (step.MacroValues) {
            for (const auto& value : *step.MacroValues) {
                entry->second.addValue(value);
            }
        }
    }
    sequence.names = text::join(distinct, ";");
    return sequence;
}

// The category of a user-defined name as reading leaves it: the method's own record is asked first when it is built again.
std::string objectName(EditorState& state, const xml::Document& configuration, const std::string& udon) {
    return std::string(text::trimXmlSpace(catalogue::GetPredUnitName(state, configuration, udon)));
}

std::string assemble(EditorState& state, const Sequence& sequence) {
    std::string configObjects;
    const auto macroData = MacrosData(state, sequence.names, sequence.udons, configObjects);
    state.strUnits = state.xmlValues->UnitsInOneMacro(
        catalogue::withoutContainedNames(text::split(sequence.names, ";")), state.domMacros);
    if (configObjects.empty()) {
        appendObject(configObjects, {}, {});
    }
    state.strSlConfig.clear();
    format::appendOpened(state.strSlConfig, format::configuration);
    state.strSlConfig += configObjects;
    format::appendClosed(state.strSlConfig, format::configuration);
    std::string text;
    text.reserve(sequence.text.size() + macroData.size() + state.strSlConfig.size() + state.strAtomLine.size() + 1024);
    text.append(format::declaration).append(text::crlf);
    format::appendOpened(text, format::root);
    format::appendOpened(text, format::syringe);
    format::appendLeaf(text, format::syringeSize, state.cboSyringe.text());
    format::appendClosed(text, format::syringe);
    format::appendOpened(text, format::macros);
    format::appendOpened(text, format::sequence);
    text += sequence.text;
    format::appendClosed(text, format::sequence);
    format::appendOpened(text, format::cycles);
    text += macroData;
    format::appendClosed(text, format::cycles);
    format::appendClosed(text, format::macros);
    text += state.strSlConfig;
    format::appendOpened(text, format::atoms);
    text += state.strAtomLine;
    format::appendClosed(text, format::atoms);
    format::appendLeaf(text, format::version, format::currentVersionText);
    format::appendClosed(text, format::root);
    return text;
}

std::optional<xml::Document> build(EditorState& state) {
    if (!commitGrid(state)) {
        return std::nullopt;
    }
    if (state.arrMethodMacros.size() == 1 && isEmptyRecord(state.arrMethodMacros.front())) {
        return std::nullopt;
    }
    xml::Document method;
    if (!method.loadXML(assemble(state, sequenceOf(state)))) {
        messageBox(state, parseErrorReport("Error parsing Method xml", method.parseError()), errors::styleError);
        return std::nullopt;
    }
    MethodSigner signer(state);
    AddAttribute(state, method, format::root.path, format::timingAttribute,
                 AddTimingInformationID(state, method, signer));
    AddAttribute(state, method, format::root.path, format::timestampAttribute,
                 CatalogueTimestamp(state, state.cboSelectedMacro.text()));
    AppendArgumentsNode(state, method, state.txtMethodDescription.text());
    AddUdonsToMethodDOMDocument(state, method, state.domConfig);
    signer.sign(method);
    return method;
}

}  // namespace

std::optional<xml::Document> BuildMethod(EditorState& state) noexcept {
    return standardHandler(state, "GetMethodXml ", [&] { return build(state); });
}

std::optional<xml::Document> GetMethodXml(EditorState& state) noexcept {
    return standardHandler(state, "GetMethodXml ", [&] {
        auto built = BuildMethod(state);
        // The document just built is what the next load will see: its cycle is the catalogue's, so the warning goes.
        UpdateCycleDateLabel(state, built ? *built : state.domMethod);
        if (state.booBaselineLoaded && built) {
            state.domMethodBaseline.load(*built);
        }
        state.booBaselineLoaded = true;
        return built;
    });
}

std::string MacrosData(EditorState& state, const std::string& names, const UdonsByMacro& udons,
                       std::string& configObjects) noexcept {
    return standardHandler(state, "MacrosData ", [&] {
        std::string data;
        for (const auto& name : text::split(names, ";")) {
            std::string objects;
            data += OneMaroData(state, name, udons, objects);
            configObjects += objects;
        }
        return data;
    });
}

std::string OneMaroData(EditorState& state, const std::string& name, const UdonsByMacro& udons,
                        std::string& configObjects) noexcept {
    return standardHandler(state, "OneMaroData ", [&]() -> std::string {
        const auto macro = state.xmlValues->macros(state.domMacros).find(name);
        if (!macro) {
            return {};
        }
        std::string data;
        format::appendCDataLeaf(data, format::cycleHeading, format::headingOf(name));
        for (const auto& line : catalogue::definitionTexts(macro)) {
            format::appendCDataLeaf(data, format::cycleLine,
                                    text::trimXmlSpace(line).empty() ? std::string_view() : line);
        }
        if (const auto used = udons.find(name); used != udons.end() && !used->second.names().empty()) {
            std::vector<std::string> categories;
            for (const auto& udon : used->second.names()) {
                categories.push_back(objectName(state, state.domConfig, udon));
            }
            configObjects =
                FillLocalConfigXml(state, text::join(categories, ";"), text::join(used->second.names(), ";"));
        }
        return data;
    });
}

std::string FillLocalConfigXml(EditorState& state, const std::string& names, const std::string& udons) noexcept {
    return standardHandler(state, "FillLocalConfigXml ", [&] {
        const auto nameItems = text::split(names, ";");
        const auto udonItems = text::split(udons, ";");
        std::string objects;
        for (std::size_t i = 0; i < udonItems.size(); ++i) {
            appendObject(objects, i < nameItems.size() ? nameItems[i] : std::string(), udonItems[i]);
        }
        return objects;
    });
}

void AppendArgumentsNode(EditorState& state, const xml::Document& method, std::string_view description) noexcept {
    standardHandler(state, "AppendArgumentsNode ", [&] {
        // A line end at the very end closes the last line; an empty box has one empty line.
        if (description.ends_with(text::crlf)) {
            description.remove_suffix(text::crlf.size());
        }
        auto lines = text::split(description, text::crlf);
        if (lines.empty()) {
            lines.emplace_back();
        }
        const auto node = method.createElement(format::description.name());
        for (const auto& line : lines) {
            const auto lineNode = node.appendChild(method.createElement(format::descriptionLine.name()));
            // As reading leaves it: white space at the ends does not come back, and a line of nothing else must leave no text.
            lineNode.setText(format::ConvertDescription(std::string(text::trimXmlSpace(line))));
        }
        (void)method.selectSingleNode(format::root.path)
            .insertBefore(node, method.selectSingleNode(format::syringe.path));
    });
}

void AppendArgumentsNode(EditorState& state, const xml::Document& method, const xml::Document& configuration,
                         const std::vector<std::string>& udons) noexcept {
    standardHandler(state, "AppendArgumentsNode ", [&] {
        const auto arguments = method.createElement(format::arguments.name());
        for (const auto& udon : udons) {
            const auto object = arguments.appendChild(method.createElement(format::object.name()));
            object.appendChild(method.createElement(format::objectName.name()))
                .setText(objectName(state, configuration, udon));
            object.appendChild(method.createElement(format::udon.name())).setText(udon);
        }
        (void)method.selectSingleNode(format::root.path)
            .insertBefore(arguments, method.selectSingleNode(format::version.path));
    });
}

void AddUdonsToMethodDOMDocument(EditorState& state, const xml::Document& method,
                                 const xml::Document& configuration) noexcept {
    standardHandler(state, "AddUdonsToMethodDOMDocument ", [&] {
        AppendArgumentsNode(state, method, configuration, catalogue::MethodUdons(state, method).names());
    });
}

void AddAttribute(const EditorState& state, const xml::Document& document, std::string_view path, std::string_view name,
                  std::string_view value) noexcept {
    standardHandler(state, "AddAttribute ", [&] {
        if (const auto node = document.selectSingleNode(path)) {
            node.setAttribute(name, value);
        }
    });
}

}  // namespace vrn::method
