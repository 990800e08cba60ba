// Where rows and columns of the parameter grid are.
#pragma once

#include <windows.h>

namespace vrn::activex {

enum class GridPart { Nowhere, Name, Value, Arrow, Menu };

/// Pixels of the grid's client area; rows are numbered as the model does, the header is row 0. A row has its name, its value, in
/// a drop-down list the arrow that opens it, and at its end the field that opens the menu of values.
struct GridGeometry {
    int dpi = 96;
    int width = 0;
    int height = 0;
    int headerHeight = 0;
    int rowHeight = 1;
    int nameWidth = 0;
    int rowCount = 1;  ///< with the header
    int top = 1;       ///< first row in view

    /// The width of the names before the user has dragged the divider: never more than half.
    [[nodiscard]] int usualNameWidth() const noexcept;

    [[nodiscard]] RECT row(int row) const noexcept;
    [[nodiscard]] RECT name(int row) const noexcept;
    [[nodiscard]] RECT value(int row) const noexcept;  ///< all that follows the name
    [[nodiscard]] RECT entry(int row) const noexcept;  ///< of the value, where it is entered
    [[nodiscard]] RECT arrow(int row) const noexcept;
    [[nodiscard]] RECT menu(int row) const noexcept;
    /// The row at this height: 0 for the header, -1 where there is none.
    [[nodiscard]] int rowAt(int y) const noexcept;
    /// The part of a row at this place. `isList` tells whether its value has an arrow.
    [[nodiscard]] GridPart partAt(int x, bool isList) const noexcept;
    /// A place in the grid's own units: what the model has for its menu is the field for it, however wide the columns are.
    [[nodiscard]] int position(int x) const noexcept;

    [[nodiscard]] int wholeRows() const noexcept;  ///< rows in full view, at least one
    [[nodiscard]] int lastTop() const noexcept;    ///< the first row in view when the last one is
    [[nodiscard]] int topToShow(int row) const noexcept;

  private:
    /// As wide as given at 96 dpi, but never more than a third of the value: there is always room to click into it.
    [[nodiscard]] int fieldWidth(int wanted) const noexcept;
};

}  // namespace vrn::activex
