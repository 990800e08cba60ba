#include "hosts/activex/control/Members.h"

#include <array>

#include "hosts/activex/control/DocumentArgument.h"
#include "hosts/activex/control/HostDocument.h"
#include "hosts/activex/control/View.h"
#include "hosts/activex/services/HostServices.h"

namespace vrn::activex {

namespace {

constexpr VARIANT_BOOL toVariantBool(bool value) { return value ? VARIANT_TRUE : VARIANT_FALSE; }
constexpr bool fromVariantBool(VARIANT_BOOL value) { return value != VARIANT_FALSE; }

}  // namespace

// A call after which the form may look different. A container that draws the control itself is told.
template <typename Body>
HRESULT Members::changing(Body&& body) {
    return control().call(IID_IVRN_MethodEditor, [&] {
        body();
        control().view().changed();
        return S_OK;
    });
}

HRESULT Members::refreshControls() {
    return changing([&] { control().editor().refreshControls(); });
}

HRESULT Members::SetXmlDocuments(IDispatch* domMacros, IDispatch* domlatestKex, IDispatch* domMethod,
                                 IDispatch* domConfig) {
    // By reference a script passes its variables, which it may set to something else while one of them is asked for its text.
    const std::array<com::ComPtr<IDispatch>, 4> held{domMacros, domlatestKex, domMethod, domConfig};
    return changing([&] {
        // All four first: a wrong one must leave the editor as it was.
        const auto macros = documentText(domMacros, "domMacros");
        const auto latestKex = documentText(domlatestKex, "domlatestKex");
        const auto method = documentText(domMethod, "domMethod");
        const auto config = documentText(domConfig, "domConfig");
        control().editor().SetXmlDocuments(macros, latestKex, method, config);
    });
}

HRESULT Members::GetMethodXml(IDispatch** method) {
    return changing([&] {
        requirePointer(method, "method");
        *method = nullptr;
        if (const auto built = control().editor().GetMethodXml()) {
            com::require(hostDocument(*built).CopyTo(IID_IDispatch, reinterpret_cast<void**>(method)));
        }
    });
}

HRESULT Members::get_MethodIsChanged(VARIANT_BOOL* changed) {
    return changing([&] {
        requirePointer(changed, "changed");
        *changed = VARIANT_FALSE;
        *changed = toVariantBool(control().editor().MethodIsChanged());
    });
}

HRESULT Members::put_MethodIsChanged(VARIANT_BOOL changed) {
    return changing([&] { control().editor().MethodIsChanged(fromVariantBool(changed)); });
}

HRESULT Members::put_DisableMethod(VARIANT_BOOL disable) {
    return changing([&] { control().editor().DisableMethod(fromVariantBool(disable)); });
}

HRESULT Members::put_DisableDescription(VARIANT_BOOL disable) {
    return changing([&] { control().editor().DisableDescription(fromVariantBool(disable)); });
}

HRESULT Members::put_DisableSyringe(VARIANT_BOOL disable) {
    return changing([&] { control().editor().DisableSyringe(fromVariantBool(disable)); });
}

HRESULT Members::get_AuditTrail(BSTR* auditTrail) {
    return changing([&] {
        requirePointer(auditTrail, "auditTrail");
        *auditTrail = nullptr;
        *auditTrail = com::Bstr(control().editor().AuditTrail()).release();
    });
}

HRESULT ServiceMembers::putref_InstrumentService(IDispatch* service) {
    return control().call(IID_IMethodEditorServices, [&] {
        control().services().setInstrumentService(service);
        return S_OK;
    });
}

HRESULT ServiceMembers::putref_SignatureV4(IDispatch* component) {
    return control().call(IID_IMethodEditorServices, [&] {
        control().services().setSignatureV4(component);
        return S_OK;
    });
}

HRESULT ServiceMembers::putref_SignatureV23(IDispatch* component) {
    return control().call(IID_IMethodEditorServices, [&] {
        control().services().setSignatureV23(component);
        return S_OK;
    });
}

}  // namespace vrn::activex
