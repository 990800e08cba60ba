#include "hosts/activex/control/Persistence.h"

#include "vrnMethodEditor.h"

namespace vrn::activex {

HRESULT Persistence::GetClassID(CLSID* id) {
    return control().call(IID_IPersist, [&] {
        requirePointer(id, "id");
        *id = CLSID_VRN_MethodEditor;
        return S_OK;
    });
}

HRESULT Persistence::InitNew() {
    return control().call(IID_IPersistStreamInit, [] { return S_OK; });
}

HRESULT Persistence::IsDirty() {
    return control().call(IID_IPersistStreamInit, [] { return S_FALSE; });
}

HRESULT Persistence::Load(IStream* stream) {
    return control().call(IID_IPersistStreamInit, [&] {
        requirePointer(stream, "stream");
        return S_OK;  // reads what `Save` wrote, which is nothing: what follows in the stream is another's
    });
}

HRESULT Persistence::Save(IStream* stream, BOOL /*clearDirty*/) {
    return control().call(IID_IPersistStreamInit, [&] {
        requirePointer(stream, "stream");
        return S_OK;
    });
}

HRESULT Persistence::GetSizeMax(ULARGE_INTEGER* size) {
    return control().call(IID_IPersistStreamInit, [&] {
        requirePointer(size, "size");
        size->QuadPart = 0;
        return S_OK;
    });
}

HRESULT Persistence::Load(IPropertyBag* bag, IErrorLog* /*log*/) {
    return control().call(IID_IPersistPropertyBag, [&] {
        requirePointer(bag, "bag");
        return S_OK;
    });
}

HRESULT Persistence::Save(IPropertyBag* bag, BOOL /*clearDirty*/, BOOL /*all*/) {
    return control().call(IID_IPersistPropertyBag, [&] {
        requirePointer(bag, "bag");
        return S_OK;
    });
}

}  // namespace vrn::activex
