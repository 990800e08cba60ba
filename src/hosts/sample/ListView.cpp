#include "hosts/sample/ListView.h"

#include <commctrl.h>

#include <algorithm>

#include "hosts/sample/Measures.h"

namespace vrn::sample {

namespace {

constexpr int titlePadding = 5;  // at 96 dpi

}  // namespace

void ListView::create(HWND parent, int id, const wchar_t* title, std::initializer_list<Column> columns) {
    title_ = CreateWindowExW(0, L"STATIC", title, WS_CHILD | WS_VISIBLE | SS_LEFT | SS_NOPREFIX, 0, 0, 0, 0, parent,
                             nullptr, nullptr, nullptr);
    requireWindow(title_);
    window_ = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"",
                              WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER, 0,
                              0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    requireWindow(window_);
    ListView_SetExtendedListViewStyle(window_, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    for (const auto& column : columns) {
        LVCOLUMNW description{};
        description.mask = LVCF_TEXT | LVCF_WIDTH;
        description.pszText = const_cast<LPWSTR>(column.caption);
        description.cx = scaled(column.width);
        SendMessageW(window_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(columns_++),
                     reinterpret_cast<LPARAM>(&description));
    }
}

void ListView::setFont(HFONT font) noexcept {
    for (HWND const window : {title_, window_}) {
        SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    }
    titleHeight_ = lineHeight(font) + scaled(titlePadding);
}

void ListView::moveTo(const RECT& place) const noexcept {
    const int width = place.right - place.left;
    const int top = place.top + titleHeight_;
    MoveWindow(title_, place.left + 2, place.top + 2, width - 2, titleHeight_ - 2, TRUE);
    MoveWindow(window_, place.left, top, width, place.bottom - top, TRUE);
    RECT client{};
    GetClientRect(window_, &client);
    int others = 0;
    for (int column = 0; column < columns_ - 1; ++column) {
        others += ListView_GetColumnWidth(window_, column);
    }
    ListView_SetColumnWidth(window_, columns_ - 1, std::max<int>(client.right - others, scaled(80)));
}

void ListView::show(bool visible) const noexcept {
    for (HWND const window : {title_, window_}) {
        ShowWindow(window, visible ? SW_SHOW : SW_HIDE);
    }
}

void ListView::clear() const noexcept { ListView_DeleteAllItems(window_); }

void ListView::addRow(std::initializer_list<std::wstring> texts) const {
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = ListView_GetItemCount(window_);
    for (const auto& text : texts) {
        item.pszText = const_cast<LPWSTR>(text.c_str());
        SendMessageW(window_, item.iSubItem == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        ++item.iSubItem;
    }
}

void ListView::showLastRow() const noexcept {
    ListView_EnsureVisible(window_, ListView_GetItemCount(window_) - 1, FALSE);
}

}  // namespace vrn::sample
