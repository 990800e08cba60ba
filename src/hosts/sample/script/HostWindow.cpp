#include "hosts/sample/script/HostWindow.h"

#include <exception>
#include <utility>

#include "hosts/sample/Measures.h"

namespace vrn::sample {

namespace {

constexpr const wchar_t* windowClass = L"vrnScriptedHost";
constexpr UINT workMessage = WM_APP + 1;
constexpr UINT quitMessage = WM_APP + 2;
// Tall enough for the parameters of any cycle.
constexpr int width = 1000;
constexpr int height = 1000;
constexpr DWORD glance = 1;   // milliseconds between two looks at what has opened
constexpr int patience = 10;  // glances

class Event {
  public:
    Event() : handle_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}
    ~Event() { CloseHandle(handle_); }
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;
    void set() const noexcept { SetEvent(handle_); }
    [[nodiscard]] bool wait(DWORD milliseconds) const noexcept {
        return WaitForSingleObject(handle_, milliseconds) == WAIT_OBJECT_0;
    }

  private:
    HANDLE handle_;
};

}  // namespace

// On the stack of the thread that waits for it.
struct HostWindow::Work {
    const std::function<void()>& body;
    WPARAM number;
    bool nested = false;
    std::exception_ptr failure;
    Event done;

    void run() noexcept {
        try {
            body();
        } catch (...) {
            failure = std::current_exception();
        }
        done.set();
    }
};

HostWindow::HostWindow(ErrorHandler onError) {
    control_.emplace(*this, std::move(onError));
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = &HostWindow::procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    description.lpszClassName = windowClass;
    RegisterClassExW(&description);
    window_ = CreateWindowExW(0, windowClass, L"Method Host (scripted)", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, 0,
                              scaled(width), scaled(height), nullptr, nullptr, description.hInstance, nullptr);
    requireWindow(window_);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ShowWindow(window_, SW_SHOWNOACTIVATE);
    control_->show();
}

HostWindow::~HostWindow() {
    control_.reset();
    DestroyWindow(window_);
}

void HostWindow::run() {
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        outermost_ = message.hwnd == window_ && message.message == workMessage;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

bool HostWindow::perform(const std::function<void()>& work, const std::function<void()>& meanwhile) {
    Work order{work, ++works_, false, nullptr, {}};
    work_ = &order;
    PostMessageW(window_, workMessage, order.number, 0);
    for (int glances = 1; !order.done.wait(glance); ++glances) {
        meanwhile();
        // The loop of a message box that ends may drop the message that it has just taken.
        if (glances % patience == 0 && work_ != nullptr) {
            PostMessageW(window_, workMessage, order.number, 0);
        }
    }
    if (order.failure) {
        std::rethrow_exception(order.failure);
    }
    return order.nested;
}

// A message that was posted twice must not begin the next work: what the windows had posted before is to come first.
void HostWindow::begin(WPARAM number) noexcept {
    const bool nested = !std::exchange(outermost_, false);
    auto* const work = work_.load();
    if (work != nullptr && work->number == number) {
        work_ = nullptr;
        work->nested = nested;
        work->run();
    }
}

void HostWindow::quit() const { PostMessageW(window_, quitMessage, 0, 0); }

RECT HostWindow::controlPlace() const noexcept {
    RECT place{};
    GetClientRect(window_, &place);
    return place;
}

LRESULT CALLBACK HostWindow::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
        case workMessage:
            if (auto* const self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
                self != nullptr) {
                self->begin(wParam);
            }
            return 0;
        case quitMessage:
            PostQuitMessage(0);
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

}  // namespace vrn::sample
