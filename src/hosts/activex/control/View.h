// The control as a picture: for a container that shows it inactive, and for printing.
#pragma once

#include "hosts/activex/control/Control.h"

namespace vrn::activex {

class View final : public Face<IViewObject2> {
  public:
    using Face::Face;

    /// The control may look different now. Told to the container only while no window shows it.
    void changed() noexcept;

    // IViewObject2
    HRESULT STDMETHODCALLTYPE Draw(DWORD aspect, LONG index, void* reserved, DVTARGETDEVICE* device, HDC deviceContext,
                                   HDC context, LPCRECTL bounds, LPCRECTL metafileBounds,
                                   BOOL(STDMETHODCALLTYPE* goOn)(ULONG_PTR), ULONG_PTR goOnArgument) override;
    HRESULT STDMETHODCALLTYPE GetColorSet(DWORD aspect, LONG index, void* reserved, DVTARGETDEVICE* device,
                                          HDC deviceContext, LOGPALETTE** colors) override;
    HRESULT STDMETHODCALLTYPE Freeze(DWORD aspect, LONG index, void* reserved, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unfreeze(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    HRESULT STDMETHODCALLTYPE GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, LPSIZEL extent) override;

  private:
    void tell() noexcept;

    com::ComPtr<IAdviseSink> sink_;
    DWORD aspects_ = 0;
    DWORD flags_ = 0;
};

}  // namespace vrn::activex
