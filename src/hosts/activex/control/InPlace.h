// The control's windows in the container's window: when they come and go, who has the keyboard, and where keys go.
#pragma once

#include "hosts/activex/control/Control.h"

namespace vrn::activex {

class InPlace final : public Face<IOleInPlaceObject, IOleInPlaceActiveObject> {
  public:
    using Face::Face;

    /// What a container asks for by number, and what it gives for it.
    struct Request {
        LONG verb = OLEIVERB_PRIMARY;
        const MSG* message = nullptr;    ///< the user's that led to it; null for none
        IOleClientSite* site = nullptr;  ///< null when the container has none
        HWND parent = nullptr;           ///< for a site that does not know where the windows go
        const RECT* place = nullptr;     ///< in `parent`; null for none
    };
    HRESULT doVerb(const Request& request);
    /// Takes the windows away and tells the container. Nothing when there are none.
    void deactivate();
    /// The container's frame while the windows are there, if it has one.
    [[nodiscard]] const com::ComPtr<IOleInPlaceFrame>& frame() const noexcept { return frame_; }

    /// A window of the form has got the keyboard, or all have lost it.
    void focusChanged(bool inForm) noexcept;
    /// The user works in the form, which has the keyboard: the container may have ended the control's part in its user
    /// interface in the meantime.
    void userActs() noexcept;
    /// One of the form's mnemonics was pressed elsewhere in the container.
    void pressMnemonic(wchar_t key);
    /// While the container is being designed the control does not take part in its user interface.
    void followUserMode();

    // Both
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL enter) override;
    // IOleInPlaceObject
    HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE UIDeactivate() override;
    HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT place, LPCRECT clip) override;
    HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override;
    // IOleInPlaceActiveObject
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message) override;
    HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL active) override;
    HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL active) override;
    HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL isFrame) override;
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override;

  private:
    enum class State { Inactive, Active, UIActive };

    HRESULT activate(const Request& request);
    void createWindows(const Request& request);
    [[nodiscard]] bool isOver();
    HRESULT activateUI(Form::FocusTarget target);
    void deactivateUI();
    void offerToFrame();
    void forget() noexcept;

    State state_ = State::Inactive;
    com::ComPtr<IOleInPlaceSite> site_;
    com::ComPtr<IOleInPlaceFrame> frame_;
    com::ComPtr<IOleInPlaceUIWindow> document_;
};

}  // namespace vrn::activex
