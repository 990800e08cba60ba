#include "hosts/sample/Window.h"

#include <commctrl.h>
#include <windowsx.h>

#include <array>
#include <utility>

#include "errors/Error.h"
#include "hosts/sample/Commands.h"
#include "hosts/sample/Measures.h"
#include "text/windows/Wide.h"

namespace vrn::sample {

namespace {

constexpr const wchar_t* windowClass = L"vrnMethodHost";
constexpr const wchar_t* paneClass = L"vrnMethodHostPane";
constexpr int idToolBar = 1;
constexpr int idStatus = 2;
constexpr int idPane = 3;
constexpr int idAudit = 4;
constexpr int idEvents = 5;
constexpr int firstWidth = 1180;
constexpr int firstHeight = 800;
constexpr int edge = 4;

HINSTANCE module() { return GetModuleHandleW(nullptr); }

void registerClasses(WNDPROC procedure) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = procedure;
    description.hInstance = module();
    description.hIcon = LoadIconW(module(), MAKEINTRESOURCEW(IDI_PROGRAM));
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    description.lpszMenuName = MAKEINTRESOURCEW(IDR_MENU);
    description.lpszClassName = windowClass;
    RegisterClassExW(&description);
    description.lpfnWndProc = DefWindowProcW;
    description.lpszMenuName = nullptr;
    description.lpszClassName = paneClass;
    RegisterClassExW(&description);
}

bool isIn(HWND window, HWND child) { return child == window || IsChild(window, child) != FALSE; }

}  // namespace

Window::Window() {
    control_.emplace(*this, [this](const MethodEditorError& error) {
        file_->noteError();
        events_.add(error);
    });
    file_.emplace(*control_);
}

Window::~Window() {
    control_.reset();
    if (window_ != nullptr) {
        DestroyWindow(window_);
    }
}

void Window::show() {
    keys_ = LoadAcceleratorsW(module(), MAKEINTRESOURCEW(IDR_KEYS));
    registerClasses(&Window::procedure);
    requireWindow(CreateWindowExW(0, windowClass, L"", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                                  CW_USEDEFAULT, scaled(firstWidth), scaled(firstHeight), nullptr, nullptr, module(),
                                  this));
    createChildren();
    arrange();
    control_->show();
    showState();
    ShowWindow(window_, SW_SHOWDEFAULT);
}

void Window::createChildren() {
    toolBar_.create(window_, idToolBar);
    status_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0, 0, window_,
                              reinterpret_cast<HMENU>(idStatus), module(), nullptr);
    requireWindow(status_);
    pane_ = CreateWindowExW(WS_EX_CONTROLPARENT, paneClass, L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 0, 0,
                            window_, reinterpret_cast<HMENU>(idPane), module(), nullptr);
    requireWindow(pane_);
    audit_.create(window_, idAudit);
    events_.create(window_, idEvents);
    takeFont();
}

void Window::takeFont() {
    // The former font goes when no window has it any more: at the end.
    const auto former = std::exchange(font_, messageFont());
    toolBar_.setFont(font_.get());
    audit_.setFont(font_.get());
    events_.setFont(font_.get());
}

void Window::appearanceChanged(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SETTINGCHANGE) {
        takeFont();
    }
    for (HWND const window : {toolBar_.window(), status_, audit_.window(), events_.window()}) {
        SendMessageW(window, message, wParam, lParam);
    }
    if (control_) {
        control_->appearanceChanged(message, wParam, lParam);
    }
    arrange();
    RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

RECT Window::controlPlace() const noexcept {
    RECT place{};
    GetClientRect(pane_, &place);
    return place;
}

void Window::arrange() {
    RECT area{};
    RECT status{};
    toolBar_.resize();
    SendMessageW(status_, WM_SIZE, 0, 0);
    GetClientRect(window_, &area);
    GetWindowRect(status_, &status);
    const int third = (area.right - area.left) / 3;
    const std::array<int, 3> parts{third, area.right - scaled(160), -1};
    SendMessageW(status_, SB_SETPARTS, parts.size(), reinterpret_cast<LPARAM>(parts.data()));
    area.top += toolBar_.height();
    area.bottom -= status.bottom - status.top;
    InflateRect(&area, -scaled(edge), -scaled(edge));
    panes_.arrange(area);
    const RECT& place = panes_.control();
    MoveWindow(pane_, place.left, place.top, place.right - place.left, place.bottom - place.top, TRUE);
    audit_.show(panes_.showAudit);
    events_.show(panes_.showEvents);
    audit_.moveTo(panes_.audit());
    events_.moveTo(panes_.events());
    if (control_) {
        control_->moveTo(controlPlace());
    }
}

bool Window::onCursor() const {
    POINT place{};
    GetCursorPos(&place);
    ScreenToClient(window_, &place);
    const auto splitter = panes_.splitterAt(place);
    if (splitter != Splitter::None) {
        SetCursor(LoadCursorW(nullptr, splitter == Splitter::Audit ? IDC_SIZEWE : IDC_SIZENS));
    }
    return splitter != Splitter::None;
}

