#include "hosts/activex/form/GridEditor.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "controls/ItemList.h"
#include "hosts/activex/form/Metrics.h"
#include "hosts/activex/form/SimplePeers.h"
#include "hosts/activex/form/Typing.h"
#include "text/windows/Wide.h"

namespace vrn::activex {

namespace {

constexpr int textMargin = 4;  // lengths at 96 dpi
constexpr int rowsDropped = 10;

}  // namespace

void GridEditorWindow::create(HWND grid) {
    if (list_) {
        make({L"COMBOBOX", L"", WS_CHILD | WS_CLIPSIBLINGS | WS_VSCROLL | CBS_DROPDOWNLIST, 0, grid, gridListEditorId});
    } else {
        make({L"EDIT", L"", WS_CHILD | WS_CLIPSIBLINGS | ES_AUTOHSCROLL, 0, grid, gridTextEditorId});
        send(EM_LIMITTEXT, 0);
    }
}

void GridEditorWindow::onCommand(int code) {
    if (editor_.filling_ || !editor_.isOpen() || !session().open()) {
        return;
    }
    if (!list_) {
        if (code == EN_CHANGE) {
            editor_.textTyped();
        }
        return;
    }
    switch (code) {
        case CBN_SELCHANGE:
            editor_.itemChosen();
            break;
        case CBN_SELENDOK:
            // A choice ends the edit, but not before the list is done with closing.
            editor_.itemChosen();
            editor_.site().editorDoneSoon(true);
            break;
        case CBN_SELENDCANCEL:
            // Also told when a list that is not open loses the focus.
            if (send(CB_GETDROPPEDSTATE) != FALSE) {
                editor_.site().editorDoneSoon(false);
            }
            break;
        default:
            break;
    }
}

// Whether the key was one that leaves the editor.
bool GridEditorWindow::onKey(WPARAM key) {
    const bool dropped = list_ && send(CB_GETDROPPEDSTATE) != FALSE;
    switch (key) {
        case VK_TAB:
            editor_.site().editorTabbed(GetKeyState(VK_SHIFT) < 0);
            return true;
        case VK_RETURN:
            if (dropped) {
                return false;
            }
            editor_.site().editorDone(true);
            return true;
        case VK_ESCAPE:
            if (dropped) {
                return false;
            }
            editor_.site().editorDone(false);
            return true;
        case VK_UP:
        case VK_DOWN:
            if (list_) {
                return false;
            }
            editor_.site().editorLeft(key == VK_UP ? -1 : 1);
            return true;
        default:
            return false;
    }
}

LRESULT GridEditorWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETDLGCODE:
            return byDefault(message, wParam, lParam) | DLGC_WANTALLKEYS;
        case WM_LBUTTONDOWN:
            if (editor_.secondPress()) {
                // All of the text for what is typed next, as by a double click where the editor was not open yet.
                if (!list_) {
                    send(EM_SETSEL, 0, -1);
                }
                return 0;
            }
            break;
        case WM_KEYDOWN:
            editor_.site().editorUsed();
            if (!session().userMayAct() || onKey(wParam)) {
                return 0;
            }
            break;
        case WM_CHAR:
            editor_.site().editorUsed();
            // The characters of keys that were handled as keys; the system would sound its bell.
            if (!session().userMayAct() || wParam == VK_TAB || (wParam == VK_RETURN && !list_) ||
                (wParam == VK_ESCAPE && !list_)) {
                return 0;
            }
            if (list_ && editor_.letterTyped(static_cast<wchar_t>(wParam))) {
                return 0;
            }
            break;
        case WM_MOUSEWHEEL:
            if (list_ && send(CB_GETDROPPEDSTATE) == FALSE) {
                // A closed list leaves the wheel to the grid.
                return DefWindowProcW(handle(), message, wParam, lParam);
            }
            break;
        case WM_KILLFOCUS:
            if (editor_.isOpen() && session().open()) {
                editor_.site().editorAbandoned();
            }
            break;
        default:
            break;
    }
    if (endsTyping(message, wParam)) {
        editor_.typed_.forget();
    }
    return byDefault(message, wParam, lParam);
}

GridEditor::GridEditor(Session& session, controls::Grid& model, GridEditorSite& site) noexcept
    : model_(model), session_(session), site_(site), text_(session, *this, false), list_(session, *this, true) {}

void GridEditor::create(HWND grid) {
    text_.create(grid);
    list_.create(grid);
}

Window* GridEditor::windowOf(HWND handle) noexcept {
    if (handle == text_.handle()) {
        return &text_;
    }
    return handle == list_.handle() ? &list_ : nullptr;
}

void GridEditor::open(int row, const RECT& place) {
    const controls::GridRow* const cells = model_.row(row);
    if (cells == nullptr) {
        return;
    }
    valueBefore_ = cells->value;
    typed_.forget();
    pressTime_.reset();
    row_ = row;
    listOpen_ = cells->style == controls::EditStyle::DropDownList;
    // First the size, then the text: a box without width would scroll it out of sight.
    moveTo(place);
    filling_ = true;
    if (listOpen_) {
        fillList(*cells);
    } else {
        SetWindowTextW(text_.handle(), text::toWide(cells->value).c_str());
        SendMessageW(text_.handle(), EM_SETSEL, 0, -1);
    }
    filling_ = false;
    ShowWindow(window(), SW_SHOWNA);
    SetFocus(window());
}

