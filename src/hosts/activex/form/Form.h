// The editor's form: one native child window per child control of the engine, in frames, laid out to the size that the
// container gives.
//
// The models are the truth. A peer shows its model, tells it what the user does, and is told by it what changed; the form
// decides nothing about methods. Windows may come and go (a container deactivates a control), the models stay.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "shell/VRN_MethodEditor.h"

namespace vrn::activex {

/// What the form asks of whoever placed it.
class FormSite {
  public:
    virtual ~FormSite() = default;
    /// A message of the user or the system is about to go through one of the form's windows, or a reader's question is about
    /// to be answered. What is done for it may call the host, which may let go of everything: `enter` keeps the site, its
    /// engine and its form until the `leave` that belongs to it.
    virtual void enter() noexcept = 0;
    virtual void leave() noexcept = 0;
    /// One of the form's windows has got the keyboard focus, or the form has lost it to a window outside.
    virtual void focusChanged(bool inForm) noexcept = 0;
    /// The user clicks or types in the form, which has the focus already.
    virtual void userActs() noexcept = 0;
    /// The host does not want its user interface to answer for now: what the user does is to be ignored.
    [[nodiscard]] virtual bool uiDead() const noexcept = 0;
};

/// Where the form is drawn without windows.
struct Canvas {
    HDC context = nullptr;
    RECT bounds{};         ///< in the context's units
    int dpi = 96;          ///< how many of the units are an inch, for the sizes of fonts and lines
    HDC device = nullptr;  ///< what the picture is for, which measures text for a metafile; null for the screen
};

class FormWindows;

class Form {
  public:
    /// `module` is the one that holds the form's resources. Makes no window. `editor` and `site` must outlive the form.
    Form(shell::VRN_MethodEditor& editor, FormSite& site, HINSTANCE module);
    ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    /// Makes the windows inside `parent`, hidden, at `place` (pixels of the parent). `errors::Error` when the system refuses;
    /// no window is left then. Nothing when they are there already.
    void create(HWND parent, const RECT& place);
    /// Takes the windows away. A value that the user is entering is left as by Enter.
    void destroy() noexcept;
    /// The form's outermost window, null while there is none.
    [[nodiscard]] HWND window() const noexcept;
    void show(bool visible) const noexcept;
    /// New place, in pixels of the parent; `clip` is the part of it that may be seen.
    void moveTo(const RECT& place, const RECT& clip) const noexcept;
    /// The container's own font for everything but grid and list, which follow the editor's rule; null for the system's. The
    /// font stays the caller's, who keeps it until another is set.
    void setFont(HFONT font) noexcept;

    /// Whether the keyboard focus is in the form.
    [[nodiscard]] bool hasFocus() const noexcept;
    /// Gives the focus to the control that had it last, or to the first or last that can take it.
    enum class FocusTarget { Previous, First, Last };
    void takeFocus(FocusTarget target) noexcept;
    /// A key message for a window of the form before it is dispatched: TAB from control to control, arrows and Enter where a
    /// control wants them, mnemonics with Alt. False when it is not the form's: the container may have it, such as a TAB
    /// behind the last control.
    [[nodiscard]] bool translateKey(const MSG& message) noexcept;
    /// The keys that, with Alt, reach a control of the form from anywhere in the container ("IRD", in upper case).
    [[nodiscard]] std::wstring mnemonics() const;
    /// One of these keys was pressed outside of the form.
    void pressMnemonic(wchar_t key) noexcept;

    /// Draws the form as it stands, without windows: for a container that shows it inactive, or prints.
    void draw(const Canvas& canvas) const noexcept;

    /// How many forms of this module still have windows, and how many objects of theirs readers hold. A form that was destroyed while one of its windows was at work keeps
    /// them, hidden, until the message loop runs: the module must stay loaded for as long.
    [[nodiscard]] static long windowsLeft() noexcept;
    [[nodiscard]] static long readersLeft() noexcept;

  private:
    shell::VRN_MethodEditor& editor_;
    FormSite& site_;
    HINSTANCE module_;
    HFONT font_ = nullptr;
    std::shared_ptr<FormWindows> windows_;
};

}  // namespace vrn::activex
