#include "method/Enabling.h"

namespace vrn::method {

namespace {

// Runs one statement of the walk. A control that does not have the property is passed over; any other failure ends the walk.
template <typename Statement>
void passingOver(Statement&& statement) {
    try {
        statement();
    } catch (const errors::Error& error) {
        if (error.number() != errors::number::propertyNotSupported) {
            throw;
        }
    }
}

void enableContainer(EditorState& state, controls::Control& container, bool enable) {
    if (!container.isContainer()) {
        throw errors::Error(errors::vrnMethEdErrorInvalidXML, "oContainer can only be of type Frame or Picturebox",
                            "EnableControlsUserControl");
    }
    passingOver([&] { container.setEnabled(enable); });
    for (auto* const control : state.controlCollection) {
        if (control->kind() == controls::ControlKind::Menu || control->container() != &container) {
            continue;
        }
        if (control->isContainer()) {
            EnableControlsUserControl(state, *control, enable);
            continue;
        }
        passingOver([&] { control->setEnabled(enable); });
        if (control->kind() == controls::ControlKind::Grid) {
            EnableGrid(state, enable);
        }
    }
}

}  // namespace

void EnableControlsUserControl(EditorState& state, controls::Control& container, bool enable) noexcept {
    try {
        enableContainer(state, container, enable);
    } catch (...) {
        // A wrong container is a no-op, and a failure within the walk ends it: neither the host nor the caller hears of it.
        return;
    }
}

void EnableGrid(EditorState& state, bool enable) noexcept {
    standardHandler(state, "EnableGrid ", [&] {
        state.grdMacro.setEnabled(enable);
        state.grdMacro.setColour(enable ? controls::Grid::colourWindow : controls::Grid::colourButtonFace);
    });
}

void ChangeGridTopRow(EditorState& state) noexcept {
    standardHandler(state, "ChangeGridTopRow ", [&] {
        const bool hasParameters = !state.grdMacro.cellText(1, 0).empty();
        state.grdMacro.setTabStop(hasParameters);
        state.grdMacro.setEnabled(hasParameters);
        state.grdMacro.setTopRow(hasParameters ? 1 : 2);
        state.fraMethodEditor.repaint();
    });
}

void DisableMethod(EditorState& state, bool disable) {
    if (disable) {
        state.grdMacro.discardEdit();
    }
    state.booDisable = disable;
    EnableControlsUserControl(state, state.fraMethodEditor, !disable);
}

void EnableStepButtons(EditorState& state, bool enable) {
    const bool usable = enable && !state.booDisable;
    state.cmdDelete.setEnabled(usable);
    state.cmdReplace.setEnabled(usable);
}

void CleanGrdMacro(EditorState& state) noexcept {
    standardHandler(state, "CleanGrdMacro ", [&] {
        state.grdMacro.clearRows();
        state.strShownMacro.clear();
        state.booUnsavedEdits = false;
    });
}

}  // namespace vrn::method
