// A window of the form: of a class of its own, or one of the system's controls whose messages pass through here first.
#pragma once

#include <windows.h>

#include "hosts/activex/form/ControlIds.h"
#include "hosts/activex/form/Session.h"
#include "hosts/activex/form/ToolTip.h"

namespace vrn::activex {

/// The window classes of this module, registered while there is an owner of this type.
class WindowClasses {
  public:
    /// `errors::Error` when the system refuses.
    explicit WindowClasses(HINSTANCE module);
    ~WindowClasses();
    WindowClasses(const WindowClasses&) = delete;
    WindowClasses& operator=(const WindowClasses&) = delete;

    static constexpr const wchar_t* form = L"vrnMethodForm";
    static constexpr const wchar_t* frame = L"vrnMethodFrame";
    static constexpr const wchar_t* grid = L"vrnParameterGrid";
    static constexpr const wchar_t* hint = L"vrnMethodHint";

  private:
    HINSTANCE module_;
};

class Window {
  public:
    explicit Window(Session& session) noexcept : session_(session) {}
    virtual ~Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    [[nodiscard]] HWND handle() const noexcept { return handle_; }
    [[nodiscard]] int id() const noexcept { return GetDlgCtrlID(handle_); }

    /// A control below a frame reports to it; the frame passes the report on to the control's peer.
    virtual void onCommand(int /*code*/) {}
    virtual LRESULT onNotify(const NMHDR& /*notification*/) { return 0; }
    /// The brush that the ground of a control below a frame is painted with, after the colours were set; null for the system's.
    [[nodiscard]] virtual HBRUSH ground(HDC /*context*/) const { return nullptr; }
    /// What a tool tip says about a place of the client area: above all, what does not fit there.
    [[nodiscard]] virtual Tip tipAt(POINT /*place*/) { return {}; }

    /// Sent when the windows of a closed session are to go; the only message of our own that counts then.
    static constexpr UINT endMessage = WM_APP + 99;

  protected:
    struct Making {
        const wchar_t* windowClass;
        const wchar_t* text;
        DWORD style;
        DWORD extendedStyle;
        HWND parent;
        int id;
    };
    /// `errors::Error` when the system refuses.
    void make(const Making& making);

    virtual LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) { return byDefault(message, wParam, lParam); }
    /// The mouse has sent the message. A move has been dealt with already, anything else is dealt with next.
    virtual void mouseCame(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) {}
    /// The window is about to go.
    virtual void ending() noexcept {}
    /// What the system or its control does with the message.
    LRESULT byDefault(UINT message, WPARAM wParam, LPARAM lParam) const noexcept;

    [[nodiscard]] Session& session() const noexcept { return session_; }
    [[nodiscard]] const Look& look() const noexcept { return session_.look(); }
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const noexcept {
        return SendMessageW(handle_, message, wParam, lParam);
    }

  private:
    friend class WindowClasses;
    static LRESULT CALLBACK procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    LRESULT run(UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    Session& session_;
    HWND handle_ = nullptr;
    WNDPROC systems_ = nullptr;  // the system control's own procedure
};

}  // namespace vrn::activex
