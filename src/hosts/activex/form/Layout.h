// Where the child controls stand, for any size of the form.
#pragma once

#include <windows.h>

#include <array>

#include "hosts/activex/form/ControlIds.h"

namespace vrn::activex {

/// What the places depend on, in pixels.
struct LayoutInput {
    SIZE client{};  ///< of the whole form
    int dpi = 96;
    int textHeight = 0;         ///< of a line in the form's font
    int comboHeight = 0;        ///< of a closed drop-down list
    int noticeHeight = 0;       ///< of the notice at the lower edge, 0 while it is hidden
    bool initialCycle = false;  ///< whether the button beside the catalogue is shown
};

/// One rectangle per child control, relative to its frame.
class Layout {
  public:
    [[nodiscard]] const RECT& of(ControlId id) const noexcept { return places_[indexOf(id)]; }
    [[nodiscard]] RECT& of(ControlId id) noexcept { return places_[indexOf(id)]; }
    /// The rectangle relative to the form.
    [[nodiscard]] RECT inForm(ControlId id) const noexcept;

  private:
    std::array<RECT, controlCount> places_{};
};

/// Frames and grid grow with the form: description over the whole upper edge with the syringe beside it, the sequence on the
/// left, catalogue and parameters on the right. Below the smallest useful size rectangles become empty, never negative.
[[nodiscard]] Layout layOut(const LayoutInput& input) noexcept;

/// The width that a notice at the lower edge has.
[[nodiscard]] int noticeWidth(int clientWidth, int dpi) noexcept;

}  // namespace vrn::activex