void Window::onDrag(POINT place) {
    if (dragged_ != Splitter::None) {
        panes_.drag(dragged_, place);
        arrange();
    }
}

void Window::open(const std::wstring& folder, const std::wstring& method) {
    try {
        file_->openSet(folder);
        if (!method.empty()) {
            file_->open(method);
        }
    } catch (...) {
        tell(text::toWide(errors::currentError().description()), MB_ICONERROR);
    }
    methodArrived();
}

int Window::run() {
    control_->takeFocus();
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (!translate(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return static_cast<int>(message.wParam);
}

// snippet: keys
// Who sees a key before it is dispatched: the control when it has the focus, then the host's own keys, then the control again
// for the mnemonics of its buttons, then TAB among the panes.
bool Window::translate(MSG& message) {
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) {
        return false;
    }
    const auto active = active_;
    HWND const controlWindow = control_ ? control_->window() : nullptr;
    if (active != nullptr && isIn(controlWindow, message.hwnd) && active->TranslateAccelerator(&message) == S_OK) {
        return true;
    }
    if (isIn(window_, message.hwnd) && TranslateAcceleratorW(window_, keys_, &message) != 0) {
        return true;
    }
    if (message.message == WM_SYSKEYDOWN && !isIn(controlWindow, message.hwnd) && control_ &&
        control_->pressMnemonic(message)) {
        return true;
    }
    const int from = GetDlgCtrlID(message.hwnd);
    return message.message == WM_KEYDOWN && message.wParam == VK_TAB && (from == idAudit || from == idEvents) &&
           goToPane(from, GetKeyState(VK_SHIFT) < 0);
}
// end of snippet

// TAB behind the control's last field, or before its first one.
bool Window::unusedKey(const MSG& message) noexcept {
    return message.message == WM_KEYDOWN && message.wParam == VK_TAB && goToPane(idPane, GetKeyState(VK_SHIFT) < 0);
}

bool Window::goToPane(int from, bool backwards) {
    constexpr std::array<int, 3> round{idPane, idAudit, idEvents};
    const std::array<bool, 3> shown{true, panes_.showAudit, panes_.showEvents};
    std::size_t at = 0;
    while (round[at] != from) {
        ++at;
    }
    do {
        at = (at + (backwards ? round.size() - 1 : 1)) % round.size();
    } while (!shown[at]);
    if (round[at] != idPane) {
        SetFocus(GetDlgItem(window_, round[at]));
    } else {
        MSG tab{};
        tab.message = WM_KEYDOWN;
        tab.wParam = VK_TAB;
        control_->takeFocus(&tab);
    }
    return true;
}

// The box belongs to this window and disables it. There is no other one that would have to be.
void Window::enableModeless(bool enable) noexcept {
    if (!enable) {
        ++messages_;
    }
}

void Window::showStatus(const wchar_t* text) noexcept {
    SendMessageW(status_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(text));
}

LRESULT CALLBACK Window::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        auto* const made = static_cast<Window*>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        made->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(made));
    }
    auto* const self = reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    try {
        return self->onMessage(message, wParam, lParam);
    } catch (...) {
        self->tell(text::toWide(errors::currentError().description()), MB_ICONERROR);
        return 0;
    }
}

LRESULT Window::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT place{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
        case WM_SIZE:
            if (wParam != SIZE_MINIMIZED && events_.window() != nullptr) {
                arrange();
            }
            return 0;
        case WM_SETTINGCHANGE:
        case WM_SYSCOLORCHANGE:
        case WM_THEMECHANGED:
        case WM_FONTCHANGE:
            if (events_.window() != nullptr) {
                appearanceChanged(message, wParam, lParam);
            }
            break;
        case WM_ACTIVATE:
            if (active_ != nullptr) {
                active_->OnFrameWindowActivate(LOWORD(wParam) != WA_INACTIVE ? TRUE : FALSE);
            }
            break;
        case WM_SETFOCUS:
            if (control_) {
                control_->takeFocus();
            }
            return 0;
        case WM_COMMAND:
            onCommand(LOWORD(wParam));
            return 0;
        case WM_SETCURSOR:
            if (reinterpret_cast<HWND>(wParam) == window_ && LOWORD(lParam) == HTCLIENT && onCursor()) {
                return TRUE;
            }
            break;
        case WM_LBUTTONDOWN:
            dragged_ = panes_.splitterAt(place);
            if (dragged_ != Splitter::None) {
                SetCapture(window_);
            }
            return 0;
        case WM_MOUSEMOVE:
            onDrag(place);
            return 0;
        case WM_LBUTTONUP:
            ReleaseCapture();
            return 0;
        case WM_CAPTURECHANGED:
            dragged_ = Splitter::None;
            return 0;
        case WM_QUERYENDSESSION:
            return mayLeaveMethod() ? TRUE : FALSE;
        case WM_CLOSE:
            if (mayLeaveMethod()) {
                control_.reset();
                DestroyWindow(window_);
            }
            return 0;
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
        case WM_NCDESTROY:
            SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
            window_ = nullptr;
            return 0;
        default:
            break;
    }
    return DefWindowProcW(window_, message, wParam, lParam);
}

}  // namespace vrn::sample
