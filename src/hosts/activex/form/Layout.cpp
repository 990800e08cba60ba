#include "hosts/activex/form/Layout.h"

#include <initializer_list>
#include <optional>

#include "hosts/activex/form/Scale.h"

namespace vrn::activex {

namespace {

// Lengths at 96 dpi.
constexpr int buttonWidth = 78;
constexpr int buttonPadding = 8;       // on either side of a caption, where there is room
constexpr int leastButtonPadding = 4;  // and where there is not
constexpr int editPadding = 6;
constexpr int syringeWidth = 190;
constexpr int gridBorder = 2;
constexpr int listBorder = 2;
constexpr int leastComboWidth = 100;  // beside a button
constexpr int narrow = 440;           // two columns side by side are cramped below this width
constexpr int noticeMargin = 8;

constexpr int leastDescriptionLines = 4;  // in a form with room for everything
constexpr int mostDescriptionLines = 10;
constexpr int leastStackedLines = 3;  // below that, two cramped columns are better than a low list

// Rows that list and grid are to have before something else gets more than it needs.
constexpr int comfortableRows = 8;
constexpr int usefulRows = 5;
constexpr int fewestRows = 2;

/// The empty space between things.
struct Air {
    int margin;         // around the form
    int frameGap;       // between frames
    int frameInset;     // from a frame's line to what it holds
    int captionGap;     // from a frame's caption to what it holds
    int controlGap;     // between controls in a frame
    int buttonPadding;  // what a button is higher than its text
};
constexpr Air roomy{8, 8, 10, 5, 6, 10};
constexpr Air tight{4, 5, 5, 2, 4, 7};
constexpr Air bare{2, 2, 3, 0, 2, 4};

/// One way to lay the form out.
struct Manner {
    Air air = roomy;
    int descriptionLines = 1;  // none: without description and syringe
    bool stacked = false;      // the sequence above the parameters
    bool wholeNotice = true;   // otherwise one line of it
};

Place placed(int left, int top, int width, int height) noexcept {
    return {left, top, left + std::max(width, 0), top + std::max(height, 0)};
}

constexpr std::initializer_list<ControlId> sequenceButtons{ControlId::cmdInsert, ControlId::cmdReplace,
                                                           ControlId::cmdDelete};

class Planner {
  public:
    Planner(const LayoutInput& input, const Manner& manner) noexcept
        : input_(input),
          manner_(manner),
          margin_(px(manner.air.margin)),
          gap_(px(manner.air.frameGap)),
          inset_(px(manner.air.frameInset)) {}

    const Layout& plan() noexcept {
        const int width = std::max(input_.width, 0);
        const int height = std::max(input_.height, 0);
        layout_.of(ControlId::fraMethodEditor) = placed(0, 0, width, height);
        const int bottom = placeNotice(width, height);
        const int top = placeUpperRow(width);
        const Place area = placed(margin_, top, width - 2 * margin_, bottom - top);
        if (manner_.stacked) {
            placeStacked(area);
        } else {
            placeSideBySide(area);
        }
        return layout_;
    }

    /// Rows in view, of list or grid, whichever has fewer.
    [[nodiscard]] int rows() const noexcept {
        const int list = layout_.of(ControlId::lstMethodMacroList).height() - 2 * px(listBorder);
        const int grid = layout_.of(ControlId::grdMacro).height() - input_.gridHeaderHeight;
        return std::min(list / std::max(input_.listRowHeight, 1), grid / std::max(input_.gridRowHeight, 1));
    }

    [[nodiscard]] bool captionsFit() const noexcept {
        const auto fits = [this](ControlId id) {
            const Place& place = layout_.of(id);
            return place.empty() || captionWidth(id) <= captionRoom(id, place, input_.dpi);
        };
        return fits(ControlId::fraMethodDescription) && fits(ControlId::fraSyringe) &&
               fits(ControlId::fraMacroSequence) && fits(ControlId::fraAvailableCycles) && fits(ControlId::cmdInsert) &&
               fits(ControlId::cmdReplace) && fits(ControlId::cmdDelete) && fits(ControlId::cmdDefCycle);
    }

