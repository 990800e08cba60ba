#include "hosts/activex/control/ClassInformation.h"

#include "vrnMethodEditor.h"

namespace vrn::activex {

HRESULT ClassInformation::GetClassInfo(ITypeInfo** info) {
    return control().call(IID_IProvideClassInfo2, [&] {
        requirePointer(info, "info");
        *info = module::typeInfo(CLSID_VRN_MethodEditor).Detach();
        return S_OK;
    });
}

HRESULT ClassInformation::GetGUID(DWORD kind, GUID* id) {
    return control().call(IID_IProvideClassInfo2, [&] {
        requirePointer(id, "id");
        *id = GUID_NULL;
        if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) {
            fail(E_INVALIDARG, "The control knows only the identifier of its event interface.");
        }
        *id = DIID_DVRN_MethodEditorEvents;
        return S_OK;
    });
}

HRESULT ClassInformation::InterfaceSupportsErrorInfo(REFIID iid) {
    // Whatever interface it is: if the control has it, its failures are described.
    if (iid == IID_IUnknown) {
        return S_FALSE;
    }
    com::ComPtr<IUnknown> supported;
    return SUCCEEDED(control().inner()->QueryInterface(iid, &supported)) ? S_OK : S_FALSE;
}

}  // namespace vrn::activex
