// Small literal documents: pieces of the four that a host hands over, put together by the tests that need them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "xml/Dom.h"

namespace vrn::test {

/// The texts of the four documents, in the order in which the editor takes them.
struct DocumentTexts {
    std::string macros;
    std::string objectList;
    std::string method;
    std::string configuration;
};

/// "<name>content</name>"; the content is XML.
inline std::string element(std::string_view name, std::string_view content) {
    const std::string tag(name);
    return "<" + tag + ">" + std::string(content) + "</" + tag + ">";
}

inline std::string elements(std::string_view name, const std::vector<std::string>& contents) {
    std::string all;
    for (const auto& content : contents) {
        all += element(name, content);
    }
    return all;
}

inline std::string repeated(std::string_view piece, std::size_t count) {
    std::string all;
    all.reserve(piece.size() * count);
    for (; count > 0; --count) {
        all += piece;
    }
    return all;
}

/// One macro of the catalogue. `definitions` are the parameters, `atoms` the atom calls.
inline std::string macro(std::string_view name, const std::vector<std::string>& definitions,
                         const std::vector<std::string>& atoms = {},
                         std::string_view timestamp = "2020-01-01T00:00:00") {
    return "<Macro><MacroName LastModifiedTimestamp=\"" + std::string(timestamp) + "\">" + std::string(name) +
           "</MacroName>" + element("Atom", elements("AtomValue", atoms)) +
           element("Variables", elements("Variable", definitions)) + "</Macro>";
}

inline std::string catalogue(const std::string& macros) { return element("Macros", macros); }

struct PropertyText {
    std::string name;
    std::string value;
};

inline std::string object(std::string_view type, std::string_view name,
                          const std::vector<PropertyText>& properties = {}) {
    std::string content = element("ObjectType", type) + element("ObjectName", name);
    for (const auto& property : properties) {
        content +=
            element("Property", element("PropertyName", property.name) + element("PropertyValue", property.value));
    }
    return element("OBJECT", content);
}

inline std::string objectList(const std::string& objects, const std::string& atoms = {}) {
    return element("LATESTKEX", element("OBJECTS", objects) + element("ATOMS", atoms));
}

/// One category of user-defined names, in a configuration or in a method.
inline std::string category(std::string_view key, const std::vector<std::string>& names) {
    return element("OBJECT", element("OBJECTNAME", key) + elements("UDON", names));
}

inline std::string configuration(const std::string& categories) {
    return element("Config", element("Arguments", categories));
}

/// An unsigned method, of a version that is loaded without verification.
struct MethodParts {
    std::vector<std::string> steps;  ///< texts such as "WASH(5,Tray1)"
    std::string syringe = "10uL";
    std::vector<std::string> descriptionLines = {};
    std::string head = element("VERSION", "01");  ///< XML before all else
    std::string cycles = {};                      ///< XML of the embedded cycles
    std::string attributes = {};                  ///< of the root, each after a blank
};
inline std::string methodOf(const MethodParts& parts) {
    return "<Method" + parts.attributes + ">" + parts.head +
           element("Description", elements("Line", parts.descriptionLines)) +
           element("Syringe", element("SyringeSize", parts.syringe)) +
           element("Macros", element("MacroVariable", elements("MacroValues", parts.steps)) +
                                 (parts.cycles.empty() ? "" : element("MacroData", parts.cycles))) +
           "</Method>";
}
inline std::string methodText(const std::vector<std::string>& steps, std::string_view syringe = "10uL",
                              const std::vector<std::string>& descriptionLines = {}) {
    return methodOf({.steps = steps, .syringe = std::string(syringe), .descriptionLines = descriptionLines});
}

inline xml::Document parsed(std::string_view text) {
    xml::Document document;
    document.loadXML(text);
    return document;
}

/// All nodes below this one, in document order.
inline std::vector<xml::Node> nodesBelow(const xml::Node& top) {
    std::vector<xml::Node> found;
    for (const auto& child : top.childNodes()) {
        found.push_back(child);
        const auto below = nodesBelow(child);
        found.insert(found.end(), below.begin(), below.end());
    }
    return found;
}

/// The elements below a node that have this local name, whatever their namespace.
inline std::vector<xml::Node> elementsNamed(const xml::Node& top, std::string_view localName) {
    std::vector<xml::Node> found;
    for (const auto& node : nodesBelow(top)) {
        const auto name = node.name();
        if (node.kind() == xml::NodeKind::Element && name.substr(name.find(':') + 1) == localName) {
            found.push_back(node);
        }
    }
    return found;
}

}  // namespace vrn::test