  private:
    [[nodiscard]] int px(int length) const noexcept { return scaled(length, input_.dpi); }
    [[nodiscard]] int captionWidth(ControlId id) const noexcept { return input_.captions[indexOf(id)]; }
    [[nodiscard]] int captionHeight() const noexcept { return input_.textHeight + px(manner_.air.captionGap); }
    [[nodiscard]] int buttonHeight() const noexcept { return input_.textHeight + px(manner_.air.buttonPadding); }
    [[nodiscard]] int controlGap() const noexcept { return px(manner_.air.controlGap); }
    /// What a frame is wider than its caption at the least.
    [[nodiscard]] int frameWidthFor(ControlId frame) const noexcept {
        return captionWidth(frame) + 2 * px(frameCaptionInset);
    }

    // What a frame holds: its inside, below the caption.
    [[nodiscard]] Place insideOf(ControlId frame) const noexcept {
        const Place& outer = layout_.of(frame);
        const int top = std::min(captionHeight(), outer.height());
        return placed(std::min(inset_, outer.width()), top, outer.width() - 2 * inset_, outer.height() - top - inset_);
    }

    // A part of a length for the first of two, so that both get what they need at the least, if there is enough for both.
    [[nodiscard]] static int share(int whole, int wanted, int leastFirst, int leastSecond) noexcept {
        if (leastFirst + leastSecond > whole) {
            return whole / 2;
        }
        return std::clamp(wanted, leastFirst, whole - leastSecond);
    }

    int placeNotice(int width, int height) noexcept {
        if (input_.noticeHeight <= 0) {
            layout_.of(ControlId::lblCycleDateChanged) = placed(margin_, height, width - 2 * margin_, 0);
            return std::max(height - margin_, 0);
        }
        const int wanted = manner_.wholeNotice ? input_.noticeHeight : std::min(input_.noticeHeight, input_.textHeight);
        const int notice = std::min(wanted, std::max(height - 2 * margin_, 0));
        const int top = height - margin_ - notice;
        const int side = std::min(px(noticeMargin), width / 2);
        layout_.of(ControlId::lblCycleDateChanged) = placed(side, std::max(top, 0), width - 2 * side, notice);
        return std::max(top - gap_, 0);
    }

    int placeUpperRow(int width) noexcept {
        if (manner_.descriptionLines == 0) {
            return margin_;
        }
        const int box = std::max(manner_.descriptionLines * input_.textHeight + px(editPadding), input_.comboHeight);
        const int height = captionHeight() + box + inset_;
        const int usable = std::max(width - 2 * margin_ - gap_, 0);
        const int syringe = std::max(std::min(px(syringeWidth), usable / 3), frameWidthFor(ControlId::fraSyringe));
        const int description =
            share(usable, usable - syringe, frameWidthFor(ControlId::fraMethodDescription), syringe);
        layout_.of(ControlId::fraMethodDescription) = placed(margin_, margin_, description, height);
        layout_.of(ControlId::txtMethodDescription) = insideOf(ControlId::fraMethodDescription);
        layout_.of(ControlId::fraSyringe) = placed(margin_ + description + gap_, margin_, usable - description, height);
        const Place inside = insideOf(ControlId::fraSyringe);
        layout_.of(ControlId::cboSyringe) = placed(inside.left, inside.top, inside.width(), input_.comboHeight);
        return margin_ + height + gap_;
    }

    void placeSideBySide(const Place& area) noexcept {
        const int usable = std::max(area.width() - gap_, 0);
        // A row of buttons may take up to half of the width from the grid; where it needs more, the buttons wrap.
        int wanted = usable * 2 / 5;
        for (const int buttons : {widthInOneRow(), leastWidthInOneRow(), leastWidthInTwoRows()}) {
            if (buttons + 2 * inset_ <= usable / 2) {
                wanted = std::max(wanted, buttons + 2 * inset_);
                break;
            }
        }
        const int left = share(usable, wanted, frameWidthFor(ControlId::fraMacroSequence),
                               frameWidthFor(ControlId::fraAvailableCycles));
        placeSequence(placed(area.left, area.top, left, area.height()));
        placeParameters(placed(area.left + left + gap_, area.top, usable - left, area.height()));
    }

    void placeStacked(const Place& area) noexcept {
        const int usable = std::max(area.height() - gap_, 0);
        const int sequence = usable * 2 / 5;
        placeSequence(placed(area.left, area.top, area.width(), sequence));
        placeParameters(placed(area.left, area.top + sequence + gap_, area.width(), usable - sequence));
    }

