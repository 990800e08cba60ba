#include "hosts/sample/script/Snapshot.h"

#include "hosts/sample/script/GridInput.h"
#include "hosts/sample/script/UserInput.h"

namespace vrn::sample {

namespace {

using script::Json;

Json listJson(HWND form, const char* name) {
    const ListWindow list(form, name);
    return {{"items", list.items()}, {"index", list.selected()}, {"enabled", list.enabled()}};
}

Json buttonJson(HWND form, const char* name) { return {{"enabled", ChildWindow(form, name).enabled()}}; }

Json gridJson(HWND form) {
    const GridWindow grid(form);
    Json rows = Json::array();
    int row = 0;
    for (const auto& hint : grid.hints()) {
        ++row;
        rows.push_back({{"name", grid.name(row)}, {"value", grid.value(row)}, {"hint", hint}});
    }
    return {{"enabled", grid.enabled()}, {"rows", std::move(rows)}};
}

}  // namespace

Json snapshot(HWND form) {
    const ChildWindow description(form, "txtMethodDescription");
    const ChildWindow cycle(form, "cmdDefCycle");
    const ChildWindow warning(form, "lblCycleDateChanged");
    return {{"txtMethodDescription", {{"text", description.text()}, {"enabled", description.enabled()}}},
            {"cboSyringe", listJson(form, "cboSyringe")},
            {"cboSelectedMacro", listJson(form, "cboSelectedMacro")},
            {"lstMethodMacroList", listJson(form, "lstMethodMacroList")},
            {"cmdInsert", buttonJson(form, "cmdInsert")},
            {"cmdReplace", buttonJson(form, "cmdReplace")},
            {"cmdDelete", buttonJson(form, "cmdDelete")},
            {"cmdDefCycle", {{"enabled", cycle.enabled()}, {"visible", cycle.visible()}}},
            {"lblCycleDateChanged", {{"text", warning.text()}, {"visible", warning.visible()}}},
            {"grdMacro", gridJson(form)}};
}

}  // namespace vrn::sample
