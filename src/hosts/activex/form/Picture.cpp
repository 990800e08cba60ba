#include "hosts/activex/form/Picture.h"

#include <algorithm>

#include "hosts/activex/form/FormMeasures.h"
#include "hosts/activex/form/FramePaint.h"
#include "hosts/activex/form/GridPaint.h"
#include "hosts/activex/form/Layout.h"
#include "hosts/activex/form/Metrics.h"
#include "hosts/activex/form/TextPaint.h"
#include "text/windows/Wide.h"

namespace vrn::activex {

namespace {

constexpr int comboPadding = 8;  // lengths at 96 dpi
constexpr int textInset = 3;
constexpr int rowPadding = 7;

class Picture {
  public:
    Picture(HDC context, const SIZE& size, const Look& look, const method::EditorState& state)
        : context_(context),
          look_(look),
          state_(state),
          metrics_(look.measuring(context)),
          lineHeight_(textSize(metrics_, look.font).lineHeight) {
        auto input = measuredTexts(metrics_, size, look, state);
        const int gridLine = textSize(metrics_, look.gridFont).lineHeight;
        input.comboHeight = lineHeight_ + px(comboPadding);
        input.listRowHeight = gridLine;
        input.gridRowHeight = gridLine + px(rowPadding);
        input.gridHeaderHeight = input.gridRowHeight;
        layout_ = layOut(input);
    }

    void draw() {
        const RECT all = place(ControlId::fraMethodEditor);
        FillRect(context_, &all, GetSysColorBrush(COLOR_BTNFACE));
        for (const auto& [frame, id] : {std::pair(&state_.fraMethodDescription, ControlId::fraMethodDescription),
                                        std::pair(&state_.fraSyringe, ControlId::fraSyringe),
                                        std::pair(&state_.fraMacroSequence, ControlId::fraMacroSequence),
                                        std::pair(&state_.fraAvailableCycles, ControlId::fraAvailableCycles)}) {
            paintGroupBox(context_, place(id), text::toWide(frame->caption()), frame->enabled(), look_, nullptr);
        }
        const auto& description = state_.txtMethodDescription;
        text(field(ControlId::txtMethodDescription, description.enabled()), description.text(), true,
             DT_LEFT | DT_WORDBREAK | DT_NOPREFIX);
        combo(ControlId::cboSyringe, state_.cboSyringe);
        combo(ControlId::cboSelectedMacro, state_.cboSelectedMacro);
        button(ControlId::cmdInsert, state_.cmdInsert);
        button(ControlId::cmdReplace, state_.cmdReplace);
        button(ControlId::cmdDelete, state_.cmdDelete);
        button(ControlId::cmdDefCycle, state_.cmdDefCycle);
        list();
        grid();
        if (state_.lblCycleDateChanged.visible()) {
            text(place(ControlId::lblCycleDateChanged), state_.lblCycleDateChanged.caption(), true,
                 DT_LEFT | DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL | DT_END_ELLIPSIS);
        }
    }

  private:
    [[nodiscard]] int px(int length) const noexcept { return scaled(length, look_.dpi); }
    [[nodiscard]] RECT place(ControlId id) const noexcept { return toRect(layout_.inForm(id)); }

