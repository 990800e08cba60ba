#include "hosts/activex/form/GridPaint.h"

#include <vssym32.h>

#include <algorithm>
#include <array>

#include "hosts/activex/form/Metrics.h"
#include "hosts/activex/form/TextPaint.h"
#include "text/windows/Wide.h"

namespace vrn::activex {

namespace {

constexpr int arrowHalf = 3;  // lengths at 96 dpi
constexpr int dotWidth = 2;
constexpr UINT textFormat = DT_SINGLELINE | DT_VCENTER | DT_LEFT | DT_END_ELLIPSIS | DT_NOPREFIX;

struct RowColours {
    COLORREF ground;
    COLORREF text;
};

RowColours coloursOf(const GridPicture& picture, bool current) noexcept {
    // A grid that cannot be used can be read: its ground is grey, its text is not.
    if (!current) {
        return {colourOf(picture.model.colour()), GetSysColor(COLOR_WINDOWTEXT)};
    }
    return picture.focused ? RowColours{GetSysColor(COLOR_HIGHLIGHT), GetSysColor(COLOR_HIGHLIGHTTEXT)}
                           : RowColours{GetSysColor(COLOR_BTNFACE), GetSysColor(COLOR_BTNTEXT)};
}

void fill(HDC context, const RECT& place, COLORREF colour) noexcept {
    SetBkColor(context, colour);
    ExtTextOutW(context, 0, 0, ETO_OPAQUE, &place, nullptr, 0, nullptr);
}

void paintText(HDC context, const GridPicture& picture, RECT place, const std::string& text) {
    InflateRect(&place, -scaled(gridTextInset, picture.geometry.dpi), 0);
    HDC const metrics = picture.metrics != nullptr ? picture.metrics : context;
    drawText(context, metrics, text::toWide(text), place, textFormat);
}

void paintArrow(HDC context, const RECT& place, COLORREF colour, int dpi) noexcept {
    const LONG half = scaled(arrowHalf, dpi);
    const LONG x = (place.left + place.right) / 2;
    const LONG y = (place.top + place.bottom - half) / 2;
    const std::array<POINT, 3> corners{{{x - half, y}, {x + half, y}, {x, y + half}}};
    const UniqueBrush brush(CreateSolidBrush(colour));
    const UniquePen pen(CreatePen(PS_SOLID, 1, colour));
    const Selected selectedBrush(context, brush.get());
    const Selected selectedPen(context, pen.get());
    Polygon(context, corners.data(), static_cast<int>(corners.size()));
}

// The button that the field is under the mouse. Answers the colour of what is on it.
COLORREF paintButton(HDC context, RECT place, const GridPicture& picture) noexcept {
    COLORREF colour = GetSysColor(COLOR_BTNTEXT);
    if (picture.buttons == nullptr) {
        DrawFrameControl(context, &place, DFC_BUTTON, DFCS_BUTTONPUSH | (picture.pressed ? DFCS_PUSHED : 0U));
        return colour;
    }
    const int state = picture.pressed ? PBS_PRESSED : PBS_HOT;
    DrawThemeBackground(picture.buttons, context, BP_PUSHBUTTON, state, &place, nullptr);
    GetThemeColor(picture.buttons, BP_PUSHBUTTON, state, TMT_TEXTCOLOR, &colour);
    return colour;
}

// Three dots: the sign of a button that leads to more choices.
void paintMenuField(HDC context, const GridPicture& picture, int row, COLORREF colour) noexcept {
    RECT place = picture.geometry.menu(row);
    --place.bottom;
    if (row == picture.hotMenu) {
        colour = paintButton(context, place, picture);
    }
    const int dot = std::max(scaled(dotWidth, picture.geometry.dpi), 1);
    const int all = 5 * dot;
    if (widthOf(place) < all) {
        return;
    }
    const LONG y = (place.top + place.bottom - dot) / 2;
    LONG x = (place.left + place.right - all) / 2;
    for (int i = 0; i < 3; ++i, x += 2 * dot) {
        fill(context, {x, y, x + dot, y + dot}, colour);
    }
}

// The lines on the right of the name and of the value, and below the row.
void paintLines(HDC context, const GridGeometry& geometry, int number) noexcept {
    const COLORREF colour = GetSysColor(COLOR_3DLIGHT);
    const RECT row = geometry.row(number);
    const LONG field = geometry.menu(number).left;
    fill(context, {geometry.nameWidth - 1, row.top, geometry.nameWidth, row.bottom}, colour);
    fill(context, {field - 1, row.top, field, row.bottom}, colour);
    fill(context, {row.left, row.bottom - 1, row.right, row.bottom}, colour);
}

// The value as the user sees it: what is being entered goes before what the cell holds.
std::string shownValue(const controls::Grid& model, int row) {
    const auto& pending = model.pendingEdit();
    return pending && pending->row == row ? pending->text : model.cellText(row, 1);
}

void paintRow(HDC context, const GridPicture& picture, int row) {
    const auto& geometry = picture.geometry;
    const bool current = row == picture.currentRow;
    const auto colours = coloursOf(picture, current);
    const RECT place = geometry.row(row);
    fill(context, place, colours.ground);
    paintLines(context, geometry, row);
    paintMenuField(context, picture, row, colours.text);
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, colours.text);
    paintText(context, picture, geometry.name(row), picture.model.cellText(row, 0));
    RECT value = geometry.entry(row);
    --value.right;
    if (row == picture.editedRow) {
        --value.bottom;
        fill(context, value, GetSysColor(COLOR_WINDOW));
        return;
    }
    if (picture.model.row(row)->style == controls::EditStyle::DropDownList) {
        const RECT arrow = geometry.arrow(row);
        paintArrow(context, arrow, colours.text, geometry.dpi);
        value.right = arrow.left;
    }
    paintText(context, picture, value, shownValue(picture.model, row));
    if (current && picture.focused) {
        RECT focus = geometry.entry(row);
        --focus.right;
        --focus.bottom;
        SetBkColor(context, colours.ground);
        SetTextColor(context, colours.text);
        DrawFocusRect(context, &focus);
    }
}

}  // namespace

