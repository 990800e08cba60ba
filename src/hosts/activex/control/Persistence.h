// Storing the control with the window that it stands on. Nothing of a method is stored there: the host keeps its documents.
#pragma once

#include "hosts/activex/control/Control.h"

namespace vrn::activex {

class Persistence final : public Face<IPersistStreamInit, IPersistPropertyBag> {
  public:
    using Face::Face;

    // Both
    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* id) override;
    HRESULT STDMETHODCALLTYPE InitNew() override;
    // IPersistStreamInit
    HRESULT STDMETHODCALLTYPE IsDirty() override;
    HRESULT STDMETHODCALLTYPE Load(IStream* stream) override;
    HRESULT STDMETHODCALLTYPE Save(IStream* stream, BOOL clearDirty) override;
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) override;
    // IPersistPropertyBag
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override;
    HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clearDirty, BOOL all) override;
};

}  // namespace vrn::activex
