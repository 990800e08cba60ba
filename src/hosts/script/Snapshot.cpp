#include "hosts/script/Snapshot.h"

#include "catalogue/ParameterGrid.h"

namespace vrn::script {

namespace {

Json listJson(const controls::ItemList& list) {
    return {{"items", list.items()}, {"index", list.listIndex()}, {"enabled", list.enabled()}};
}

Json gridJson(const method::EditorState& state) {
    Json rows = Json::array();
    for (int row = 1; row < state.grdMacro.rowCount(); ++row) {
        const auto* const cells = state.grdMacro.row(row);
        const auto index = static_cast<std::size_t>(row);
        rows.push_back(
            {{"name", cells->name},
             {"value", cells->value},
             {"object", catalogue::IsObjectPosition(state, row)},
             {"hint", index < state.arrMacroParams.size() ? state.arrMacroParams[index].text : std::string()},
             {"items", cells->items()}});
    }
    return {{"enabled", state.grdMacro.enabled()}, {"rows", std::move(rows)}};
}

Json sequenceJson(const method::EditorState& state) {
    Json sequence = Json::array();
    for (const auto& entry : state.arrMethodMacros) {
        const bool hasValues = entry.MacroValues && !entry.MacroValues->empty();
        sequence.push_back(
            {{"MacroName", entry.MacroName}, {"MacroValues", hasValues ? Json(*entry.MacroValues) : Json()}});
    }
    return sequence;
}

}  // namespace

Json snapshot(const method::EditorState& state) {
    const auto enabled = [](const controls::Control& control) { return Json{{"enabled", control.enabled()}}; };
    return {{"IsChanged", state.IsChanged},
            {"booDisable", state.booDisable},
            {"booBaselineLoaded", state.booBaselineLoaded},
            {"booCycleDateChanged", state.booCycleDateChanged},
            {"txtMethodDescription",
             {{"text", state.txtMethodDescription.text()}, {"enabled", state.txtMethodDescription.enabled()}}},
            {"cboSyringe", listJson(state.cboSyringe)},
            {"cboSelectedMacro", listJson(state.cboSelectedMacro)},
            {"lstMethodMacroList", listJson(state.lstMethodMacroList)},
            {"cmdInsert", enabled(state.cmdInsert)},
            {"cmdReplace", enabled(state.cmdReplace)},
            {"cmdDelete", enabled(state.cmdDelete)},
            {"cmdDefCycle", {{"enabled", state.cmdDefCycle.enabled()}, {"visible", state.cmdDefCycle.visible()}}},
            {"lblCycleDateChanged",
             {{"text", state.lblCycleDateChanged.caption()}, {"visible", state.lblCycleDateChanged.visible()}}},
            {"grdMacro", gridJson(state)},
            {"arrMethodMacros", sequenceJson(state)},
            {"strAtomLine", state.strAtomLine}};
}

}  // namespace vrn::script