COLORREF colourOf(std::uint32_t colour) noexcept {
    constexpr std::uint32_t systemColour = 0x80000000U;
    return (colour & systemColour) != 0 ? GetSysColor(static_cast<int>(colour & 0xFFU)) : colour;
}

void paintGrid(HDC context, const GridPicture& picture, const RECT& area) {
    const auto& geometry = picture.geometry;
    const Selected font(context, picture.font);
    const int first = geometry.top + std::max<int>(area.top - geometry.headerHeight, 0) / geometry.rowHeight;
    int row = first;
    for (; row < geometry.rowCount && geometry.row(row).top < area.bottom; ++row) {
        paintRow(context, picture, row);
    }
    RECT ground = area;
    ground.top = std::max<LONG>(ground.top, geometry.row(row).top);
    if (ground.top < ground.bottom) {
        fill(context, ground, colourOf(picture.model.colour()));
    }
}

void paintGridHeader(HDC context, const GridPicture& picture) {
    const auto& geometry = picture.geometry;
    const Selected font(context, picture.font);
    SetTextColor(context, GetSysColor(COLOR_BTNTEXT));
    SetBkMode(context, TRANSPARENT);
    for (int column = 0; column < 2; ++column) {
        RECT place{column == 0 ? 0 : geometry.nameWidth, 0, column == 0 ? geometry.nameWidth : geometry.width,
                   geometry.headerHeight};
        fill(context, place, GetSysColor(COLOR_BTNFACE));
        DrawEdge(context, &place, BDR_RAISEDINNER, BF_RECT);
        SetBkMode(context, TRANSPARENT);
        paintText(context, picture, place, picture.model.cellText(0, column));
    }
}

}  // namespace vrn::activex
