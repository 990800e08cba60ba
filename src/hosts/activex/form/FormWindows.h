// The windows of a form, from their making to their end.
#pragma once

#include <array>
#include <memory>
#include <string>

#include "hosts/activex/form/Form.h"
#include "hosts/activex/form/FrameWindow.h"
#include "hosts/activex/form/GridWindow.h"
#include "hosts/activex/form/HintWindow.h"
#include "hosts/activex/form/ItemPeers.h"
#include "hosts/activex/form/Layout.h"
#include "hosts/activex/form/MenuPeer.h"
#include "hosts/activex/form/Owners.h"
#include "hosts/activex/form/Session.h"
#include "hosts/activex/form/SimplePeers.h"
#include "hosts/activex/form/Window.h"

namespace vrn::activex {

class FormWindows;

/// What the outermost window tells the set of windows.
class FormEvents {
  public:
    virtual ~FormEvents() = default;
    virtual void resized() noexcept = 0;
    virtual void appearanceChanged() = 0;
    virtual void focusGiven() noexcept = 0;
    virtual void settleFocus() noexcept = 0;
    virtual void openMenu() = 0;
    virtual void endNow() noexcept = 0;
};

/// The outermost frame: the window of the form.
class RootWindow final : public FrameWindow {
  public:
    RootWindow(Session& session, FormEvents& events, controls::Frame& model) noexcept
        : FrameWindow(session, model, ControlId::fraMethodEditor), events_(events) {}
    enum class Later : UINT { SettleFocus = WM_APP + 1, OpenMenu, EndNow = endMessage };
    /// Has something done by the message loop.
    void post(Later what) const noexcept { PostMessageW(handle(), static_cast<UINT>(what), 0, 0); }

  protected:
    [[nodiscard]] Making making(HWND parent) const override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void paint(HDC context) override;

  private:
    void handOn(UINT message, WPARAM wParam, LPARAM lParam) const noexcept;

    FormEvents& events_;
};

class FormWindows final : public Session, private FormEvents {
  public:
    FormWindows(shell::VRN_MethodEditor& editor, FormSite& site, HINSTANCE module);
    ~FormWindows() override;

    void create(HWND parent, const RECT& place, HFONT font);
    /// Takes the windows away: at once, or by the message loop when one of them is at work.
    void end() noexcept;
    [[nodiscard]] HWND window() const noexcept { return root_.handle(); }
    void setFont(HFONT font) noexcept;
    /// How many sets of windows there are in this module, also of forms that are gone.
    [[nodiscard]] static long count() noexcept;

    // Focus and keys (FormKeys.cpp).
    [[nodiscard]] bool hasFocus() const noexcept;
    void takeFocus(Form::FocusTarget target) noexcept;
    [[nodiscard]] bool translateKey(const MSG& message) noexcept;
    [[nodiscard]] bool pressMnemonic(wchar_t key) noexcept;

    // Session.
    [[nodiscard]] bool userMayAct() const noexcept override { return open() && !site_.uiDead(); }
    [[nodiscard]] method::EditorState& state() noexcept override { return state_; }
    [[nodiscard]] const Look& look() const noexcept override { return look_; }
    [[nodiscard]] HINSTANCE module() const noexcept override { return module_; }
    [[nodiscard]] FormSite& site() noexcept override { return site_; }
    [[nodiscard]] Window* windowOf(HWND handle) const noexcept override;
    void placesChanged() noexcept override;
    void menuWanted() noexcept override;
    void focusCame(HWND to) noexcept override;
    void focusWent(HWND to) noexcept override;
    void focusAdrift() noexcept override;
    void userActs() noexcept override;
    bool goOn(HWND from, bool backwards) noexcept override;

  private:
    void settled() noexcept override;
    void resized() noexcept override { placesChanged(); }
    void appearanceChanged() override;
    void focusGiven() noexcept override { takeFocus(Form::FocusTarget::Previous); }
    void settleFocus() noexcept override;
    void openMenu() override;
    void endNow() noexcept override;

    /// The controls that assistive technology knows by the captions of their frames.
    [[nodiscard]] std::array<const Peer*, 4> named() const noexcept;
    void renewLook();
    [[nodiscard]] Layout places();
    void apply(const Layout& layout) const noexcept;
    [[nodiscard]] bool placedVisibly(const Peer& peer) const noexcept;
    /// Whether a window stands elsewhere in this layout than it does now.
    [[nodiscard]] bool changes(ControlId id, const Layout& layout) const noexcept;
    [[nodiscard]] bool owns(HWND handle) const noexcept;
    [[nodiscard]] bool dispatchWanted(const MSG& message) const noexcept;
    [[nodiscard]] bool onTab(HWND focus) noexcept;
    /// The place of a window in the order of TAB, -1 when it has none.
    [[nodiscard]] int orderOf(HWND handle) const noexcept;
    [[nodiscard]] Peer* peerFrom(int start, int step) const noexcept;
    void give(const Peer& peer) noexcept;

    WindowClasses classes_;
    method::EditorState& state_;
    shell::FontRule rule_;
    FormSite& site_;
    HINSTANCE module_;
    UniqueFont systemFont_;
    UniqueFont gridFont_;
    HFONT containerFont_ = nullptr;
    Look look_;

    RootWindow root_;
    FrameWindow fraMethodDescription_;
    TextPeer txtMethodDescription_;
    FrameWindow fraSyringe_;
    ComboPeer cboSyringe_;
    FrameWindow fraMacroSequence_;
    ListPeer lstMethodMacroList_;
    ButtonPeer cmdInsert_;
    ButtonPeer cmdReplace_;
    ButtonPeer cmdDelete_;
    FrameWindow fraAvailableCycles_;
    ComboPeer cboSelectedMacro_;
    ButtonPeer cmdDefCycle_;
    FrameWindow fraArgument_;
    GridWindow grdMacro_;
    LabelPeer lblCycleDateChanged_;
    HintWindow txtToolTip_;
    MenuPeer mnuUserIndex_;

    std::array<Peer*, controlCount> peers_;  // in the order of their identifiers
    std::array<Peer*, 9> tabOrder_;
    Peer* lastFocus_ = nullptr;
    bool focusIn_ = false;
    bool adrift_ = false;
    bool placing_ = false;
    bool placed_ = false;  // whether `layout_` is how the windows stand
    Layout layout_;
    std::shared_ptr<Session> untilEnd_;  // itself, while the end waits for the message loop
};

}  // namespace vrn::activex
