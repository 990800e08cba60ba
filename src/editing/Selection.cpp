#include "editing/Selection.h"

#include <optional>

#include "catalogue/ParameterGrid.h"
#include "catalogue/Validation.h"
#include "method/Enabling.h"
#include "method/Timestamps.h"
#include "text/Lists.h"
#include "text/Numbers.h"

namespace vrn::editing {

namespace {

using controls::noSelection;

constexpr float toolTipOffsetX = 500;
constexpr float toolTipOffsetY = 1300;

void showStepValues(method::EditorState& state, const std::optional<std::vector<std::string>>& values) {
    auto& grid = state.grdMacro;
    if (!values) {
        grid.setCellText(1, 1, {});
        return;
    }
    state.booUpdating = true;
    for (int v = 0; std::cmp_less(v, values->size()) && v < grid.rowCount() - 1; ++v) {
        grid.setCellText(v + 1, 1, (*values)[static_cast<std::size_t>(v)]);
    }
    state.booUpdating = false;
}

void showStep(method::EditorState& state) {
    const int row = state.lstMethodMacroList.listIndex();
    if (row == noSelection) {
        return;
    }
    state.booUpdating = true;
    // A copy: the selection handlers run messages in which the host may load another method.
    const auto entry = state.arrMethodMacros.at(static_cast<std::size_t>(row));
    state.booMacroShown = true;
    method::CleanGrdMacro(state);
    catalogue::macroParams(state, entry.MacroName);
    state.booListSelected = true;
    if (state.cboSelectedMacro.count() > 0) {
        int index = noSelection;
        GetMacroIndex(state, entry.MacroName, index);
        if (index != noSelection) {
            state.cboSelectedMacro.setListIndex(index);
        }
    }
    showStepValues(state, entry.MacroValues);
    state.booGridFromSequence = true;
    state.booGridFromCatalogue = false;
    state.booUpdating = false;
    static_cast<void>(catalogue::ValidateParams(state));
}

void showCatalogueEntry(method::EditorState& state) {
    state.booUpdating = true;
    state.strAtomLine.clear();
    state.arrObjectPositions.assign(1, 0);
    const auto text = state.cboSelectedMacro.text();
    method::CleanGrdMacro(state);
    state.booGridFromCatalogue = true;
    catalogue::macroParams(state, std::string(text::trimBlanks(text)));
    state.booGridFromSequence = false;
    state.booMacroShown = true;
    state.booUpdating = false;
    state.booListSelected = false;
    method::RefreshCycleDateNotice(state);
}

}  // namespace

void lstMethodMacroList_Click(method::EditorState& state) noexcept {
    method::standardHandler(state, "lstMethodMacroList_Click ", [&] { showStep(state); });
}

void lstMethodMacroList_MouseDown(method::EditorState& state, int button, int /*shift*/, float x, float y) noexcept {
    method::standardHandler(state, "lstMethodMacroList_MouseDown ", [&] {
        if (button == 1) {
            state.txtToolTip.moveTo(x + toolTipOffsetX, y + toolTipOffsetY);
            state.txtToolTip.setVisible(false);
            state.lstMethodMacroList.setListIndex(state.lstMethodMacroList.listIndex());
        } else if (button == 2) {
            state.txtToolTip.setVisible(false);
        }
        state.lngListMouseY = text::roundToInt32(y);
    });
}

void cboSelectedMacro_Click(method::EditorState& state) noexcept {
    method::standardHandler(state, "cboSelectedMacro_Click ", [&] { showCatalogueEntry(state); });
}

void cmdDefCycle_Click(method::EditorState& state) noexcept {
    method::standardHandler(state, "cmdDefCycle_Click ", [&] {
        if (state.lstMethodMacroList.count() > 0) {
            lstMethodMacroList_Click(state);
        }
    });
}

void cboSyringe_click(method::EditorState& state) noexcept {
    method::standardHandler(state, "cboSyringe_click ", [&] {
        state.IsChanged = true;
        auto& grid = state.grdMacro;
        if (grid.rowCount() == 1) {
            return;
        }
        std::vector<std::string> values;
        for (int row = 1; row < grid.rowCount(); ++row) {
            values.push_back(grid.cellText(row, 1));
        }
        const auto macro = state.strShownMacro;
        const bool unsavedEdits = state.booUnsavedEdits;
        method::CleanGrdMacro(state);
        catalogue::macroParams(state, macro);
        showStepValues(state, values);
        state.booUnsavedEdits = unsavedEdits;
    });
}

void GetMacroIndex(const method::EditorState& state, const std::string& name, int& index) noexcept {
    method::standardHandler(state, "GetMacroIndex ", [&] {
        if (const int found = state.cboSelectedMacro.indexOf(name); found != noSelection) {
            index = found;
        }
    });
}

}  // namespace vrn::editing
