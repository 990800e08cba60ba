#include "hosts/activex/form/Layout.h"

#include <algorithm>

#include "hosts/activex/form/Metrics.h"

namespace vrn::activex {

namespace {

// Lengths at 96 dpi.
constexpr int formMargin = 8;
constexpr int frameGap = 8;
constexpr int frameInset = 10;  // from a frame's line to what it holds
constexpr int captionGap = 5;   // from a frame's caption to what it holds
constexpr int controlGap = 6;
constexpr int buttonWidth = 78;
constexpr int buttonPadding = 10;  // what a button is higher than its text
constexpr int editPadding = 6;
constexpr int syringeWidth = 190;
constexpr int gridBorder = 2;
constexpr int initialCycleWidth = 96;
constexpr int leastDescriptionLines = 4;
constexpr int mostDescriptionLines = 10;

RECT rectOf(int left, int top, int width, int height) noexcept {
    return {left, top, left + std::max(width, 0), top + std::max(height, 0)};
}

class Planner {
  public:
    explicit Planner(const LayoutInput& input) noexcept
        : input_(input), margin_(px(formMargin)), gap_(px(frameGap)), inset_(px(frameInset)) {}

    Layout plan() noexcept {
        const int width = std::max<int>(input_.client.cx, 0);
        const int height = std::max<int>(input_.client.cy, 0);
        layout_.of(ControlId::fraMethodEditor) = rectOf(0, 0, width, height);
        const int bottom = placeNotice(width, height);
        const int top = placeUpperRow(width, height);
        placeLowerRow(width, top, bottom);
        return layout_;
    }

  private:
    [[nodiscard]] int px(int length) const noexcept { return scaled(length, input_.dpi); }
    [[nodiscard]] int captionHeight() const noexcept { return input_.textHeight + px(captionGap); }
    [[nodiscard]] int buttonHeight() const noexcept { return input_.textHeight + px(buttonPadding); }

    // What a frame holds: its inside, below the caption.
    [[nodiscard]] RECT insideOf(ControlId frame) const noexcept {
        const RECT& outer = layout_.of(frame);
        return rectOf(inset_, captionHeight(), widthOf(outer) - 2 * inset_, heightOf(outer) - captionHeight() - inset_);
    }

    int placeNotice(int width, int height) noexcept {
        const int top = height - margin_ - input_.noticeHeight;
        layout_.of(ControlId::lblCycleDateChanged) =
            rectOf(margin_, std::max(top, 0), width - 2 * margin_, input_.noticeHeight);
        return input_.noticeHeight > 0 ? top - gap_ : height - margin_;
    }

    int placeUpperRow(int width, int height) noexcept {
        const int lines =
            std::clamp(height / (6 * std::max(input_.textHeight, 1)), leastDescriptionLines, mostDescriptionLines);
        const int boxHeight = lines * input_.textHeight + px(editPadding);
        const int rowHeight = captionHeight() + boxHeight + inset_;
        const int syringe = std::min(px(syringeWidth), (width - 2 * margin_ - gap_) / 3);
        const int description = width - 2 * margin_ - gap_ - syringe;
        layout_.of(ControlId::fraMethodDescription) = rectOf(margin_, margin_, description, rowHeight);
        layout_.of(ControlId::txtMethodDescription) = insideOf(ControlId::fraMethodDescription);
        layout_.of(ControlId::fraSyringe) = rectOf(margin_ + description + gap_, margin_, syringe, rowHeight);
        const RECT inside = insideOf(ControlId::fraSyringe);
        layout_.of(ControlId::cboSyringe) = rectOf(inside.left, inside.top, widthOf(inside), input_.comboHeight);
        return margin_ + rowHeight + gap_;
    }

    void placeLowerRow(int width, int top, int bottom) noexcept {
        const int usable = width - 2 * margin_ - gap_;
        const int left = std::max(usable * 2 / 5, std::min(leastSequenceWidth(), usable / 2));
        layout_.of(ControlId::fraMacroSequence) = rectOf(margin_, top, left, bottom - top);
        placeSequence();
        const int x = margin_ + left + gap_;
        const int cyclesHeight = captionHeight() + std::max(input_.comboHeight, buttonHeight()) + inset_;
        layout_.of(ControlId::fraAvailableCycles) = rectOf(x, top, usable - left, cyclesHeight);
        placeCycles();
        const int gridTop = top + cyclesHeight + gap_;
        layout_.of(ControlId::fraArgument) = rectOf(x, gridTop, usable - left, bottom - gridTop);
        const RECT& outer = layout_.of(ControlId::fraArgument);
        const int border = px(gridBorder);
        layout_.of(ControlId::grdMacro) =
            rectOf(border, border, widthOf(outer) - 2 * border, heightOf(outer) - 2 * border);
    }

    [[nodiscard]] int leastSequenceWidth() const noexcept {
        return 3 * px(buttonWidth) + 2 * px(controlGap) + 2 * inset_;
    }

    void placeSequence() noexcept {
        const RECT inside = insideOf(ControlId::fraMacroSequence);
        const int listHeight = heightOf(inside) - buttonHeight() - px(controlGap);
        layout_.of(ControlId::lstMethodMacroList) = rectOf(inside.left, inside.top, widthOf(inside), listHeight);
        const int y = inside.top + std::max(listHeight, 0) + px(controlGap);
        const int width = std::min(px(buttonWidth), (widthOf(inside) - 2 * px(controlGap)) / 3);
        int x = inside.left;
        for (const auto button : {ControlId::cmdInsert, ControlId::cmdReplace, ControlId::cmdDelete}) {
            layout_.of(button) = rectOf(x, y, width, std::min<int>(buttonHeight(), inside.bottom - y));
            x += width + px(controlGap);
        }
    }

    void placeCycles() noexcept {
        const RECT inside = insideOf(ControlId::fraAvailableCycles);
        const int button = input_.initialCycle ? std::min(px(initialCycleWidth), widthOf(inside) / 2) : 0;
        const int combo = widthOf(inside) - (button > 0 ? button + px(controlGap) : 0);
        // Both on one axis: the higher of them sets the row.
        const int row = std::max(input_.comboHeight, buttonHeight());
        layout_.of(ControlId::cboSelectedMacro) =
            rectOf(inside.left, inside.top + (row - input_.comboHeight) / 2, combo, input_.comboHeight);
        layout_.of(ControlId::cmdDefCycle) =
            rectOf(inside.right - button, inside.top + (row - buttonHeight()) / 2, button, buttonHeight());
    }

    const LayoutInput& input_;
    int margin_;
    int gap_;
    int inset_;
    Layout layout_;
};

}  // namespace

RECT Layout::inForm(ControlId id) const noexcept {
    RECT place = of(id);
    if (const auto frame = frameOf(id); frame != ControlId::fraMethodEditor) {
        OffsetRect(&place, of(frame).left, of(frame).top);
    }
    return place;
}

Layout layOut(const LayoutInput& input) noexcept { return Planner(input).plan(); }

int noticeWidth(int clientWidth, int dpi) noexcept { return std::max(clientWidth - 2 * scaled(formMargin, dpi), 0); }

}  // namespace vrn::activex
