#include "editing/SequenceEditing.h"

#include <algorithm>

#include "catalogue/ParameterGrid.h"
#include "catalogue/Validation.h"
#include "editing/Selection.h"
#include "method/Enabling.h"
#include "text/Lists.h"
#include "text/Numbers.h"

namespace vrn::editing {

namespace {

// Height of a list row and place of the press that re-selects the first row, in twips.
constexpr float rowHeight = 195;
constexpr float pressX = 736;
constexpr float pressY = 105;

std::size_t position(int row) { return static_cast<std::size_t>(row); }

std::string rowText(const method::EditorState& state, int row) {
    return text::twoDigits(position(row) + 1) + " " + state.arrMethodMacros[position(row)].MacroName;
}

void writeRow(method::EditorState& state, int row) { state.lstMethodMacroList.setItem(row, rowText(state, row)); }

std::string trimmedMacro(const method::EditorState& state) {
    const auto name = state.cboSelectedMacro.text();
    return std::string(text::trimBlanks(name));
}

void insertBehind(method::EditorState& state, int selected, std::vector<std::string> values) {
    auto& macros = state.arrMethodMacros;
    const int last = state.lstMethodMacroList.count() - 1;
    for (int i = last; i > selected + 1; --i) {
        macros[position(i)] = std::move(macros[position(i) - 1]);
        writeRow(state, i);
    }
    macros[position(selected) + 1] = {trimmedMacro(state), std::move(values)};
    writeRow(state, selected + 1);
}

void append(method::EditorState& state, std::vector<std::string> values) {
    const int last = state.lstMethodMacroList.count() - 1;
    // The name is taken as it stands here, where the other paths trim it.
    state.arrMethodMacros[position(last)] = {state.cboSelectedMacro.text(), std::move(values)};
    writeRow(state, last);
}

void insert(method::EditorState& state) {
    auto& list = state.lstMethodMacroList;
    state.booUpdating = true;
    state.IsChanged = true;
    state.booUnsavedEdits = false;
    auto values = text::split(catalogue::GetCurrenMacroParams(state), ",");
    const int selected = list.listIndex();
    list.addItem("");
    state.arrMethodMacros.resize(position(list.count()));
    if (selected != controls::noSelection) {
        insertBehind(state, selected, std::move(values));
    } else {
        append(state, std::move(values));
    }
    if (list.listIndex() == controls::noSelection) {
        list.setListIndex(0);
        method::EnableStepButtons(state, true);
    }
    list.bringIntoView(selected != controls::noSelection ? selected + 1 : list.count() - 1);
    if (list.count() == 1) {
        lstMethodMacroList_MouseDown(state, 1, 0, pressX, pressY);
    }
    state.booUpdating = false;
}

std::vector<std::string> gridValues(method::EditorState& state) {
    auto& grid = state.grdMacro;
    grid.setCurrentColumn(1);
    std::string values;
    for (int row = 1; row < grid.rowCount(); ++row) {
        values += grid.cellText(row, 1) + ",";
    }
    if (values.ends_with(',')) {
        values.pop_back();
    }
    return text::split(values, ",");
}

void replace(method::EditorState& state) {
    auto& list = state.lstMethodMacroList;
    state.booUpdating = true;
    if (list.listIndex() != controls::noSelection && state.cboSelectedMacro.listIndex() != controls::noSelection) {
        const int selected = list.listIndex();
        state.arrMethodMacros[position(selected)] = {trimmedMacro(state), gridValues(state)};
        writeRow(state, selected);
        list.bringIntoView(selected);
    }
    state.IsChanged = true;
    state.booUnsavedEdits = false;
    state.booUpdating = false;
}

void removeSelected(method::EditorState& state) {
    auto& list = state.lstMethodMacroList;
    const int count = list.count();
    const int selected = list.listIndex();
    if (count > 1 && selected != controls::noSelection) {
        state.IsChanged = true;
        state.arrMethodMacros.erase(state.arrMethodMacros.begin() + selected);
        list.removeItem(selected);
    } else if (count == 1) {
        // Taking the only step out leaves IsChanged as it was: there is no method to write any more. Without a selection the
        // removal fails.
        list.removeItem(selected);
        state.arrMethodMacros.assign(1, {});
    }
}

void deleteStep(method::EditorState& state) {
    auto& list = state.lstMethodMacroList;
    const int selected = list.listIndex();
    removeSelected(state);
    for (int row = 0; row < list.count(); ++row) {
        writeRow(state, row);
    }
    list.setListIndex(std::min(selected, list.count() - 1));
    if (list.count() == 0) {
        method::EnableStepButtons(state, false);
    }
    cboSelectedMacro_Click(state);
    if (list.listIndex() != controls::noSelection) {
        state.lngListMouseY = text::roundToInt32(rowHeight * static_cast<float>(list.listIndex()));
    }
}

}  // namespace

void cmdInsert_Click(method::EditorState& state) noexcept {
    method::standardHandler(state, "cmdInsert_Click ", [&] {
        if (catalogue::ValidateParams(state) && state.cboSelectedMacro.listIndex() != controls::noSelection) {
            insert(state);
        }
    });
}

void cmdReplace_Click(method::EditorState& state) noexcept {
    method::standardHandler(state, "cmdReplace_Click ", [&] {
        if (catalogue::ValidateParams(state)) {
            replace(state);
        }
    });
}

void cmdDelete_Click(method::EditorState& state) noexcept {
    method::standardHandler(state, "cmdDelete_Click ", [&] { deleteStep(state); });
}

}  // namespace vrn::editing
