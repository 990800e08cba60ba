#include "DocumentTexts.h"

#include <string_view>

#include "XmlText.h"

namespace vrn::samples {

namespace {

void appendLines(XmlText& xml, std::string_view container, std::string_view line,
                 const std::vector<std::string>& texts) {
    if (texts.empty()) {
        return;
    }
    xml.open(container);
    for (const std::string& text : texts) {
        xml.leaf(line, text);
    }
    xml.close();
}

std::string stepText(const Step& step) {
    std::string text = step.macro + "(";
    std::string_view separator;
    for (const std::string& value : step.values) {
        text.append(separator).append(value);
        separator = ",";
    }
    return text + ")";
}

}  // namespace

std::string macrosText(const Installation& installation) {
    XmlText xml;
    xml.open("Macros");
    for (const Macro& macro : installation.macros) {
        xml.open("Macro");
        xml.leaf("MacroName", macro.name, "LastModifiedTimestamp=\"" + escaped(macro.lastModified) + "\"");
        appendLines(xml, "Description", "DescriptionLine", macro.description);
        appendLines(xml, "Atom", "AtomValue", macro.atoms);
        // A cycle without parameters still says so: readers look for the element.
        xml.open("Variables");
        for (const std::string& definition : macro.definitions) {
            xml.leaf("Variable", definition);
        }
        xml.close().close();
    }
    return xml.close().text();
}

std::string objectsText(const Installation& installation) {
    XmlText xml;
    xml.open("LATESTKEX").open("OBJECTS");
    for (const Object& object : installation.objects) {
        xml.open("OBJECT").leaf("ObjectType", object.type).leaf("ObjectName", object.name);
        for (const Property& property : object.properties) {
            xml.open("Property").leaf("PropertyName", property.name).leaf("PropertyValue", property.value).close();
        }
        xml.close();
    }
    xml.close().open("ATOMS");
    for (const Atom& atom : installation.atoms) {
        xml.open("ATOM").leaf("AtomName", atom.name);
        for (const std::string& parameter : atom.parameters) {
            xml.leaf("Param", parameter);
        }
        xml.close();
    }
    return xml.close().close().text();
}

std::string configurationText(const Installation& installation) {
    XmlText xml;
    xml.open("Config").open("Arguments");
    for (const NameGroup& group : installation.names) {
        xml.open("OBJECT").leaf("OBJECTNAME", group.key);
        for (const std::string& name : group.names) {
            xml.leaf("UDON", name);
        }
        xml.close();
    }
    return xml.close().close().text();
}

std::string draftText(const MethodDraft& draft) {
    XmlText xml;
    xml.open("Method").open("Description");
    for (const std::string& line : draft.description) {
        // Escaped twice, as methods hold their descriptions: once for the line's own convention, once for XML.
        xml.leaf("DescriptionLine", escaped(line));
    }
    xml.close().open("Syringe").leaf("SyringeSize", draft.syringe).close();
    xml.open("Macros").open("MacroVariable");
    for (const Step& step : draft.steps) {
        xml.leaf("MacroValues", stepText(step));
    }
    return xml.close().close().leaf("VERSION", "04").close().text();
}

}  // namespace vrn::samples
