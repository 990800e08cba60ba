// The control as an embedded object: its site, its size, what can be asked of it, and the container's control protocol.
#pragma once

#include "hosts/activex/control/Control.h"

namespace vrn::activex {

class OleObject final : public Face<IOleObject, IOleControl> {
  public:
    explicit OleObject(Control& control);
    ~OleObject() override;

    /// The container's site for the control; null while there is none.
    [[nodiscard]] const com::ComPtr<IOleClientSite>& site() const noexcept { return site_; }
    /// An interface of the site, null when it does not have it.
    template <typename Interface>
    [[nodiscard]] com::ComPtr<Interface> siteAs() const noexcept {
        com::ComPtr<Interface> found;
        if (const auto site = site_; site != nullptr) {
            site.As(&found);
        }
        return found;
    }
    /// Width and height in hundredths of a millimetre.
    [[nodiscard]] SIZEL extent() const noexcept { return extent_; }

    // IOleObject
    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override;
    HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** site) override;
    HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR application, LPCOLESTR document) override;
    HRESULT STDMETHODCALLTYPE Close(DWORD save) override;
    HRESULT STDMETHODCALLTYPE SetMoniker(DWORD which, IMoniker* moniker) override;
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
    HRESULT STDMETHODCALLTYPE InitFromData(IDataObject* data, BOOL creation, DWORD reserved) override;
    HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD reserved, IDataObject** data) override;
    HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, MSG* message, IOleClientSite* activeSite, LONG index, HWND parent,
                                     LPCRECT place) override;
    HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB** verbs) override;
    HRESULT STDMETHODCALLTYPE Update() override;
    HRESULT STDMETHODCALLTYPE IsUpToDate() override;
    HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* id) override;
    HRESULT STDMETHODCALLTYPE GetUserType(DWORD form, LPOLESTR* name) override;
    HRESULT STDMETHODCALLTYPE SetExtent(DWORD aspect, SIZEL* extent) override;
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, SIZEL* extent) override;
    HRESULT STDMETHODCALLTYPE Advise(IAdviseSink* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA** connections) override;
    HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD aspect, DWORD* status) override;
    HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE* palette) override;
    // IOleControl
    HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO* info) override;
    HRESULT STDMETHODCALLTYPE OnMnemonic(MSG* message) override;
    HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID property) override;
    HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL freeze) override;

  private:
    IOleAdviseHolder* advisers();

    com::ComPtr<IOleClientSite> site_;
    com::ComPtr<IOleAdviseHolder> advisers_;
    SIZEL extent_;
    HACCEL accelerators_ = nullptr;
};

}  // namespace vrn::activex
