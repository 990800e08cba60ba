#include "method/MethodWriter.h"

#include "catalogue/CxmlValuesHandler.h"
#include "catalogue/NameSearch.h"
#include "catalogue/ParameterDefinition.h"
#include "method/MethodText.h"
#include "method/Timestamps.h"
#include "text/Lists.h"
#include "text/Unicode.h"
#include "xml/Serialiser.h"

namespace vrn::method {

namespace {

constexpr std::string_view emptyStep = "<MacroValues></MacroValues>\r\n";
constexpr std::string_view defaultConfigObject =
    "<OBJECT>\r\n<OBJECTNAME></OBJECTNAME>\r\n<UDON></UDON>\r\n</OBJECT>\r\n";

std::string element(std::string_view name, std::string_view text) {
    std::string out = "<" + std::string(name) + ">";
    xml::appendContent(out, text);
    return out + "</" + std::string(name) + ">\r\n";
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

// `call` is room for the step's text that many steps share.
void appendStep(std::string& text, const MethodMacroEntry& step, std::string& call) {
    if (step.MacroName.empty() && !step.MacroValues) {
        text += emptyStep;
        return;
    }
    call = step.MacroName;
    call += '(';
    if (step.MacroValues) {
        text::appendJoined(call, *step.MacroValues, ",");
    }
    call += ')';
    text += "<MacroValues>";
    xml::appendContent(text, call);
    text += "</MacroValues>\r\n";
}

Sequence sequenceOf(const EditorState& state) {
    Sequence sequence;
    std::vector<std::string> distinct;
    std::string call;
    for (const auto& step : state.arrMethodMacros) {
        appendStep(sequence.text, step, call);
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
    state.strSlConfig.clear();
    if (!configObjects.empty()) {
        state.strSlConfig = "<SLCONFIG>\r\n" + configObjects + "</SLCONFIG>\r\n";
    }
    if (state.strSlConfig.empty()) {
        state.strSlConfig = "<SLCONFIG>\r\n" + std::string(defaultConfigObject) + "</SLCONFIG>\r\n";
    }
    std::string text;
    text.reserve(sequence.text.size() + macroData.size() + state.strSlConfig.size() + state.strAtomLine.size() + 1024);
    text += methodDeclaration;
    text += "\r\n<Method>\r\n<Syringe>\r\n" + element("SyringeSize", state.cboSyringe.text()) + "</Syringe>\r\n";
    text.append("<Macros>\r\n<MacroVariable>\r\n").append(sequence.text).append("</MacroVariable>\r\n");
    text.append("<MacroData>\r\n").append(macroData).append("</MacroData>\r\n</Macros>\r\n");
    text += state.strSlConfig;
    text.append("<ATOMLINE>\r\n").append(state.strAtomLine);
    text += "</ATOMLINE>\r\n<VERSION>04</VERSION>\r\n</Method>\r\n";
    return text;
}

std::optional<xml::Document> build(EditorState& state) {
    if (!commitGrid(state)) {
        return std::nullopt;
    }
    const auto sequence = sequenceOf(state);
    if (sequence.text == emptyStep) {
        return std::nullopt;
    }
    xml::Document method;
    if (!method.loadXML(assemble(state, sequence))) {
        messageBox(state, parseErrorReport("Error parsing Method xml", method.parseError()), errors::styleError);
        return std::nullopt;
    }
    MethodSigner signer(state);
    AddAttribute(state, method, "/Method", "TimingInformationID", AddTimingInformationID(state, method, signer));
    AddAttribute(state, method, "/Method", "LastModifiedTimestamp",
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
        std::string data = "<MacroName>";
        xml::appendCData(data, "[MACRO " + name + "]");
        data += "</MacroName>\r\n";
        for (const auto& line : catalogue::definitionTexts(macro)) {
            data += "<MacroLine>";
            xml::appendCData(data, text::trimXmlSpace(line).empty() ? std::string_view() : line);
            data += "</MacroLine>\r\n";
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
            objects += "<OBJECT>\r\n" + element("OBJECTNAME", i < nameItems.size() ? nameItems[i] : std::string()) +
                       element("UDON", udonItems[i]) + "</OBJECT>\r\n";
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
        const auto node = method.createElement("Description");
        for (const auto& line : lines) {
            const auto lineNode = node.appendChild(method.createElement("DescriptionLine"));
            // As reading leaves it: white space at the ends does not come back, and a line of nothing else must leave no text.
            lineNode.setText(ConvertDescription(std::string(text::trimXmlSpace(line))));
        }
        (void)method.selectSingleNode("/Method").insertBefore(node, method.selectSingleNode("/Method/Syringe"));
    });
}

void AppendArgumentsNode(EditorState& state, const xml::Document& method, const xml::Document& configuration,
                         const std::vector<std::string>& udons) noexcept {
    standardHandler(state, "AppendArgumentsNode ", [&] {
        const auto arguments = method.createElement("Arguments");
        for (const auto& udon : udons) {
            const auto object = arguments.appendChild(method.createElement("OBJECT"));
            object.appendChild(method.createElement("OBJECTNAME")).setText(objectName(state, configuration, udon));
            object.appendChild(method.createElement("UDON")).setText(udon);
        }
        (void)method.selectSingleNode("/Method").insertBefore(arguments, method.selectSingleNode("/Method/VERSION"));
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
