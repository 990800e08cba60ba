// What the windows of one form share.
#pragma once

#include <windows.h>

#include <memory>

#include "method/EditorState.h"

namespace vrn::activex {

class FormSite;
class Window;

/// How the form is drawn for now.
struct Look {
    int dpi = 96;
    HFONT font = nullptr;      ///< of everything but grid and list
    HFONT gridFont = nullptr;  ///< of grid and list
    bool themed = false;       ///< whether the host's controls have the system's theme
    HDC metrics = nullptr;     ///< measures text for a context that cannot; null for none
    /// What measures text that is drawn into this context.
    [[nodiscard]] HDC measuring(HDC context) const noexcept { return metrics != nullptr ? metrics : context; }
};

/// Lives as long as one of its windows is at work: the host may take the form away in the midst of what the user does. From
/// then on the session is closed, and nothing of the editor may be touched.
class Session : public std::enable_shared_from_this<Session> {
  public:
    virtual ~Session() = default;

    [[nodiscard]] bool open() const noexcept { return open_; }
    /// Whether what the user does counts for now.
    [[nodiscard]] virtual bool userMayAct() const noexcept = 0;
    [[nodiscard]] virtual method::EditorState& state() noexcept = 0;
    [[nodiscard]] virtual const Look& look() const noexcept = 0;
    [[nodiscard]] virtual HINSTANCE module() const noexcept = 0;

    /// Whoever placed the form. Out of bounds once the session is closed.
    [[nodiscard]] virtual FormSite& site() noexcept = 0;
    /// The peer behind a window, null when it is none of the form's.
    [[nodiscard]] virtual Window* windowOf(HWND handle) const noexcept = 0;
    /// Something that counts for the places has changed.
    virtual void placesChanged() noexcept = 0;
    /// The engine has asked for the menu of values.
    virtual void menuWanted() noexcept = 0;
    virtual void focusCame(HWND to) noexcept = 0;
    virtual void focusWent(HWND to) noexcept = 0;
    /// The window with the focus can no longer have it: another one gets it as soon as the engine is done.
    virtual void focusAdrift() noexcept = 0;
    /// The user clicks or types in one of the windows.
    virtual void userActs() noexcept = 0;
    /// The user goes from a control to the next or the one before. False at the last one.
    virtual bool goOn(HWND from, bool backwards) noexcept = 0;

    /// The way in from outside: a window's procedure, a reader's question. Keeps the session for as long, and whoever placed the
    /// form with its engine: the host may let go of all of them in what it is called for.
    class Running {
      public:
        explicit Running(Session& session) noexcept;
        ~Running();
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;

      private:
        std::shared_ptr<Session> session_;
        FormSite* site_ = nullptr;
    };

  protected:
    void close() noexcept { open_ = false; }
    /// How many procedures of the windows are on the stack, and with them perhaps a system control's code.
    [[nodiscard]] int running() const noexcept { return running_; }
    /// The last procedure of a closed session is done.
    virtual void settled() noexcept = 0;

  private:
    bool open_ = true;
    int running_ = 0;
};

}  // namespace vrn::activex
