// A host's handler of the control's event.
#pragma once

#include <string>
#include <vector>

#include "activex/com/Server.h"

namespace vrn::test {

/// A sink that writes down what it is told, and does what a test wants it to do then.
class Sink final : public TestObject<IDispatch> {
  public:
    struct Told {
        std::int32_t number = 0;
        std::vector<std::string> texts;
        int line = 0;
    };
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        return TestObject::QueryInterface(iid == DIID_DVRN_MethodEditorEvents ? IID_IDispatch : iid, object);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* /*count*/) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*info*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* /*names*/, UINT /*count*/, LCID /*locale*/,
                                            DISPID* /*ids*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID /*reserved*/, LCID /*locale*/, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* /*result*/, EXCEPINFO* exception,
                                     UINT* /*wrongArgument*/) override {
        EXPECT_EQ(member, 1);
        EXPECT_EQ(flags, DISPATCH_METHOD);
        EXPECT_EQ(parameters->cArgs, 6U);
        const auto* const last = parameters->rgvarg;
        told.push_back({last[5].lVal,
                        {com::utf8Of(last[4].bstrVal), com::utf8Of(last[3].bstrVal), com::utf8Of(last[2].bstrVal),
                         com::utf8Of(last[1].bstrVal)},
                        last[0].iVal});
        if (whenTold) {
            whenTold();
        }
        if (FAILED(answer)) {
            exception->scode = E_FAIL;
            exception->bstrDescription = SysAllocString(L"the host's own failure");
        }
        return answer;
    }

    std::vector<Told> told;
    std::function<void()> whenTold;
    HRESULT answer = S_OK;
};

inline ComPtr<IConnectionPoint> pointOf(IUnknown* control) {
    ComPtr<IConnectionPointContainer> container;
    ComPtr<IConnectionPoint> point;
    com::require(control->QueryInterface(IID_PPV_ARGS(&container)));
    com::require(container->FindConnectionPoint(DIID_DVRN_MethodEditorEvents, &point));
    return point;
}
inline DWORD connect(IUnknown* control, Sink* sink) {
    DWORD cookie = 0;
    EXPECT_EQ(pointOf(control)->Advise(sink, &cookie), S_OK);
    EXPECT_NE(cookie, 0U);
    return cookie;
}

}  // namespace vrn::test
