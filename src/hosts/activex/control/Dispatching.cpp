// Calls by name and number, told apart by the type library.
#include "hosts/activex/control/Members.h"

namespace vrn::activex {

namespace {

// The system knows a dual interface by two descriptions. The one of its functions is what calls go through: by the other one
// they would come back to where they started.
com::ComPtr<ITypeInfo> functionsOf(com::ComPtr<ITypeInfo> info) {
    TYPEATTR* attributes = nullptr;
    com::require(info->GetTypeAttr(&attributes));
    const auto kind = attributes->typekind;
    info->ReleaseTypeAttr(attributes);
    if (kind != TKIND_DISPATCH) {
        return info;
    }
    constexpr UINT otherDescription = static_cast<UINT>(-1);
    HREFTYPE reference = 0;
    com::ComPtr<ITypeInfo> functions;
    com::require(info->GetRefTypeOfImplType(otherDescription, &reference));
    com::require(info->GetRefTypeInfo(reference, &functions));
    return functions;
}

}  // namespace

template <typename Interface>
ITypeInfo* DispatchFace<Interface>::info() {
    if (info_ == nullptr) {
        info_ = functionsOf(module::typeInfo(__uuidof(Interface)));
    }
    return info_.Get();
}

template <typename Interface>
HRESULT DispatchFace<Interface>::GetTypeInfoCount(UINT* count) {
    return this->control().call(IID_IDispatch, [&] {
        requirePointer(count, "count");
        *count = 1;
        return S_OK;
    });
}

template <typename Interface>
HRESULT DispatchFace<Interface>::GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** info) {
    return this->control().call(IID_IDispatch, [&] {
        requirePointer(info, "info");
        *info = nullptr;
        if (index != 0) {
            fail(DISP_E_BADINDEX, "An interface has one type description, number 0.");
        }
        *info = module::typeInfo(__uuidof(Interface)).Detach();
        return S_OK;
    });
}

template <typename Interface>
HRESULT DispatchFace<Interface>::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID /*locale*/,
                                               DISPID* ids) {
    return this->control().call(IID_IDispatch, [&] {
        requirePointer(names, "names");
        requirePointer(ids, "ids");
        if (reserved != IID_NULL) {
            fail(DISP_E_UNKNOWNINTERFACE, "The reserved identifier must be IID_NULL.");
        }
        return info()->GetIDsOfNames(names, count, ids);
    });
}

template <typename Interface>
HRESULT DispatchFace<Interface>::Invoke(DISPID member, REFIID reserved, LCID /*locale*/, WORD flags,
                                        DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                        UINT* wrongArgument) {
    return this->control().call(IID_IDispatch, [&] {
        requirePointer(parameters, "parameters");
        if (reserved != IID_NULL) {
            fail(DISP_E_UNKNOWNINTERFACE, "The reserved identifier must be IID_NULL.");
        }
        return info()->Invoke(static_cast<Interface*>(this), member, flags, parameters, result, exception,
                              wrongArgument);
    });
}

template class DispatchFace<IVRN_MethodEditor>;
template class DispatchFace<IMethodEditorServices>;

}  // namespace vrn::activex
