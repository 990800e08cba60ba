#include "hosts/activex/form/GridWindow.h"

#include <windowsx.h>
// After windows.h, which it builds on.
#include <commctrl.h>
#include <oleacc.h>

#include <algorithm>

#include "hosts/activex/form/GridAccessible.h"
#include "hosts/activex/form/GridPaint.h"
#include "hosts/activex/form/Metrics.h"
#include "text/windows/Wide.h"

namespace vrn::activex {

using controls::Change;

namespace {

constexpr int rowPadding = 7;  // lengths at 96 dpi
constexpr int headerPadding = 9;
constexpr int leastColumn = 48;

constexpr UINT rowsChangedMessage = WM_APP + 1;
constexpr UINT editorDoneMessage = WM_APP + 2;
constexpr UINT editorAbandonedMessage = WM_APP + 3;

}  // namespace

GridWindow::GridWindow(Session& session, controls::Grid& model, ControlId id) noexcept
    : Peer(session, model, id), model_(model), editor_(session, model, *this) {}

GridWindow::~GridWindow() {
    if (accessible_ != nullptr) {
        accessible_->detach();
        accessible_->Release();
    }
}

Window::Making GridWindow::making(HWND parent) const {
    return {WindowClasses::grid, L"Parameters", WS_CLIPCHILDREN | WS_VSCROLL | WS_TABSTOP, 0, parent, 0};
}

void GridWindow::createParts() {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&classes);
    header_ = CreateWindowExW(0, WC_HEADERW, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | HDS_HORZ | HDS_FULLDRAG, 0,
                              0, 0, 0, handle(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(gridHeaderId)),
                              session().module(), nullptr);
    for (int column = 0; column < 2; ++column) {
        auto caption = text::toWide(model_.cellText(0, column));
        HDITEMW item{};
        item.mask = HDI_TEXT | HDI_FORMAT | HDI_WIDTH;
        item.pszText = caption.data();
        item.fmt = HDF_LEFT | HDF_STRING;
        SendMessageW(header_, HDM_INSERTITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
    }
    editor_.create(handle());
}

void GridWindow::lookChanged() {
    if (header_ == nullptr) {
        createParts();
    }
    geometry_.dpi = look().dpi;
    const WindowContext context(handle());
    const int lineHeight = textSize(context.get(), look().gridFont).lineHeight;
    // The rows' height is given in twips, and is never less than what their text needs.
    geometry_.rowHeight = std::max(fromTwips(static_cast<float>(model_.defaultRowHeight()), look().dpi),
                                   lineHeight + scaled(rowPadding, look().dpi));
    geometry_.headerHeight = lineHeight + scaled(headerPadding, look().dpi);
    SendMessageW(header_, WM_SETFONT, reinterpret_cast<WPARAM>(look().gridFont), FALSE);
    editor_.lookChanged();
    resize();
}

bool GridWindow::takesFocus() const noexcept { return Peer::takesFocus() && model_.tabStop(); }

const GridGeometry& GridWindow::geometry() {
    if (rowsStale_) {
        rowsChanged();
    }
    return geometry_;
}

void GridWindow::resize() {
    rowsChanged();
    InvalidateRect(handle(), nullptr, FALSE);
}

// Brings scroll bar and columns in line with rows and size.
void GridWindow::rowsChanged() {
    rowsStale_ = false;
    if (GetFocus() == handle()) {
        beSomewhere();
    }
    RECT client{};
    // Showing or hiding the scroll bar changes the width, and comes back here through WM_SIZE.
    GetClientRect(handle(), &client);
    geometry_.rowCount = model_.rowCount();
    geometry_.width = client.right;
    geometry_.height = client.bottom;
    geometry_.top = std::clamp(geometry_.top, 1, geometry_.lastTop());
    SCROLLINFO scroll{};
    scroll.cbSize = sizeof scroll;
    scroll.fMask = SIF_PAGE | SIF_POS | SIF_RANGE;
    scroll.nMin = 1;
    scroll.nMax = geometry_.rowCount - 1;
    scroll.nPage = static_cast<UINT>(geometry_.wholeRows());
    scroll.nPos = geometry_.top;
    SetScrollInfo(handle(), SB_VERT, &scroll, TRUE);
    GetClientRect(handle(), &client);
    geometry_.width = client.right;
    placeColumns(nameWidth_ > 0 ? scaled(nameWidth_, look().dpi) : geometry_.usualNameWidth());
}

void GridWindow::placeColumns(int nameWidth) {
    const int least = std::min(scaled(leastColumn, look().dpi), geometry_.width / 2);
    const int wanted = std::clamp(nameWidth, least, std::max(geometry_.width - least, least));
    const bool moved = wanted != geometry_.nameWidth;
    geometry_.nameWidth = std::max(wanted, 1);
    placingColumns_ = true;
    const int width = std::max(geometry_.width, 0);
    SetWindowPos(header_, HWND_TOP, 0, 0, width, geometry_.headerHeight, SWP_NOACTIVATE);
    for (int column = 0; column < 2; ++column) {
        HDITEMW item{};
        item.mask = HDI_WIDTH;
        SendMessageW(header_, HDM_GETITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
        const int wide = column == 0 ? geometry_.nameWidth : width - geometry_.nameWidth;
        if (item.cxy != wide) {
            item.cxy = wide;
            SendMessageW(header_, HDM_SETITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
        }
    }
    placingColumns_ = false;
    if (moved) {
        InvalidateRect(handle(), nullptr, FALSE);
    }
    placeEditor();
}

LRESULT GridWindow::onNotify(const NMHDR& notification) {
    if (notification.hwndFrom != header_ || placingColumns_) {
        return 0;
    }
    const auto& header = reinterpret_cast<const NMHEADERW&>(notification);
    const bool width = header.pitem != nullptr && (header.pitem->mask & HDI_WIDTH) != 0;
    switch (notification.code) {
        case HDN_BEGINTRACKW:
        case HDN_BEGINTRACKA:
            // The value column takes what the name column leaves.
            return header.iItem != 0 ? TRUE : FALSE;
        case HDN_DIVIDERDBLCLICKW:
        case HDN_DIVIDERDBLCLICKA:
            nameWidth_ = 0;
            rowsChanged();
            break;
        case HDN_ITEMCHANGEDW:
        case HDN_ITEMCHANGEDA:
            if (width && header.iItem == 0) {
                nameWidth_ = std::max(MulDiv(header.pitem->cxy, standardDpi, look().dpi), 1);
                placeColumns(header.pitem->cxy);
                // What is dragged is seen at once.
                UpdateWindow(handle());
            }
            break;
        default:
            break;
    }
    return 0;
}

void GridWindow::update(Change change) {
    switch (change) {
        case Change::Cells:
            if (editor_.isOpen() && !model_.pendingEdit() && !editor_.fits()) {
                editor_.close();
            }
            // The engine fills the grid row by row: the window follows once.
            if (!rowsStale_) {
                rowsStale_ = true;
                PostMessageW(handle(), rowsChangedMessage, 0, 0);
            }
            InvalidateRect(handle(), nullptr, FALSE);
            break;
        case Change::Edit:
            if (editor_.isOpen() && !model_.pendingEdit() && !editor_.typing()) {
                editor_.close();
            }
            if (!editor_.isOpen()) {
                InvalidateRect(handle(), nullptr, FALSE);
            }
            break;
        case Change::Enabled:
        case Change::Look:
            InvalidateRect(handle(), nullptr, FALSE);
            break;
        default:
            break;
    }
}

void GridWindow::repaintRow(int row) const noexcept {
    const RECT place = geometry_.row(row);
    InvalidateRect(handle(), &place, FALSE);
}

// With the focus in the grid there is a row that keys are for, if there is any.
void GridWindow::beSomewhere() noexcept {
    if (readOnly()) {
        readRow_ = std::clamp(readRow_, std::min(1, model_.rowCount() - 1), model_.rowCount() - 1);
    } else if (model_.currentRow() == 0 && model_.rowCount() > 1) {
        model_.setCurrentRow(1);
    }
}

void GridWindow::placeEditor() {
    if (editor_.isOpen()) {
        editor_.moveTo(geometry_.entry(editor_.row()));
    }
}

void GridWindow::scrollTo(int top) {
    const int wanted = std::clamp(top, 1, geometry().lastTop());
    if (wanted == geometry_.top) {
        return;
    }
    geometry_.top = wanted;
    SetScrollPos(handle(), SB_VERT, wanted, TRUE);
    placeEditor();
    InvalidateRect(handle(), nullptr, FALSE);
    UpdateWindow(handle());
}

// Draws the row that the model is at as the current one.
void GridWindow::markRow(int row) noexcept {
    repaintRow(shownCurrent_);
    repaintRow(row);
    shownCurrent_ = row;
}

// In view, too.
void GridWindow::showRow(int row) {
    markRow(row);
    scrollTo(geometry().topToShow(row));
    tell(EVENT_OBJECT_FOCUS, row);
    tell(EVENT_OBJECT_SELECTION, row);
}

void GridWindow::paint(HDC context, const RECT& area) {
    shownCurrent_ = shownRow();
    const HWND focus = GetFocus();
    const bool focused = focus == handle() || (focus != nullptr && focus == editor_.window());
    const bool hot = hotMenu_ != 0 && model_.enabled();
    const UniqueTheme theme(hot && look().themed ? OpenThemeData(handle(), L"BUTTON") : nullptr);
    GridPicture picture{geometry(), model_, look().gridFont, focused, shownCurrent_, editor_.row()};
    picture.hotMenu = hot ? hotMenu_ : 0;
    picture.pressed = hot && hotMenu_ == pressedMenu_;
    picture.buttons = theme.get();
    paintGrid(context, picture, area);
}

MenuPlace GridWindow::menuPlace() const noexcept {
    MenuPlace place = menuPlace_;
    POINT edge{place.x, 0};
    ClientToScreen(handle(), &edge);
    place.x = edge.x;
    MapWindowPoints(handle(), nullptr, reinterpret_cast<POINT*>(&place.row), 2);
    MapWindowPoints(handle(), nullptr, reinterpret_cast<POINT*>(&place.button), 2);
    return place;
}

void GridWindow::tell(DWORD event, int row) const noexcept {
    NotifyWinEvent(event, handle(), OBJID_CLIENT, std::max(row, 0));
}

LRESULT GridWindow::accessible(WPARAM wParam, LPARAM lParam) {
    if (static_cast<LONG>(lParam) != OBJID_CLIENT) {
        return byDefault(WM_GETOBJECT, wParam, lParam);
    }
    if (accessible_ == nullptr) {
        accessible_ = new GridAccessible(*this);
    }
    return LresultFromObject(IID_IAccessible, wParam, accessible_);
}

LRESULT GridWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT: {
            static_cast<void>(geometry());
            const BufferedPaint buffer(handle());
            RECT area{};
            GetClipBox(buffer.context(), &area);
            paint(buffer.context(), area);
            return 0;
        }
        case WM_PRINTCLIENT: {
            RECT client{};
            GetClientRect(handle(), &client);
            paint(reinterpret_cast<HDC>(wParam), client);
            return 0;
        }
        case WM_SIZE:
            if (header_ != nullptr) {
                resize();
            }
            return 0;
        case WM_GETOBJECT:
            return accessible(wParam, lParam);
        case WM_GETDLGCODE:
            // Enter opens the editor, also where a dialog would press its default button.
            return DLGC_WANTARROWS | DLGC_WANTCHARS | (wParam == VK_RETURN ? DLGC_WANTMESSAGE : 0);
        case WM_SETFOCUS:
            beSomewhere();
            repaintRow(shownRow());
            tell(EVENT_OBJECT_FOCUS, shownRow());
            return 0;
        case WM_KILLFOCUS:
            repaintRow(shownRow());
            return 0;
        case WM_COMMAND:
            if (auto* const window = editor_.windowOf(reinterpret_cast<HWND>(lParam)); window != nullptr) {
                window->onCommand(HIWORD(wParam));
            }
            return 0;
        case WM_NOTIFY:
            return onNotify(*reinterpret_cast<const NMHDR*>(lParam));
        case WM_COPY:
            copyValue();
            return 0;
        case rowsChangedMessage:
            static_cast<void>(geometry());
            tell(EVENT_OBJECT_REORDER, 0);
            return 0;
        case editorDoneMessage:
            if (usable() && editor_.isOpen()) {
                editorDone(wParam != 0);
            }
            return 0;
        case editorAbandonedMessage:
            // The focus may have come back meanwhile, as when the user only looked at another window.
            if (usable() && editor_.isOpen() && GetFocus() != editor_.window()) {
                editorDone(true);
            }
            return 0;
        default:
            return onInput(message, wParam, lParam);
    }
}

void GridWindow::editorDoneSoon(bool take) noexcept { PostMessageW(handle(), editorDoneMessage, take ? 1 : 0, 0); }

void GridWindow::editorAbandoned() noexcept { PostMessageW(handle(), editorAbandonedMessage, 0, 0); }

}  // namespace vrn::activex
