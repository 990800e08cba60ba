// Where the child controls stand, for any size of the form: a function of lengths, without a window.
//
// What matters is served first. List and grid keep several rows as long as the height allows it: before they get less, frames
// and margins lose their air, then the description shrinks to one line, then the notice. Captions keep their width: where
// buttons do not fit side by side, they wrap.
#pragma once

#include <algorithm>
#include <array>

#include "hosts/activex/form/ControlIds.h"

namespace vrn::activex {

/// A rectangle in pixels.
struct Place {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    [[nodiscard]] constexpr int width() const noexcept { return right - left; }
    [[nodiscard]] constexpr int height() const noexcept { return bottom - top; }
    [[nodiscard]] constexpr bool empty() const noexcept { return right <= left || bottom <= top; }
    [[nodiscard]] constexpr bool operator==(const Place&) const noexcept = default;
};

/// What the places depend on, in pixels, measured with the fonts in use.
struct LayoutInput {
    int width = 0;  ///< of the whole form
    int height = 0;
    int dpi = 96;
    int textHeight = 0;   ///< of a line in the form's font
    int comboHeight = 0;  ///< of a closed drop-down list
    int listRowHeight = 0;
    int gridRowHeight = 0;
    int gridHeaderHeight = 0;
    int noticeHeight = 0;                      ///< of the wrapped notice at the lower edge, 0 while it is hidden
    bool initialCycle = false;                 ///< whether the button beside the catalogue is shown
    std::array<int, controlCount> captions{};  ///< widths of the captions of frames and buttons
};

/// One rectangle per child control, relative to its frame.
class Layout {
  public:
    [[nodiscard]] const Place& of(ControlId id) const noexcept { return places_[indexOf(id)]; }
    [[nodiscard]] Place& of(ControlId id) noexcept { return places_[indexOf(id)]; }
    /// The rectangle relative to the form.
    [[nodiscard]] Place inForm(ControlId id) const noexcept;

  private:
    std::array<Place, controlCount> places_{};
};

/// Description and syringe stand above; below them the sequence on the left, catalogue and parameters on the right, or one
/// above the other in a form that is narrow and tall. The notice is at the lower edge. In a form too low for all of it,
/// description and syringe get empty rectangles; no rectangle is ever negative, overlaps another one or leaves its frame.
[[nodiscard]] Layout layOut(const LayoutInput& input) noexcept;

/// The width that the caption of a frame or button has in this layout: one that is wider has to be cut.
[[nodiscard]] int captionRoom(ControlId id, const Place& place, int dpi) noexcept;

/// The width that a notice at the lower edge has.
[[nodiscard]] int noticeWidth(int formWidth, int dpi) noexcept;

/// The distance from a frame's edge to its caption, at 96 dpi.
inline constexpr int frameCaptionInset = 8;

}  // namespace vrn::activex
