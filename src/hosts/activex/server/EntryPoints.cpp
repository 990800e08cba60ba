// The four functions that the DLL exports.
#include <windows.h>

#include "hosts/activex/server/ClassFactory.h"
#include "hosts/activex/server/Module.h"
#include "hosts/activex/server/Registration.h"
#include "vrnMethodEditor.h"

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    *object = nullptr;
    return clsid == CLSID_VRN_MethodEditor ? vrn::activex::classFactory(iid, object) : CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() { return vrn::activex::module::isIdle() ? S_OK : S_FALSE; }

STDAPI DllRegisterServer() { return vrn::activex::registerServer(); }

STDAPI DllUnregisterServer() { return vrn::activex::unregisterServer(); }
