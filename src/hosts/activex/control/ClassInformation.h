// Which class the control is of, and whose failures come with error information.
#pragma once

#include "hosts/activex/control/Control.h"

namespace vrn::activex {

class ClassInformation final : public Face<IProvideClassInfo2, ISupportErrorInfo> {
  public:
    using Face::Face;

    // IProvideClassInfo2
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* id) override;
    // ISupportErrorInfo
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override;
};

}  // namespace vrn::activex
