// The program's window: menu and tool bar, the control, the audit trail beside it, the event log below.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "hosts/sample/AuditView.h"
#include "hosts/sample/EditorControl.h"
#include "hosts/sample/EventLog.h"
#include "hosts/sample/Measures.h"
#include "hosts/sample/MethodFile.h"
#include "hosts/sample/Panes.h"
#include "hosts/sample/ToolBar.h"

namespace vrn::sample {

class Window final : public Container {
  public:
    /// Makes the control. `errors::Error` when there is none.
    Window();
    ~Window() override;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// Shows the window with the control in it, empty.
    void show();
    /// Opens a set and, unless empty, a method. What goes wrong is told to the user.
    void open(const std::wstring& folder, const std::wstring& method);
    /// Until the window is closed. The answer is the program's exit status.
    int run();

    // Container
    [[nodiscard]] HWND frameWindow() const noexcept override { return window_; }
    [[nodiscard]] HWND controlParent() const noexcept override { return pane_; }
    [[nodiscard]] RECT controlPlace() const noexcept override;
    void activeObjectChanged(IOleInPlaceActiveObject* object) noexcept override { active_ = object; }
    void controlFocusChanged(bool /*inControl*/) noexcept override {}
    bool unusedKey(const MSG& message) noexcept override;
    void enableModeless(bool enable) noexcept override;
    void showStatus(const wchar_t* text) noexcept override;

  private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void createChildren();
    void takeFont();
    void appearanceChanged(UINT message, WPARAM wParam, LPARAM lParam);
    void arrange();
    bool onCursor() const;
    void onDrag(POINT place);

    [[nodiscard]] bool translate(MSG& message);
    bool goToPane(int from, bool backwards);

    void onCommand(int command);
    void startNew();
    void openSet();
    void openMethod();
    bool save(bool underNewName);
    void verify();
    void lock(bool locked);
    void compare();
    void showNoticeAgain();
    void toggle(bool& shown);
    /// Asks about unsaved changes. False when the user is to stay.
    [[nodiscard]] bool mayLeaveMethod();
    void methodArrived();
    void showState();
    void tell(const std::wstring& text, UINT icon) const;

    HWND window_ = nullptr;
    HWND pane_ = nullptr;  // holds the control
    HWND status_ = nullptr;
    ToolBar toolBar_;
    Panes panes_;
    AuditView audit_;
    EventLog events_;
    Font font_;  // of all but the control and the status bar
    HACCEL keys_ = nullptr;
    std::optional<EditorControl> control_;
    std::optional<MethodFile> file_;
    com::ComPtr<IOleInPlaceActiveObject> active_;
    Splitter dragged_ = Splitter::None;
    int messages_ = 0;  // that the control has shown
    bool locked_ = false;
};

}  // namespace vrn::sample
