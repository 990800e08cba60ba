// List boxes and combo boxes: rows of text of which one may be selected.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "controls/Control.h"

namespace vrn::controls {

inline constexpr int noSelection = -1;

class ItemList : public Control {
  public:
    using Control::Control;

    /// Runs whenever the index is set, by the user or by code; not when rows are added, removed or cleared.
    std::function<void()> onClick;
    /// Runs when the user has chosen another row than the one selected before.
    std::function<void()> onUserChange;

    [[nodiscard]] int count() const noexcept { return static_cast<int>(items_.size()); }
    [[nodiscard]] const std::vector<std::string>& items() const noexcept { return items_; }
    /// Error 9 for a row that is not there.
    [[nodiscard]] const std::string& item(int index) const;
    void addItem(std::string text);
    void setItem(int index, std::string text);
    /// Takes a row out; the selection goes with it, or moves along when it was below. Error 5 for a row that is not there.
    void removeItem(int index);
    void clear();

    [[nodiscard]] int listIndex() const noexcept { return index_; }
    /// Selects a row, or none with `noSelection`, and runs `onClick`. Error 5 for a row that is not there.
    void setListIndex(int index);
    /// The selected row's text, or nothing.
    [[nodiscard]] std::string text() const;
    /// The first row with exactly this text, or `noSelection`.
    [[nodiscard]] int indexOf(std::string_view text) const;

    /// Asks that the user sees this row, and the selected one with it, wherever the list was scrolled to.
    void bringIntoView(int index);
    /// The row that was last to be seen, `noSelection` when it has gone.
    [[nodiscard]] int rowInView() const noexcept { return rowInView_ < count() ? rowInView_ : noSelection; }

    /// What hovering over a row tells.
    void setToolTip(int index, std::string toolTip);
    [[nodiscard]] const std::string& toolTip(int index) const;

    UserRequest userSelect(int index);

  protected:
    /// Selects a row and runs nothing yet.
    void take(int index);

  private:
    void requireRow(int index) const;
    void itemsChanged();

    std::vector<std::string> items_;
    std::vector<std::string> toolTips_;
    int index_ = noSelection;
    int rowInView_ = noSelection;
    // Row numbers by text, made on the first look-up after a change: one catalogue is looked up for every step of a method.
    mutable std::unordered_map<std::string_view, int> rowByText_;
};

class ListBox final : public ItemList {
  public:
    ListBox(std::string name, Control* container, Focus* focus)
        : ItemList(ControlKind::ListBox, std::move(name), container, focus) {}

    static constexpr int leftButton = 1;
    static constexpr int rightButton = 2;

    /// A mouse button went down; shift state; place in twips. The row that the left button was pressed on is selected by then,
    /// but `onClick` has not run for it: who handles the press sets the index again.
    std::function<void(int button, int shift, float x, float y)> onMouseDown;
    /// The user presses a button on a row, or below the last one with `noSelection`. One press is one selection: `onClick` runs
    /// once, for the row that was pressed, and never for the one that was selected before.
    UserRequest userMouseDown(int row, int button, int shift, float x, float y);
};

class ComboBox final : public ItemList {
  public:
    ComboBox(std::string name, Control* container, Focus* focus)
        : ItemList(ControlKind::ComboBox, std::move(name), container, focus) {}
};

}  // namespace vrn::controls
