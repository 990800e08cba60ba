// The container's half of the conversation between an ActiveX control and the window that it sits in.
//
// A control asks its site for everything that it needs of its surroundings: where its windows go, which font and colours fit in,
// what becomes of keys that it has no use for. What is here is the least that a control may expect; a container answers
// E_NOTIMPL to what it does not have (no menus to merge, nothing to scroll, no moniker).
#pragma once

#include <windows.h>
// After windows.h, which they build on.
#include <ocidl.h>
#include <olectl.h>
#include <oleidl.h>

#include "com/Com.h"

namespace vrn::sample {

/// What site and frame need to know of the program around them. Must outlive the control.
class Container {
  public:
    virtual ~Container() = default;
    /// The program's frame window, null for a control that is never shown.
    [[nodiscard]] virtual HWND frameWindow() const noexcept = 0;
    /// The window that the control's own window becomes a child of.
    [[nodiscard]] virtual HWND controlParent() const noexcept = 0;
    /// Where the control is in that window.
    [[nodiscard]] virtual RECT controlPlace() const noexcept = 0;
    /// The object that wants to see key messages before anybody else does; null when there is none any more.
    virtual void activeObjectChanged(IOleInPlaceActiveObject* object) noexcept = 0;
    /// The keyboard focus has come into the control, or has left it.
    virtual void controlFocusChanged(bool inControl) noexcept = 0;
    /// A key that the control has no use for, such as a TAB behind its last field. True when the container used it.
    virtual bool unusedKey(const MSG& message) noexcept = 0;
    /// The control shows a modal dialog: the other windows of the program must not be used meanwhile.
    virtual void enableModeless(bool enable) noexcept = 0;
    /// A text for the status bar.
    virtual void showStatus(const wchar_t* text) noexcept = 0;
};

/// The frame as the control sees it: who gets the keys, and a status bar. Menus and tool bars are the host's alone.
class Frame final : public IOleInPlaceFrame {
  public:
    explicit Frame(Container& container) noexcept : container_(&container) {}
    virtual ~Frame() = default;
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;
    /// The container is about to go; whoever still holds the frame gets refusals.
    void detach() noexcept { container_ = nullptr; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    // IOleWindow
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL /*enter*/) override { return E_NOTIMPL; }
    // IOleInPlaceUIWindow
    HRESULT STDMETHODCALLTYPE GetBorder(LPRECT /*border*/) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS /*widths*/) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS widths) override;
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR name) override;
    // IOleInPlaceFrame
    HRESULT STDMETHODCALLTYPE InsertMenus(HMENU /*shared*/, LPOLEMENUGROUPWIDTHS /*widths*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetMenu(HMENU /*shared*/, HOLEMENU /*holder*/, HWND /*object*/) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU /*shared*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR text) override;
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override;
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG /*message*/, WORD /*id*/) override { return S_FALSE; }

  private:
    LONG references_ = 1;
    Container* container_;
};

/// The place that the control sits in. Ambient properties, which tell it how its surroundings look, are asked for by number.
class Site final : public IOleClientSite, public IOleControlSite, public IOleInPlaceSite, public IDispatch {
  public:
    explicit Site(Container& container);
    virtual ~Site() = default;
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;
    void detach() noexcept;
    /// The system's fonts have changed: the control learns that the ambient font has.
    void renewFont() noexcept { font_.Reset(); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    // IOleClientSite
    HRESULT STDMETHODCALLTYPE SaveObject() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override;
    HRESULT STDMETHODCALLTYPE ShowObject() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL /*show*/) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }

    // IOleControlSite
    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL /*lock*/) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** extended) override;
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL* himetric, POINTF* container, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, DWORD modifiers) override;
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL gotFocus) override;
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return E_NOTIMPL; }

    // IOleWindow, IOleInPlaceSite
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL /*enter*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnUIActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT place,
                                               LPRECT clip, LPOLEINPLACEFRAMEINFO info) override;
    HRESULT STDMETHODCALLTYPE Scroll(SIZE /*extent*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL /*undoable*/) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT /*place*/) override { return S_OK; }

    // IDispatch: the ambient properties
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* argument) override;

  private:
    LONG references_ = 1;
    Container* container_;
    com::ComPtr<Frame> frame_;
    com::ComPtr<IFontDisp> font_;  // made when the control asks for it
};

}  // namespace vrn::sample
