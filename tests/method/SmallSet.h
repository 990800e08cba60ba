// A small instrument: two syringes, two wash stations, five macros. What most tests of the method and its editing load.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/EditorFixture.h"
#include "text/Lists.h"

namespace vrn::test {

inline constexpr std::string_view catalogueTime = "2020-01-01T00:00:00";

inline std::string smallMacros(std::string_view washTime = catalogueTime) {
    return macro("WASH", {"Volume(UL);5;1;10", "Station;WASH_STATION", "Hold Time;0;0;600"},
                 {"SET_BUSY(Hold Time)", "RINSE(Station,Volume)"}, washTime) +
           macro("COUNT", {"Number;3;1;20"}, {"COUNT(Number)"}) + macro("NOTE", {"Text", "More"}) +
           macro("A&amp;&lt;&gt;&quot;&apos;", {"P]]&gt;&amp;Q;1;0;9"}, {"ATOM(&amp;&lt;)"}) + macro("IDLE", {});
}

inline DocumentTexts smallSet(const std::vector<std::string>& steps, std::string_view syringe = "10uL",
                              const std::vector<std::string>& description = {"First", "Second"}) {
    return {catalogue(smallMacros()),
            objectList(object("SYRINGE", "10uL") + object("SYRINGE", "5&lt;&amp;uL") + object("WASH_STATION", "W1") +
                       object("WASH_STATION", "W2")),
            methodText(steps, syringe, description),
            configuration(category("UL", {"SL.Vol"}) + category("WASH_STATION", {"SL.Station"}) +
                          category("None", {"SL.Any"}))};
}

class SmallSetTest : public EditorFixture {
  protected:
    /// Loads the small set and forgets the box that tells of version 01.
    void loadSteps(const std::vector<std::string>& steps, const std::vector<std::string>& description = {"First"}) {
        load(smallSet(steps, "10uL", description));
        box->shown.clear();
    }
    /// The same without a method.
    void loadNothing() {
        auto texts = smallSet({});
        texts.method.clear();
        load(texts);
    }
    [[nodiscard]] std::vector<std::string> rows() { return state().lstMethodMacroList.items(); }
    /// Steps as the method would hold them.
    [[nodiscard]] std::vector<std::string> steps() {
        std::vector<std::string> texts;
        for (const auto& entry : state().arrMethodMacros) {
            texts.push_back(entry.MacroName + (entry.MacroValues ? "(" : "") +
                            text::join(entry.MacroValues.value_or(std::vector<std::string>()), ",") +
                            (entry.MacroValues ? ")" : ""));
        }
        return texts;
    }
    void choose(const std::string& macroName) {
        state().cboSelectedMacro.userSelect(state().cboSelectedMacro.indexOf(macroName));
    }
    void enter(int row, const std::string& value) { state().grdMacro.userEdit(row, value, true); }
    [[nodiscard]] std::string built() {
        const auto method = editor().GetMethodXml();
        return method ? method->xml() : "none";
    }
    /// The texts of the built method's elements of this name.
    [[nodiscard]] std::vector<std::string> builtTexts(const std::string& name) {
        std::vector<std::string> texts;
        if (const auto method = editor().GetMethodXml()) {
            for (const auto& node : elementsNamed(method->node(), name)) {
                texts.push_back(node.text());
            }
        }
        return texts;
    }
    /// An attribute of the built method's root; "none" without a method.
    [[nodiscard]] std::string builtAttribute(const std::string& name) {
        const auto method = editor().GetMethodXml();
        return method ? method->documentElement().attribute(name).value_or("") : "none";
    }
};

}  // namespace vrn::test
