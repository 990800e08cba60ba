// The control's own interfaces, each a dual one described by the type library.
#pragma once

#include <optional>
#include <string>

#include "hosts/activex/control/Control.h"
#include "vrnMethodEditor.h"

namespace vrn::activex {

/// IDispatch of a dual interface, by its description in the type library.
template <typename Interface>
class DispatchFace : public Face<Interface> {
  public:
    using Face<Interface>::Face;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) final;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) final;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) final;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) final;

  private:
    ITypeInfo* info();
    com::ComPtr<ITypeInfo> info_;
};

/// IVRN_MethodEditor: what a host calls.
class Members final : public DispatchFace<IVRN_MethodEditor> {
  public:
    using DispatchFace::DispatchFace;

    HRESULT STDMETHODCALLTYPE refreshControls() override;
    HRESULT STDMETHODCALLTYPE SetXmlDocuments(IDispatch* domMacros, IDispatch* domlatestKex, IDispatch* domMethod,
                                              IDispatch* domConfig) override;
    HRESULT STDMETHODCALLTYPE GetMethodXml(IDispatch** method) override;
    HRESULT STDMETHODCALLTYPE get_MethodIsChanged(VARIANT_BOOL* changed) override;
    HRESULT STDMETHODCALLTYPE put_MethodIsChanged(VARIANT_BOOL changed) override;
    HRESULT STDMETHODCALLTYPE put_DisableMethod(VARIANT_BOOL disable) override;
    HRESULT STDMETHODCALLTYPE put_DisableDescription(VARIANT_BOOL disable) override;
    HRESULT STDMETHODCALLTYPE put_DisableSyringe(VARIANT_BOOL disable) override;
    HRESULT STDMETHODCALLTYPE get_AuditTrail(BSTR* auditTrail) override;

  private:
    template <typename Body>
    HRESULT changing(Body&& body);
};

/// IMethodEditorServices: what a host may put in place of the control's services.
class ServiceMembers final : public DispatchFace<IMethodEditorServices> {
  public:
    using DispatchFace::DispatchFace;

    HRESULT STDMETHODCALLTYPE putref_InstrumentService(IDispatch* service) override;
    HRESULT STDMETHODCALLTYPE putref_SignatureV4(IDispatch* component) override;
    HRESULT STDMETHODCALLTYPE putref_SignatureV23(IDispatch* component) override;
};

}  // namespace vrn::activex
