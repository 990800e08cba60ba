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

    /// What hovering over a row tells.
    void setToolTip(int index, std::string toolTip);
    [[nodiscard]] const std::string& toolTip(int index) const;

    UserRequest userSelect(int index);

  private:
    void requireRow(int index) const;
    void itemsChanged();

    std::vector<std::string> items_;
    std::vector<std::string> toolTips_;
    int index_ = noSelection;
    // Row numbers by text, made on the first look-up after a change: one catalogue is looked up for every step of a method.
    mutable std::unordered_map<std::string_view, int> rowByText_;
};

class ListBox final : public ItemList {
  public:
    ListBox(std::string name, Control* container, Focus* focus)
        : ItemList(ControlKind::ListBox, std::move(name), container, focus) {}

    /// A mouse button went down: 1 left, 2 right; shift state; place in twips.
    std::function<void(int button, int shift, float x, float y)> onMouseDown;
    UserRequest userMouseDown(int button, int shift, float x, float y);
};

class ComboBox final : public ItemList {
  public:
    ComboBox(std::string name, Control* container, Focus* focus)
        : ItemList(ControlKind::ComboBox, std::move(name), container, focus) {}
};

}  // namespace vrn::controls
