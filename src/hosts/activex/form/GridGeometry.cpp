#include "hosts/activex/form/GridGeometry.h"

#include <algorithm>

#include "controls/Grid.h"
#include "hosts/activex/form/Metrics.h"

namespace vrn::activex {

namespace {

constexpr int arrowWidth = 17;  // lengths at 96 dpi
constexpr int menuWidth = 20;
constexpr int ownNameWidth = 150;

using controls::Grid;

}  // namespace

int GridGeometry::fieldWidth(int wanted) const noexcept {
    return std::clamp(scaled(wanted, dpi), 0, std::max(width - nameWidth, 0) / 3);
}

int GridGeometry::usualNameWidth() const noexcept {
    return std::max(std::min(scaled(ownNameWidth, dpi), width / 2), width * 2 / 5);
}

RECT GridGeometry::row(int row) const noexcept {
    const int y = headerHeight + (row - top) * rowHeight;
    return {0, y, width, y + rowHeight};
}

RECT GridGeometry::name(int row) const noexcept {
    RECT place = this->row(row);
    place.right = nameWidth;
    return place;
}

RECT GridGeometry::value(int row) const noexcept {
    RECT place = this->row(row);
    place.left = nameWidth;
    return place;
}

RECT GridGeometry::entry(int row) const noexcept {
    RECT place = value(row);
    place.right -= fieldWidth(menuWidth);
    return place;
}

RECT GridGeometry::arrow(int row) const noexcept {
    RECT place = entry(row);
    place.left = place.right - fieldWidth(arrowWidth);
    return place;
}

RECT GridGeometry::menu(int row) const noexcept {
    RECT place = value(row);
    place.left = place.right - fieldWidth(menuWidth);
    return place;
}

int GridGeometry::rowAt(int y) const noexcept {
    if (y < headerHeight) {
        return y < 0 ? -1 : 0;
    }
    const int row = top + (y - headerHeight) / rowHeight;
    return y < height && row < rowCount ? row : -1;
}

GridPart GridGeometry::partAt(int x, bool isList) const noexcept {
    if (x < 0 || x >= width) {
        return GridPart::Nowhere;
    }
    if (x < nameWidth) {
        return GridPart::Name;
    }
    if (x >= menu(top).left) {
        return GridPart::Menu;
    }
    return isList && x >= arrow(top).left ? GridPart::Arrow : GridPart::Value;
}

int GridGeometry::position(int x) const noexcept {
    const RECT field = menu(top);
    if (x < field.left) {
        return std::max(x, 0) * Grid::menuFrom / field.left;
    }
    if (x >= field.right) {
        return Grid::menuTo + 1 + MulDiv(x - field.right, standardDpi, dpi);
    }
    return Grid::menuFrom + (x - field.left) * (Grid::menuTo - Grid::menuFrom) / widthOf(field);
}

int GridGeometry::wholeRows() const noexcept { return std::max((height - headerHeight) / rowHeight, 1); }

int GridGeometry::lastTop() const noexcept { return std::max(rowCount - wholeRows(), 1); }

int GridGeometry::topToShow(int row) const noexcept {
    if (row < top) {
        return std::max(row, 1);
    }
    return std::max(top, row - wholeRows() + 1);
}

}  // namespace vrn::activex
