// Reading the grid: what a cell is too narrow for, copying a value, and going through the rows of a grid that is read-only.
#include <algorithm>
#include <cstring>

#include "hosts/activex/form/GridPaint.h"
#include "hosts/activex/form/GridWindow.h"
#include "hosts/activex/form/Metrics.h"
#include "text/windows/Wide.h"

namespace vrn::activex {

namespace {

struct FreeGlobal {
    void operator()(void* block) const noexcept { GlobalFree(block); }
};

void putOnClipboard(HWND owner, const std::wstring& text) noexcept {
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    std::unique_ptr<void, FreeGlobal> block(GlobalAlloc(GMEM_MOVEABLE, bytes));
    void* const memory = block ? GlobalLock(block.get()) : nullptr;
    if (memory == nullptr) {
        return;
    }
    std::memcpy(memory, text.c_str(), bytes);
    GlobalUnlock(block.get());
    if (OpenClipboard(owner) == FALSE) {
        return;  // another program has it just now
    }
    EmptyClipboard();
    if (SetClipboardData(CF_UNICODETEXT, block.get()) != nullptr) {
        // The system's from here on.
        static_cast<void>(block.release());
    }
    CloseClipboard();
}

}  // namespace

int GridWindow::shownRow() const noexcept {
    return readOnly() ? std::min(readRow_, model_.rowCount() - 1) : model_.currentRow();
}

void GridWindow::setReadOnly(bool readOnly) {
    if (readOnly) {
        editor_.close();
        // The user goes on reading where they were.
        readRow_ = model_.currentRow();
    }
}

void GridWindow::readRow(int row) {
    readRow_ = row;
    showRow(row);
}

void GridWindow::copyValue() const {
    if (const int row = shownRow(); row > 0) {
        putOnClipboard(handle(), text::toWide(model_.cellText(row, 1)));
    }
}

std::wstring GridWindow::cutText(int row) {
    if (row < 0 || row >= model_.rowCount()) {
        return {};
    }
    const auto& shape = geometry();
    const WindowContext context(handle());
    const Selected font(context.get(), look().gridFont);
    const bool list = row > 0 && model_.row(row)->style == controls::EditStyle::DropDownList;
    std::wstring cut;
    for (int column = 0; column < 2; ++column) {
        const auto text = text::toWide(model_.cellText(row, column));
        const LONG end = list ? shape.arrow(row).left : shape.entry(row).right;
        const int width = column == 0 ? shape.nameWidth : static_cast<int>(end) - shape.nameWidth;
        if (textWidth(context.get(), text) > width - 2 * scaled(gridTextInset, shape.dpi)) {
            cut += (cut.empty() ? L"" : L"\r\n") + text;
        }
    }
    return cut;
}

Tip GridWindow::tipAt(POINT place) {
    Tip tip;
    const int row = geometry().rowAt(place.y);
    // Where there is a hint on the parameter, it says this as well.
    if (row >= 1 && !session().state().txtToolTip.visible()) {
        tip.area = geometry().row(row);
        tip.text = cutText(row);
    }
    return tip;
}

}  // namespace vrn::activex
