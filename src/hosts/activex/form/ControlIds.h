// Child identifiers of the form's windows, one per child control of the engine and in its order: what `GetDlgItem` finds below
// the control's frame. Programs that drive the form from outside rely on them; they never change.
#pragma once

#include <cstddef>

namespace vrn::activex {

enum class ControlId : int {
    fraMethodEditor = 100,
    fraMethodDescription,
    txtMethodDescription,
    fraSyringe,
    cboSyringe,
    fraMacroSequence,
    lstMethodMacroList,
    cmdInsert,
    cmdReplace,
    cmdDelete,
    fraAvailableCycles,
    cboSelectedMacro,
    cmdDefCycle,
    fraArgument,
    grdMacro,
    txtToolTip,
    lblCycleDateChanged,
};

inline constexpr std::size_t controlCount = 17;  ///< the menu has no window
inline constexpr int gridHeaderId = 200;         ///< windows inside the grid
inline constexpr int gridTextEditorId = 201;
inline constexpr int gridListEditorId = 202;

/// A window property that description, list and grid have while they are read-only: they can be scrolled and copied from, but
/// the user can change nothing and select no other step. The windows of other controls are disabled instead.
inline constexpr const wchar_t* readOnlyProperty = L"vrnMethodReadOnly";

[[nodiscard]] constexpr std::size_t indexOf(ControlId id) noexcept {
    return static_cast<std::size_t>(static_cast<int>(id) - static_cast<int>(ControlId::fraMethodEditor));
}

/// The frame that holds a control; the outermost frame holds itself.
[[nodiscard]] constexpr ControlId frameOf(ControlId id) noexcept {
    switch (id) {
        case ControlId::txtMethodDescription:
            return ControlId::fraMethodDescription;
        case ControlId::cboSyringe:
            return ControlId::fraSyringe;
        case ControlId::lstMethodMacroList:
        case ControlId::cmdInsert:
        case ControlId::cmdReplace:
        case ControlId::cmdDelete:
            return ControlId::fraMacroSequence;
        case ControlId::cboSelectedMacro:
        case ControlId::cmdDefCycle:
            return ControlId::fraAvailableCycles;
        case ControlId::grdMacro:
            return ControlId::fraArgument;
        default:
            return ControlId::fraMethodEditor;
    }
}

}  // namespace vrn::activex
