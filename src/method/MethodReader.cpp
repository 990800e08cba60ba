#include "method/MethodReader.h"

#include "method/Enabling.h"
#include "method/Format.h"
#include "method/MethodContent.h"
#include "text/Lists.h"
#include "text/Numbers.h"

namespace vrn::method {

namespace {

void selectSyringe(EditorState& state) {
    const auto size = format::textOf(state.domMethod, format::syringeSize);
    const auto index = size ? state.cboSyringe.indexOf(*size) : controls::noSelection;
    state.cboSyringe.setListIndex(index);
    if (index == controls::noSelection) {
        messageBox(state, "Unable to retreive syrsize from method", errors::styleInformation);
    }
}

// Reads one step; false when its cycle is not in the catalogue.
bool readStep(EditorState& state, const xml::Node& node, std::string_view text) {
    auto entry = format::stepOf(text);
    if (state.cboSelectedMacro.indexOf(entry.MacroName) == controls::noSelection) {
        messageBox(state, "Cycle " + entry.MacroName + " does not exist.", errors::styleError);
        state.MethodEditorError.raise(errors::cycleDoesNotExist, "Cycle does not exist.", "FillMethod ");
        return false;
    }
    const auto index = static_cast<std::size_t>(state.lstMethodMacroList.count());
    auto row = text::twoDigits(index + 1);
    state.lstMethodMacroList.addItem(std::move(row.append(1, ' ').append(entry.MacroName)));
    state.arrMethodMacros.resize(index + 1);
    state.arrMethodMacros[index] = std::move(entry);
    state.colMethodMacroValues.push_back(node);
    return true;
}

void readSequence(EditorState& state) {
    ResetSequence(state);
    forEachStep(state.domMethod,
                [&state](const xml::Node& node, std::string_view text) { return readStep(state, node, text); });
}

}  // namespace

void ResetSequence(EditorState& state) {
    state.lstMethodMacroList.clear();
    state.arrMethodMacros.assign(1, {});
    state.colMethodMacroValues.clear();
}

void FillMethod(EditorState& state) noexcept {
    standardHandler(state, "FillMethod ", [&] {
        state.txtMethodDescription.setText({});
        ResetSequence(state);
        if (!state.domMethod.hasChildNodes()) {
            state.domMethod.loadXML(format::emptyMethod());
        }
        state.txtMethodDescription.setText(descriptionOf(state.domMethod));
        selectSyringe(state);
        // A step that cannot be read ends the sequence there; what was read before it stays and is shown.
        standardHandler(state, "FillMethod ", [&] { readSequence(state); });
        EnableStepButtons(state, !sequenceIsEmpty(state));
        if (!sequenceIsEmpty(state)) {
            state.lstMethodMacroList.setListIndex(0);
        }
    });
}

}  // namespace vrn::method