// A value that is none of the items stands before them, so that the list shows what the cell holds.
void GridEditor::fillList(const controls::GridRow& cells) {
    items_ = cells.items();
    auto found = std::find(items_.begin(), items_.end(), cells.value);
    if (found == items_.end()) {
        found = items_.insert(items_.begin(), cells.value);
    }
    const HWND window = list_.handle();
    SendMessageW(window, WM_SETREDRAW, FALSE, 0);
    SendMessageW(window, CB_RESETCONTENT, 0, 0);
    int widest = 0;
    const WindowContext context(window);
    const Selected font(context.get(), session_.look().gridFont);
    for (const auto& item : items_) {
        const auto text = text::toWide(item);
        SendMessageW(window, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
        widest = std::max(widest, textWidth(context.get(), text));
    }
    const int width = widest + GetSystemMetrics(SM_CXVSCROLL) + scaled(8, session_.look().dpi);
    SendMessageW(window, CB_SETDROPPEDWIDTH, static_cast<WPARAM>(width), 0);
    SendMessageW(window, CB_SETCURSEL, static_cast<WPARAM>(found - items_.begin()), 0);
    SendMessageW(window, WM_SETREDRAW, TRUE, 0);
}

void GridEditor::openedByPress() noexcept {
    pressTime_ = GetMessageTime();
    const DWORD place = GetMessagePos();
    pressPlace_ = {static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
}

bool GridEditor::secondPress() noexcept {
    const auto first = std::exchange(pressTime_, std::nullopt);
    const DWORD place = GetMessagePos();
    return first && static_cast<DWORD>(GetMessageTime() - *first) <= GetDoubleClickTime() &&
           std::abs(static_cast<short>(LOWORD(place)) - pressPlace_.x) <= GetSystemMetrics(SM_CXDOUBLECLK) &&
           std::abs(static_cast<short>(HIWORD(place)) - pressPlace_.y) <= GetSystemMetrics(SM_CYDOUBLECLK);
}

void GridEditor::dropDown() const noexcept {
    if (isOpen() && listOpen_) {
        SendMessageW(list_.handle(), CB_SHOWDROPDOWN, TRUE, 0);
    }
}

void GridEditor::moveTo(const RECT& place) const noexcept {
    if (window() == nullptr) {
        return;
    }
    const int height = heightOf(place) - 1;  // the line below the row stays
    if (listOpen_) {
        // What a closed list is higher than its field depends on system and theme.
        RECT window{};
        GetWindowRect(list_.handle(), &window);
        const auto field = static_cast<int>(SendMessageW(list_.handle(), CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
        SendMessageW(list_.handle(), CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), height - (heightOf(window) - field));
        SetWindowPos(list_.handle(), nullptr, place.left, place.top, widthOf(place), height * (rowsDropped + 1),
                     SWP_NOZORDER | SWP_NOACTIVATE);
        return;
    }
    const int lineHeight = textSize(WindowContext(text_.handle()).get(), session_.look().gridFont).lineHeight;
    const int margin = std::max((height - lineHeight) / 2, 0);
    SetWindowPos(text_.handle(), nullptr, place.left, place.top + margin, widthOf(place), height - 2 * margin,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void GridEditor::close() noexcept {
    if (!isOpen()) {
        return;
    }
    const HWND closing = window();
    row_ = 0;
    if (GetFocus() == closing) {
        SetFocus(GetParent(closing));
    }
    ShowWindow(closing, SW_HIDE);
}

void GridEditor::lookChanged() const noexcept {
    const auto font = reinterpret_cast<WPARAM>(session_.look().gridFont);
    const int margin = scaled(textMargin, session_.look().dpi);
    SendMessageW(text_.handle(), WM_SETFONT, font, FALSE);
    SendMessageW(text_.handle(), EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(margin, margin));
    SendMessageW(list_.handle(), WM_SETFONT, font, FALSE);
}

bool GridEditor::fits() const { return model_.row(row_) != nullptr && model_.cellText(row_, 1) == valueBefore_; }

void GridEditor::textTyped() {
    if (session_.userMayAct()) {
        typing_ = true;
        model_.userTypeText(row_, text::fromWide(windowText(text_.handle())));
        typing_ = false;
    }
}

bool GridEditor::letterTyped(wchar_t character) {
    const int selected = static_cast<int>(SendMessageW(list_.handle(), CB_GETCURSEL, 0, 0));
    const auto row = rowTyped(typed_, character, items_, selected);
    if (row && *row != controls::noSelection && *row != selected) {
        SendMessageW(list_.handle(), CB_SETCURSEL, static_cast<WPARAM>(*row), 0);
        itemChosen();
    }
    return row.has_value();
}

void GridEditor::itemChosen() {
    const auto index = static_cast<std::size_t>(SendMessageW(list_.handle(), CB_GETCURSEL, 0, 0));
    if (index >= items_.size() || !session_.userMayAct()) {
        return;
    }
    const auto& pending = model_.pendingEdit();
    const auto shown = pending && pending->row == row_ ? pending->text : valueBefore_;
    if (items_[index] == shown) {
        return;
    }
    typing_ = true;
    if (model_.userTypeText(row_, items_[index]) == controls::UserRequest::NoSuchEntry && session_.open()) {
        // Back to the value that the cell holds already: nothing is left to enter.
        model_.discardEdit();
    }
    typing_ = false;
}

}  // namespace vrn::activex
