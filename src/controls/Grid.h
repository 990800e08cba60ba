// The parameter grid: a header row and two columns, name and value; values are edited in place.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Choices.h"
#include "controls/Control.h"

namespace vrn::controls {

enum class EditStyle { Text, DropDownList };

struct GridRow {
    std::string name;
    std::string value;
    EditStyle style = EditStyle::Text;
    std::shared_ptr<const Choices> choices;  ///< of a drop-down list; rows that offer the same share them

    /// The entries of a drop-down list, none without one.
    [[nodiscard]] const std::vector<std::string>& items() const;
    /// Whether this text is one of them.
    [[nodiscard]] bool offers(std::string_view text) const { return choices && choices->contains(text); }
};

/// A value that the user has entered and not yet left.
struct PendingEdit {
    int row = 0;
    std::string text;
};

/// Rows are numbered with the header as row 0; column 0 is the name, column 1 the value. Cells that the grid does not have
/// read as empty, and writing them does nothing.
class Grid final : public Control {
  public:
    Grid(std::string name, Control* container, Focus* focus)
        : Control(ControlKind::Grid, std::move(name), container, focus) {}

    /// May change the text that the user has entered before it becomes the pending edit.
    std::function<void(int row, std::string& text)> onSetEditText;
    /// Whether the pending edit may become the cell's value.
    std::function<bool()> onValidate;
    /// A press of the mouse in the current row, at this horizontal position in the grid's units.
    std::function<void(int position)> onMouseDown;
    /// The mouse is over this row; -1 when it has left the grid.
    std::function<void(int row)> onMouseMove;

    /// In the grid's own units, a press from here to there asks for the menu of the row's values.
    static constexpr int menuFrom = 150;
    static constexpr int menuTo = 250;

    static constexpr std::uint32_t colourWindow = 0x80000005;      ///< system colour of window backgrounds
    static constexpr std::uint32_t colourButtonFace = 0x8000000F;  ///< system colour of button faces

    void setHeader(std::string name, std::string value);
    void setDefaultRowHeight(int height) noexcept { defaultRowHeight_ = height; }
    [[nodiscard]] int defaultRowHeight() const noexcept { return defaultRowHeight_; }

    [[nodiscard]] int rowCount() const noexcept { return static_cast<int>(rows_.size()) + 1; }  ///< with the header
    [[nodiscard]] std::string cellText(int row, int column) const;
    void setCellText(int row, int column, std::string text);
    void addRow(GridRow row);
    [[nodiscard]] const GridRow* row(int row) const noexcept;  ///< null for the header and rows that are not there
    void clearRows();

    [[nodiscard]] int currentRow() const noexcept { return currentRow_; }
    void setCurrentRow(int row) noexcept { currentRow_ = row; }
    [[nodiscard]] int currentColumn() const noexcept { return currentColumn_; }
    void setCurrentColumn(int column) noexcept { currentColumn_ = column; }

    [[nodiscard]] std::uint32_t colour() const noexcept { return colour_; }
    void setColour(std::uint32_t colour);
    [[nodiscard]] bool tabStop() const noexcept { return tabStop_; }
    void setTabStop(bool tabStop);
    /// First row that can be gone to: 1 with parameters, 2 without.
    [[nodiscard]] int topRow() const noexcept { return topRow_; }
    void setTopRow(int topRow) noexcept { topRow_ = topRow; }

    [[nodiscard]] const std::optional<PendingEdit>& pendingEdit() const noexcept { return pending_; }
    /// Asks `onValidate` about the pending edit; the cell takes its text when that accepts and stays as it is otherwise. The
    /// edit is over either way. True when there was none.
    bool commitEdit();
    void discardEdit();
    /// Enters a text into a value cell and leaves it, as choosing it from a menu does: any text goes, also in a drop-down list.
    bool enterText(int row, std::string text);

    /// The user opens the value cell of a row and enters a text, then leaves it by Enter or stays. A drop-down list takes one of
    /// its items only.
    UserRequest userEdit(int row, std::string_view text, bool commit);
    /// The user goes to the value cell of a row, by a key or to open its editor. Opening alone is no edit.
    UserRequest userGoTo(int row);
    /// The user has this text in the open editor of a row. More typing in the same row goes on with the same edit.
    UserRequest userTypeText(int row, std::string_view text);
    /// The user presses the mouse in a row.
    UserRequest userMouseDown(int row, int position);
    /// The user moves the mouse over a row, or out of the grid with -1.
    void userMouseMove(int row) const;

  private:
    [[nodiscard]] bool hasRow(int row) const noexcept { return row >= 1 && row < rowCount(); }
    /// Whether the user may enter this text into the row's value cell.
    [[nodiscard]] bool takes(int row, const std::string& text) const;
    void setPending(int row, std::string text);

    GridRow header_;
    std::vector<GridRow> rows_;
    std::optional<PendingEdit> pending_;
    bool committing_ = false;
    bool tabStop_ = true;
    int currentRow_ = 0;
    int currentColumn_ = 0;
    int topRow_ = 1;
    int defaultRowHeight_ = 0;
    std::uint32_t colour_ = colourWindow;
};

}  // namespace vrn::controls
