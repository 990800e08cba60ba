#include "method/MethodReader.h"

#include "catalogue/Indexes.h"
#include "method/Enabling.h"
#include "method/MethodText.h"
#include "text/Lists.h"
#include "text/Numbers.h"

namespace vrn::method {

namespace {

void fillDescription(EditorState& state) {
    std::string lines;
    if (const auto description = state.domMethod.selectSingleNode("Method/Description")) {
        for (const auto& line : catalogue::contentChildren(description)) {
            lines += line.text();
            lines += text::crlf;
        }
    }
    state.txtMethodDescription.setText(ReverseDescription(std::move(lines)));
}

void selectSyringe(EditorState& state) {
    const auto size = state.domMethod.selectSingleNode("/Method/Syringe/SyringeSize");
    const auto index = size ? state.cboSyringe.indexOf(size.text()) : controls::noSelection;
    state.cboSyringe.setListIndex(index);
    if (index == controls::noSelection) {
        messageBox(state, "Unable to retreive syrsize from method", errors::styleInformation);
    }
}

MethodMacroEntry stepOf(const std::string& text) {
    const auto open = text.find('(');
    const auto close = text.find(')');
    if (open == std::string::npos || close == std::string::npos || close < open) {
        errors::throwInvalidProcedureCall();
    }
    MethodMacroEntry entry;
    entry.MacroName = text.substr(0, open);
    if (auto values = text::split(std::string_view(text).substr(open + 1, close - open - 1), ","); !values.empty()) {
        entry.MacroValues = std::move(values);
    }
    return entry;
}

// Reads one step; false when its cycle is not in the catalogue.
bool readStep(EditorState& state, const std::string& text) {
    auto entry = stepOf(text);
    if (state.cboSelectedMacro.indexOf(entry.MacroName) == controls::noSelection) {
        messageBox(state, "Cycle " + entry.MacroName + " does not exist.", errors::styleError);
        state.MethodEditorError.raise(errors::cycleDoesNotExist, "Cycle does not exist.", "FillMethod ");
        return false;
    }
    const auto index = static_cast<std::size_t>(state.lstMethodMacroList.count());
    state.lstMethodMacroList.addItem(text::twoDigits(index + 1) + " " + entry.MacroName);
    state.arrMethodMacros.resize(index + 1);
    state.arrMethodMacros[index] = std::move(entry);
    state.colMethodMacroValues.push_back(text);
    return true;
}

void readSequence(EditorState& state) {
    ResetSequence(state);
    const auto sequence = state.domMethod.selectSingleNode("Method/Macros/MacroVariable");
    if (!sequence) {
        return;
    }
    for (const auto& step : catalogue::contentChildren(sequence)) {
        // An element without text is how an empty sequence is written: no step.
        if (const auto text = step.text(); !text.empty() && !readStep(state, text)) {
            return;
        }
    }
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
            state.domMethod.loadXML(emptyMethodTemplate());
        }
        fillDescription(state);
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