    [[nodiscard]] int widestButton() const noexcept {
        int widest = 0;
        for (const auto button : sequenceButtons) {
            widest = std::max(widest, captionWidth(button));
        }
        return widest;
    }
    [[nodiscard]] int widthInOneRow() const noexcept {
        return 3 * std::max(px(buttonWidth), widestButton() + 2 * px(buttonPadding)) + 2 * controlGap();
    }

    [[nodiscard]] int leastWidthInOneRow() const noexcept {
        int all = 2 * controlGap();
        for (const auto button : sequenceButtons) {
            all += captionWidth(button) + 2 * px(leastButtonPadding);
        }
        return all;
    }
    [[nodiscard]] int leastWidthInTwoRows() const noexcept {
        return 2 * (widestButton() + 2 * px(leastButtonPadding)) + controlGap();
    }

    void placeSequence(const Place& frame) noexcept {
        layout_.of(ControlId::fraMacroSequence) = frame;
        const Place inside = insideOf(ControlId::fraMacroSequence);
        const int buttonRows = rowsOfButtons(inside.width());
        const int buttons = buttonRows * buttonHeight() + (buttonRows - 1) * controlGap();
        const int list = std::max(inside.height() - buttons - controlGap(), 0);
        layout_.of(ControlId::lstMethodMacroList) = placed(inside.left, inside.top, inside.width(), list);
        const int top = std::min(inside.top + list + controlGap(), inside.bottom);
        placeButtons({inside.left, top, inside.right, inside.bottom}, buttonRows);
    }

    /// In how many rows the buttons below the list stand, so that their captions fit.
    [[nodiscard]] int rowsOfButtons(int width) const noexcept {
        if (leastWidthInOneRow() <= width) {
            return 1;
        }
        return leastWidthInTwoRows() <= width ? 2 : 3;
    }

    void placeButtons(const Place& area, int rows) noexcept {
        if (rows == 1) {
            placeButtonsInARow(area);
            return;
        }
        const int columns = rows == 2 ? 2 : 1;
        const int width = (area.width() - (columns - 1) * controlGap()) / columns;
        int at = 0;
        for (const auto button : sequenceButtons) {
            const int x = area.left + at % columns * (width + controlGap());
            const int y = std::min(area.top + at / columns * (buttonHeight() + controlGap()), area.bottom);
            layout_.of(button) = placed(x, y, width, std::min(buttonHeight(), area.bottom - y));
            ++at;
        }
    }

    // All of one width; where that is too much, each as wide as its caption and its share of what is left.
    void placeButtonsInARow(const Place& area) noexcept {
        const int common = std::max(px(buttonWidth), widestButton() + 2 * px(buttonPadding));
        const bool equal = widthInOneRow() <= area.width();
        int captions = 0;
        for (const auto button : sequenceButtons) {
            captions += captionWidth(button);
        }
        const int padding = (area.width() - 2 * controlGap() - captions) / 3;
        int x = area.left;
        for (const auto button : sequenceButtons) {
            const int width = equal ? common : captionWidth(button) + padding;
            layout_.of(button) = placed(x, area.top, width, std::min(buttonHeight(), area.height()));
            x += width + controlGap();
        }
    }

    // The catalogue above, the grid below.
    void placeParameters(const Place& area) noexcept {
        const int inside = area.width() - 2 * inset_;
        const int button =
            input_.initialCycle
                ? std::min(std::max(px(buttonWidth), captionWidth(ControlId::cmdDefCycle) + 2 * px(buttonPadding)),
                           std::max(inside, 0))
                : 0;
        const bool beside = button > 0 && inside - button - controlGap() >= px(leastComboWidth);
        const int row = beside ? std::max(input_.comboHeight, buttonHeight()) : input_.comboHeight;
        const int below = button > 0 && !beside ? controlGap() + buttonHeight() : 0;
        const int height = std::min(captionHeight() + row + below + inset_, area.height());
        layout_.of(ControlId::fraAvailableCycles) = placed(area.left, area.top, area.width(), height);
        placeCycles(button, beside);

        const int top = std::min(area.top + height + gap_, area.bottom);
        layout_.of(ControlId::fraArgument) = placed(area.left, top, area.width(), area.bottom - top);
        const Place& outer = layout_.of(ControlId::fraArgument);
        const int border = std::min({px(gridBorder), outer.width() / 2, outer.height() / 2});
        layout_.of(ControlId::grdMacro) =
            placed(border, border, outer.width() - 2 * border, outer.height() - 2 * border);
    }