    void text(RECT where, const std::string& utf8, bool enabled, UINT format) const {
        SetBkMode(context_, TRANSPARENT);
        SetTextColor(context_, GetSysColor(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
        drawText(context_, metrics_, text::toWide(utf8), where, format);
    }

    // An entry field with its border; answers what is inside.
    RECT field(ControlId id, bool enabled) const {
        RECT where = place(id);
        paintFieldBorder(context_, where, enabled, look_, nullptr);
        InflateRect(&where, -px(textInset), -px(textInset));
        return where;
    }
    void combo(ControlId id, const controls::ComboBox& model) const {
        text(field(id, model.enabled()), model.text(), true,
             DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
        RECT arrow = place(id);
        InflateRect(&arrow, -2, -2);
        arrow.left = std::max<LONG>(arrow.left, arrow.right - GetSystemMetrics(SM_CXVSCROLL));
        DrawFrameControl(context_, &arrow, DFC_SCROLL,
                         static_cast<UINT>(DFCS_SCROLLCOMBOBOX | (model.enabled() ? 0 : DFCS_INACTIVE)));
    }

    void button(ControlId id, const controls::Button& model) const {
        if (!model.visible()) {
            return;
        }
        RECT where = place(id);
        DrawFrameControl(context_, &where, DFC_BUTTON, DFCS_BUTTONPUSH);
        text(where, model.caption(), model.enabled(), DT_SINGLELINE | DT_VCENTER | DT_CENTER | DT_HIDEPREFIX);
    }

    void list() const {
        const auto& model = state_.lstMethodMacroList;
        RECT row = field(ControlId::lstMethodMacroList, model.enabled());
        const LONG bottom = row.bottom;
        const Selected font(context_, look_.gridFont);
        const Selected measuredFont(metrics_, look_.gridFont);
        const int height = textSize(metrics_, look_.gridFont).lineHeight;
        for (int i = 0; i < model.count() && row.top + height <= bottom; ++i) {
            row.bottom = row.top + height;
            if (i == model.listIndex()) {
                FillRect(context_, &row, GetSysColorBrush(COLOR_BTNFACE));
            }
            text(row, model.item(i), true, DT_SINGLELINE | DT_LEFT | DT_END_ELLIPSIS | DT_NOPREFIX);
            row.top = row.bottom;
        }
    }

    void grid() const {
        const auto& model = state_.grdMacro;
        paintFieldBorder(context_, place(ControlId::fraArgument), model.enabled(), look_, nullptr);
        const RECT where = place(ControlId::grdMacro);
        const Selected measuredFont(metrics_, look_.gridFont);
        const int height = textSize(metrics_, look_.gridFont).lineHeight;
        GridGeometry geometry;
        geometry.dpi = look_.dpi;
        geometry.width = widthOf(where);
        geometry.height = heightOf(where);
        geometry.headerHeight = height + px(rowPadding);
        geometry.rowHeight = height + px(rowPadding);
        geometry.nameWidth = geometry.usualNameWidth();
        geometry.rowCount = model.rowCount();
        const SavedContext saved(context_);
        IntersectClipRect(context_, where.left, where.top, where.right, where.bottom);
        OffsetWindowOrgEx(context_, -where.left, -where.top, nullptr);
        GridPicture picture{geometry, model, look_.gridFont, false, model.currentRow()};
        picture.metrics = look_.metrics;
        paintGridHeader(context_, picture);
        paintGrid(context_, picture, {0, geometry.headerHeight, geometry.width, geometry.height});
    }

    HDC context_;
    const Look& look_;
    const method::EditorState& state_;
    HDC metrics_;
    int lineHeight_;
    Layout layout_;
};

}  // namespace

void drawForm(const Canvas& canvas, const method::EditorState& state, const shell::FontRule& rule, HFONT font) {
    const auto systemFont = messageFont(canvas.dpi);
    const auto gridFont = ruleFont(rule, canvas.dpi);
    const auto givenFont = font != nullptr ? fontAt(font, canvas.dpi) : nullptr;
    // Measured in the metafile's units: one for one of the other context's pixels.
    const WindowContext screen(nullptr);
    HDC const other = canvas.device != nullptr ? canvas.device : screen.get();
    const Look look{canvas.dpi, givenFont ? givenFont.get() : systemFont.get(), gridFont.get(), false,
                    isMetafile(canvas.context) ? other : nullptr};
    HDC const context = canvas.context;
    const SavedContext saved(context);
    // By the window's origin: a metafile must leave the viewport to those who show it.
    OffsetWindowOrgEx(context, -canvas.bounds.left, -canvas.bounds.top, nullptr);
    const SIZE size{widthOf(canvas.bounds), heightOf(canvas.bounds)};
    IntersectClipRect(context, 0, 0, size.cx, size.cy);
    const Selected selected(context, look.font);
    const Selected measured(look.measuring(context), look.font);
    Picture(context, size, look, state).draw();
}

}  // namespace vrn::activex
