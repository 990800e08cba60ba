#include "hosts/sample/EventSink.h"

#include <array>

#include "vrnMethodEditor.h"

namespace vrn::sample {

namespace {

constexpr DISPID methodEditorError = 1;

std::wstring textOf(const VARIANT& value) {
    return value.vt == VT_BSTR && value.bstrVal != nullptr ? std::wstring(value.bstrVal, SysStringLen(value.bstrVal))
                                                           : std::wstring();
}

// The arguments of a dispatch call stand in reverse order.
MethodEditorError errorOf(const DISPPARAMS& parameters) {
    const VARIANT* const last = parameters.rgvarg + parameters.cArgs - 1;
    return {last[0].lVal, textOf(last[-1]), textOf(last[-2]), textOf(last[-3]), textOf(last[-4]), last[-5].iVal};
}

}  // namespace

HRESULT EventSink::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    // The control asks for its event interface first; its layout is that of IDispatch.
    const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == DIID_DVRN_MethodEditorEvents;
    *object = known ? static_cast<IDispatch*>(this) : nullptr;
    if (!known) {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

ULONG EventSink::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&references_)); }

ULONG EventSink::Release() {
    const auto left = static_cast<ULONG>(InterlockedDecrement(&references_));
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT EventSink::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT EventSink::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** info) {
    *info = nullptr;
    return E_NOTIMPL;
}

HRESULT EventSink::GetIDsOfNames(REFIID /*iid*/, LPOLESTR* /*names*/, UINT /*count*/, LCID /*locale*/,
                                 DISPID* /*ids*/) {
    return DISP_E_UNKNOWNNAME;
}

HRESULT EventSink::Invoke(DISPID member, REFIID /*iid*/, LCID /*locale*/, WORD /*flags*/, DISPPARAMS* parameters,
                          VARIANT* /*result*/, EXCEPINFO* /*exception*/, UINT* /*argument*/) {
    // What a later version of the control may raise in addition is none of this host's business.
    constexpr UINT argumentCount = 6;
    if (member != methodEditorError || parameters == nullptr || parameters->cArgs != argumentCount) {
        return S_OK;
    }
    try {
        handler_(errorOf(*parameters));
        return S_OK;
    } catch (...) {
        return E_FAIL;
    }
}

EventConnection::EventConnection(IUnknown* control, ErrorHandler handler) {
    com::ComPtr<IConnectionPointContainer> container;
    com::require(control->QueryInterface(IID_PPV_ARGS(&container)));
    com::require(container->FindConnectionPoint(DIID_DVRN_MethodEditorEvents, &point_));
    com::ComPtr<IDispatch> sink;
    sink.Attach(new EventSink(std::move(handler)));
    com::require(point_->Advise(sink.Get(), &cookie_));
}

EventConnection::~EventConnection() { point_->Unadvise(cookie_); }

}  // namespace vrn::sample
