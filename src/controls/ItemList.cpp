#include "controls/ItemList.h"

#include "errors/Error.h"

namespace vrn::controls {

void ItemList::requireRow(int index) const {
    if (index < 0 || index >= count()) {
        errors::throwInvalidProcedureCall();
    }
}

void ItemList::itemsChanged() {
    // Emptying a map costs its buckets even when it holds nothing: a list that is being filled would pay for that at every row.
    if (!rowByText_.empty()) {
        rowByText_.clear();
    }
    changed(Change::Items);
}

const std::string& ItemList::item(int index) const {
    if (index < 0 || index >= count()) {
        errors::throwSubscriptOutOfRange();
    }
    return items_[static_cast<std::size_t>(index)];
}

void ItemList::addItem(std::string text) {
    items_.push_back(std::move(text));
    itemsChanged();
}

void ItemList::setItem(int index, std::string text) {
    requireRow(index);
    items_[static_cast<std::size_t>(index)] = std::move(text);
    itemsChanged();
}

void ItemList::removeItem(int index) {
    requireRow(index);
    items_.erase(items_.begin() + index);
    if (std::cmp_less(index, toolTips_.size())) {
        toolTips_.erase(toolTips_.begin() + index);
    }
    if (index == index_) {
        index_ = noSelection;
    } else if (index < index_) {
        --index_;
    }
    itemsChanged();
}

void ItemList::clear() {
    items_.clear();
    toolTips_.clear();
    index_ = noSelection;
    itemsChanged();
}

void ItemList::take(int index) {
    if (index != noSelection) {
        requireRow(index);
    }
    index_ = index;
    changed(Change::Index);
}

void ItemList::setListIndex(int index) {
    take(index);
    if (onClick) {
        onClick();
    }
}

std::string ItemList::text() const { return index_ == noSelection ? std::string() : item(index_); }

int ItemList::indexOf(std::string_view text) const {
    if (rowByText_.empty()) {
        rowByText_.reserve(items_.size());
        for (int row = 0; row < count(); ++row) {
            rowByText_.try_emplace(item(row), row);
        }
    }
    const auto found = rowByText_.find(text);
    return found == rowByText_.end() ? noSelection : found->second;
}

void ItemList::bringIntoView(int index) {
    rowInView_ = index;
    changed(Change::View);
}

void ItemList::setToolTip(int index, std::string toolTip) {
    requireRow(index);
    toolTips_.resize(items_.size());
    toolTips_[static_cast<std::size_t>(index)] = std::move(toolTip);
}

const std::string& ItemList::toolTip(int index) const {
    static const std::string none;
    requireRow(index);
    const auto row = static_cast<std::size_t>(index);
    return row < toolTips_.size() ? toolTips_[row] : none;
}

UserRequest ItemList::userSelect(int index) {
    if (index < 0 || index >= count()) {
        return UserRequest::NoSuchEntry;
    }
    if (!beginUserRequest()) {
        return UserRequest::NotUsable;
    }
    // Leaving the grid may have changed the rows, as when the host loads another method meanwhile.
    if (index >= count()) {
        return UserRequest::NoSuchEntry;
    }
    const bool other = index != index_;
    setListIndex(index);
    if (other && onUserChange) {
        onUserChange();
    }
    return UserRequest::Done;
}

UserRequest ListBox::userMouseDown(int row, int button, int shift, float x, float y) {
    if (!beginUserRequest()) {
        return UserRequest::NotUsable;
    }
    // Leaving the grid may have changed the rows.
    const bool other = button == leftButton && row >= 0 && row < count() && row != listIndex();
    if (other) {
        take(row);
    }
    if (onMouseDown) {
        onMouseDown(button, shift, x, y);
    } else if (other && onClick) {
        onClick();
    }
    if (other && onUserChange) {
        onUserChange();
    }
    return UserRequest::Done;
}

}  // namespace vrn::controls
