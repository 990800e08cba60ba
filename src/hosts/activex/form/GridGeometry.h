// Where rows and columns of the parameter grid are.
#pragma once

#include <windows.h>

namespace vrn::activex {

enum class GridPart { Nowhere, Name, Value, Arrow };

/// Pixels of the grid's client area; rows are numbered as the model does, the header is row 0.
struct GridGeometry {
    int dpi = 96;
    int width = 0;
    int height = 0;
    int headerHeight = 0;
    int rowHeight = 1;
    int nameWidth = 0;
    int rowCount = 1;  ///< with the header
    int top = 1;       ///< first row in view

    /// In the grid's own units, which positions in a row are told in: the value column begins here, however wide the columns
    /// are drawn; from there on a unit is a pixel at 96 dpi.
    static constexpr int valueColumn = 150;
    /// The width of the arrow that opens a drop-down list.
    [[nodiscard]] int arrowWidth() const noexcept;
    /// The width of the names before the user has dragged the divider: never more than half.
    [[nodiscard]] int usualNameWidth() const noexcept;

    [[nodiscard]] RECT row(int row) const noexcept;
    [[nodiscard]] RECT name(int row) const noexcept;
    [[nodiscard]] RECT value(int row) const noexcept;
    [[nodiscard]] RECT arrow(int row) const noexcept;
    /// The row at this height: 0 for the header, -1 where there is none.
    [[nodiscard]] int rowAt(int y) const noexcept;
    /// The part of a row at this place. `isList` tells whether its value has an arrow.
    [[nodiscard]] GridPart partAt(int x, bool isList) const noexcept;
    /// A place in the grid's own units.
    [[nodiscard]] int position(int x) const noexcept;

    [[nodiscard]] int wholeRows() const noexcept;  ///< rows in full view, at least one
    [[nodiscard]] int lastTop() const noexcept;    ///< the first row in view when the last one is
    [[nodiscard]] int topToShow(int row) const noexcept;
};

}  // namespace vrn::activex
