#include "hosts/activex/form/Window.h"

#include <array>
#include <mutex>

#include "com/Com.h"
#include "hosts/activex/form/Form.h"

namespace vrn::activex {

namespace {

std::mutex classesMutex;
int classesUsers = 0;

[[noreturn]] void throwLastError() { com::throwFailure(HRESULT_FROM_WIN32(GetLastError())); }

bool isOfUser(UINT message) noexcept {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_MBUTTONDOWN:
        case WM_RBUTTONDOWN:
        case WM_KEYDOWN:
            return true;
        default:
            return false;
    }
}

}  // namespace

Session::Running::Running(Session& session) noexcept : session_(session.weak_from_this().lock()) {
    if (session_) {
        ++session_->running_;
        if (session_->open()) {
            site_ = &session_->site();
            site_->enter();
        }
    }
}

Session::Running::~Running() {
    if (site_ != nullptr) {
        site_->leave();  // perhaps its end
    }
    if (session_ && --session_->running_ == 0 && !session_->open()) {
        session_->settled();
    }
}

WindowClasses::WindowClasses(HINSTANCE module) : module_(module) {
    const std::lock_guard lock(classesMutex);
    if (classesUsers == 0) {
        // A frame's line follows its size; the grid paints itself anew only where it has to.
        const std::array<std::pair<const wchar_t*, UINT>, 4> classes{
            {{form, 0}, {frame, CS_HREDRAW | CS_VREDRAW}, {grid, CS_DBLCLKS}, {hint, CS_HREDRAW | CS_VREDRAW}}};
        for (const auto& [name, style] : classes) {
            WNDCLASSEXW description{};
            description.cbSize = sizeof description;
            description.style = style;
            description.lpfnWndProc = Window::procedure;
            description.hInstance = module;
            description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
            description.lpszClassName = name;
            if (RegisterClassExW(&description) == 0 && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) {
                throwLastError();
            }
        }
    }
    ++classesUsers;
}

WindowClasses::~WindowClasses() {
    const std::lock_guard lock(classesMutex);
    if (--classesUsers == 0) {
        for (const auto* const name : {form, frame, grid, hint}) {
            UnregisterClassW(name, module_);
        }
    }
}

void Window::make(const Making& making) {
    const HWND made =
        CreateWindowExW(making.extendedStyle, making.windowClass, making.text, making.style, 0, 0, 0, 0, making.parent,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(making.id)), session_.module(), this);
    if (made == nullptr) {
        throwLastError();
    }
    if (handle_ == nullptr) {
        // One of the system's controls: it has not been here yet.
        handle_ = made;
        SetWindowLongPtrW(made, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        systems_ = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(made, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Window::procedure)));
    }
}

LRESULT Window::byDefault(UINT message, WPARAM wParam, LPARAM lParam) const noexcept {
    if (handle_ == nullptr) {
        return 0;
    }
    return systems_ == nullptr ? DefWindowProcW(handle_, message, wParam, lParam)
                               : CallWindowProcW(systems_, handle_, message, wParam, lParam);
}

LRESULT CALLBACK Window::procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        auto* const made = static_cast<Window*>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        made->handle_ = handle;
        SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(made));
    }
    auto* const window = reinterpret_cast<Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    return window == nullptr ? DefWindowProcW(handle, message, wParam, lParam) : window->run(message, wParam, lParam);
}

LRESULT Window::run(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const Session::Running running(session_);
    if (message == WM_NCDESTROY) {
        const HWND handle = handle_;
        const LRESULT result = byDefault(message, wParam, lParam);
        SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
        handle_ = nullptr;
        return result;
    }
    if (message == WM_DESTROY) {
        ending();
    }
    if (!session_.open() && message != endMessage && message != WM_DESTROY) {
        return byDefault(message, wParam, lParam);
    }
    if (message == WM_CLOSE) {
        // A box of several lines asks its parent to close on Escape, taking it for a dialog.
        return 0;
    }
    if (message == WM_SETFOCUS) {
        session_.focusCame(handle_);
    } else if (message == WM_KILLFOCUS) {
        session_.focusWent(reinterpret_cast<HWND>(wParam));
    } else if (isOfUser(message)) {
        session_.userActs();
    }
    try {
        const bool fromMouse = message >= WM_MOUSEFIRST && message <= WM_MOUSELAST;
        if (fromMouse && message != WM_MOUSEMOVE) {
            mouseCame(message, wParam, lParam);
        }
        const LRESULT result = onMessage(message, wParam, lParam);
        // A move may have shown something that takes the place of a tip.
        if (message == WM_MOUSEMOVE && handle_ != nullptr && session_.open()) {
            mouseCame(message, wParam, lParam);
        }
        return result;
    } catch (...) {
        // The engine reports its failures itself; for what fails around it, there is nobody to tell.
        return 0;
    }
}

}  // namespace vrn::activex
