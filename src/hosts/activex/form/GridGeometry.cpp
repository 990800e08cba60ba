#include "hosts/activex/form/GridGeometry.h"

#include <algorithm>

#include "hosts/activex/form/Metrics.h"

namespace vrn::activex {

namespace {

constexpr int arrowUnits = 17;

}  // namespace

int GridGeometry::arrowWidth() const noexcept { return scaled(arrowUnits, dpi); }

int GridGeometry::usualNameWidth() const noexcept {
    return std::max(std::min(scaled(valueColumn, dpi), width / 2), width * 2 / 5);
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

RECT GridGeometry::arrow(int row) const noexcept {
    RECT place = value(row);
    place.left = std::max<LONG>(place.left, place.right - arrowWidth());
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
    return isList && x >= arrow(top).left ? GridPart::Arrow : GridPart::Value;
}

int GridGeometry::position(int x) const noexcept {
    if (x < nameWidth) {
        return std::max(x, 0) * valueColumn / nameWidth;
    }
    return valueColumn + MulDiv(x - nameWidth, standardDpi, dpi);
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
