// The control in the registry, for tests that reach it through COM.
#pragma once

#include "activex/com/Server.h"

namespace vrn::test {

template <typename Function>
Function exportOf(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

inline void registerServer() {
    EXPECT_EQ(exportOf<HRESULT(STDMETHODCALLTYPE*)()>(Server::instance().module(), "DllRegisterServer")(), S_OK);
}
inline void unregisterServer() {
    EXPECT_EQ(exportOf<HRESULT(STDMETHODCALLTYPE*)()>(Server::instance().module(), "DllUnregisterServer")(), S_OK);
}

}  // namespace vrn::test