    void placeCycles(int button, bool beside) noexcept {
        const Place inside = insideOf(ControlId::fraAvailableCycles);
        const int width = inside.width() - (beside ? button + controlGap() : 0);
        // Both on one axis: the higher of them sets the row.
        const int row = beside ? std::max(input_.comboHeight, buttonHeight()) : input_.comboHeight;
        const auto within = [&](int x, int y, int wide, int high) {
            const int top = std::min(y, inside.bottom);
            return placed(x, top, wide, std::min(high, inside.bottom - top));
        };
        layout_.of(ControlId::cboSelectedMacro) =
            within(inside.left, inside.top + (row - input_.comboHeight) / 2, width, input_.comboHeight);
        if (button > 0) {
            layout_.of(ControlId::cmdDefCycle) =
                beside ? within(inside.right - button, inside.top + (row - buttonHeight()) / 2, button, buttonHeight())
                       : within(inside.left, inside.top + row + controlGap(), button, buttonHeight());
        }
    }

    const LayoutInput& input_;
    Manner manner_;
    int margin_;
    int gap_;
    int inset_;
    Layout layout_;
};

/// Goes through the ways to lay the form out, from the most comfortable to the most compact.
class Search {
  public:
    Search(const LayoutInput& input, bool wholeCaptions) noexcept : input_(input), wholeCaptions_(wholeCaptions) {}

    [[nodiscard]] std::optional<Layout> find() noexcept {
        const int lines = std::clamp(input_.height / (6 * std::max(input_.textHeight, 1)), leastDescriptionLines,
                                     mostDescriptionLines);
        const bool isNarrow = input_.width < scaled(narrow, input_.dpi);
        static_cast<void>((isNarrow && tryShrinking(lines, leastStackedLines, true)) || tryShrinking(lines, 1, false) ||
                          accept({tight}, usefulRows) || accept({bare}, usefulRows) ||
                          accept({bare, 1, false, false}, fewestRows));
        return found_;
    }

  private:
    bool tryShrinking(int lines, int fewestLines, bool stacked) noexcept {
        bool done = accept({roomy, lines, stacked}, comfortableRows);
        for (; !done && lines >= fewestLines; --lines) {
            done = accept({tight, lines, stacked}, comfortableRows);
        }
        return done;
    }

    bool accept(const Manner& manner, int rows) noexcept {
        Planner planner(input_, manner);
        const Layout& layout = planner.plan();
        if (planner.rows() < rows || (wholeCaptions_ && !planner.captionsFit())) {
            return false;
        }
        found_ = layout;
        return true;
    }

    const LayoutInput& input_;
    bool wholeCaptions_;
    std::optional<Layout> found_;
};

}  // namespace

Place Layout::inForm(ControlId id) const noexcept {
    Place place = of(id);
    if (const auto frame = frameOf(id); frame != ControlId::fraMethodEditor) {
        const Place& outer = of(frame);
        place = {place.left + outer.left, place.top + outer.top, place.right + outer.left, place.bottom + outer.top};
    }
    return place;
}

Layout layOut(const LayoutInput& input) noexcept {
    auto found = Search(input, true).find();
    if (!found) {
        found = Search(input, false).find();
    }
    return found ? *found : Planner(input, {bare, 0, false, false}).plan();
}

int captionRoom(ControlId id, const Place& place, int dpi) noexcept {
    switch (id) {
        case ControlId::cmdInsert:
        case ControlId::cmdReplace:
        case ControlId::cmdDelete:
        case ControlId::cmdDefCycle:
            return place.width() - 2 * scaled(leastButtonPadding, dpi);
        default:
            return place.width() - 2 * scaled(frameCaptionInset, dpi);
    }
}

int noticeWidth(int formWidth, int dpi) noexcept { return std::max(formWidth - 2 * scaled(noticeMargin, dpi), 0); }

}  // namespace vrn::activex
