#include "controls/Grid.h"

#include "text/Unicode.h"

namespace vrn::controls {

const std::vector<std::string>& GridRow::items() const {
    static const std::vector<std::string> none;
    return choices ? choices->items() : none;
}

void Grid::setHeader(std::string name, std::string value) {
    header_.name = std::move(name);
    header_.value = std::move(value);
    changed(Change::Cells);
}

const GridRow* Grid::row(int row) const noexcept {
    return hasRow(row) ? &rows_[static_cast<std::size_t>(row) - 1] : nullptr;
}

std::string Grid::cellText(int row, int column) const {
    const GridRow* const cells = row == 0 ? &header_ : this->row(row);
    if (cells == nullptr || column < 0 || column > 1) {
        return {};
    }
    return column == 0 ? cells->name : cells->value;
}

void Grid::setCellText(int row, int column, std::string text) {
    if (!hasRow(row) || column < 0 || column > 1) {
        return;
    }
    auto& cells = rows_[static_cast<std::size_t>(row) - 1];
    (column == 0 ? cells.name : cells.value) = std::move(text);
    changed(Change::Cells);
}

void Grid::addRow(GridRow row) {
    rows_.push_back(std::move(row));
    changed(Change::Cells);
}

void Grid::clearRows() {
    discardEdit();
    rows_.clear();
    currentRow_ = 0;
    changed(Change::Cells);
}

void Grid::setColour(std::uint32_t colour) {
    if (colour_ != colour) {
        colour_ = colour;
        changed(Change::Look);
    }
}

void Grid::setTabStop(bool tabStop) {
    if (tabStop_ != tabStop) {
        tabStop_ = tabStop;
        changed(Change::Look);
    }
}

bool Grid::commitEdit() {
    if (!pending_) {
        return true;
    }
    if (committing_) {
        // Asked again while the user still reads the message about this very edit.
        return false;
    }
    committing_ = true;
    bool accepted = false;
    try {
        accepted = !onValidate || onValidate();
    } catch (...) {
        committing_ = false;
        throw;
    }
    committing_ = false;
    // The message about a refused value runs a message loop: the edit may be gone by now.
    if (accepted && pending_) {
        setCellText(pending_->row, 1, std::move(pending_->text));
    }
    const bool committed = accepted && pending_.has_value();
    discardEdit();
    return committed;
}

void Grid::discardEdit() {
    if (focus() != nullptr) {
        focus()->release();
    }
    if (pending_) {
        pending_.reset();
        changed(Change::Edit);
    }
}

bool Grid::enterText(int row, std::string text) {
    discardEdit();
    pending_ = PendingEdit{row, std::move(text)};
    changed(Change::Edit);
    return commitEdit();
}

bool Grid::takes(int row, const std::string& text) const {
    const GridRow* const cells = this->row(row);
    return cells != nullptr && (cells->style == EditStyle::Text || cells->offers(text));
}

UserRequest Grid::userEdit(int row, std::string_view text, bool commit) {
    if (!enabled() || !visible()) {
        return UserRequest::NotUsable;
    }
    auto typed = text::withoutNonXmlCharacters(text);
    if (!takes(row, typed)) {
        return UserRequest::NoSuchEntry;
    }
    if (!beginUserRequest()) {
        return UserRequest::NotUsable;
    }
    // Leaving another edit may have changed the rows, as when the host loads another method meanwhile.
    if (!takes(row, typed)) {
        return UserRequest::NoSuchEntry;
    }
    setPending(row, std::move(typed));
    if (commit) {
        commitEdit();
    } else if (focus() != nullptr) {
        focus()->hold([this] { commitEdit(); });
    }
    return UserRequest::Done;
}

void Grid::setPending(int row, std::string text) {
    if (this->row(row)->style == EditStyle::Text && onSetEditText) {
        onSetEditText(row, text);
    }
    currentRow_ = row;
    currentColumn_ = 1;
    pending_ = PendingEdit{row, std::move(text)};
    changed(Change::Edit);
}

UserRequest Grid::userGoTo(int row) {
    if (!hasRow(row)) {
        return UserRequest::NoSuchEntry;
    }
    if (!beginUserRequest()) {
        return UserRequest::NotUsable;
    }
    if (!hasRow(row)) {
        return UserRequest::NoSuchEntry;
    }
    currentRow_ = row;
    currentColumn_ = 1;
    return UserRequest::Done;
}

UserRequest Grid::userTypeText(int row, std::string_view text) {
    if (!pending_ || pending_->row != row) {
        return userEdit(row, text, false);
    }
    auto typed = text::withoutNonXmlCharacters(text);
    if (!takes(row, typed)) {
        return UserRequest::NoSuchEntry;
    }
    // The same edit goes on: nothing is left for it.
    if (!enabled() || !visible() || committing_) {
        return UserRequest::NotUsable;
    }
    setPending(row, std::move(typed));
    return UserRequest::Done;
}

UserRequest Grid::userMouseDown(int row, int position) {
    if (row < 0 || row >= rowCount()) {
        return UserRequest::NoSuchEntry;
    }
    if (!beginUserRequest()) {
        return UserRequest::NotUsable;
    }
    if (row >= rowCount()) {
        return UserRequest::NoSuchEntry;
    }
    currentRow_ = row;
    if (onMouseDown) {
        onMouseDown(position);
    }
    return UserRequest::Done;
}

void Grid::userMouseMove(int row) const {
    if (onMouseMove) {
        onMouseMove(row);
    }
}

}  // namespace vrn::controls
