// A window with one control, and a way for another thread to have work done where the windows live.
//
// What a user does may open a message box or a menu, and both keep the windows' thread in a loop of their own. So the script
// runs beside it: it has each step done by a message, and sees to what has opened meanwhile like a user at the screen.
#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <optional>

#include "hosts/sample/EditorControl.h"

namespace vrn::sample {

class HostWindow final : public Container {
  public:
    /// Opens the window. Its thread is the calling one.
    explicit HostWindow(ErrorHandler onError);
    ~HostWindow() override;
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    /// Dispatches messages until `quit`.
    void run();

    // For the script's thread.
    /// Has `work` done by the windows' thread and waits for it, calling `meanwhile` now and then. Passes its exception on. The
    /// answer is whether the thread was in a loop of its own, as while a message box or a menu is open or about to open.
    bool perform(const std::function<void()>& work, const std::function<void()>& meanwhile);
    void quit() const;
    [[nodiscard]] DWORD thread() const noexcept { return thread_; }

    // For work done by the windows' thread.
    [[nodiscard]] EditorControl& control() noexcept { return *control_; }
    /// Takes the control away. A value that is still being entered is left, which may show a message.
    void close() noexcept { control_.reset(); }

    // Container
    [[nodiscard]] HWND frameWindow() const noexcept override { return window_; }
    [[nodiscard]] HWND controlParent() const noexcept override { return window_; }
    [[nodiscard]] RECT controlPlace() const noexcept override;
    void activeObjectChanged(IOleInPlaceActiveObject* /*object*/) noexcept override {}
    void controlFocusChanged(bool /*inControl*/) noexcept override {}
    bool unusedKey(const MSG& /*message*/) noexcept override { return false; }
    void enableModeless(bool /*enable*/) noexcept override {}
    void showStatus(const wchar_t* /*text*/) noexcept override {}

  private:
    struct Work;
    void begin(WPARAM number) noexcept;
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    HWND window_ = nullptr;
    DWORD thread_ = GetCurrentThreadId();
    std::atomic<Work*> work_ = nullptr;  // asked for and not begun
    WPARAM works_ = 0;                   // of the script's thread
    bool outermost_ = false;             // what is being dispatched came from `run`
    std::optional<EditorControl> control_;
};

}  // namespace vrn::sample
