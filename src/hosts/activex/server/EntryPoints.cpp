// The four functions that the DLL exports.
#include <windows.h>

#include "hosts/activex/form/Form.h"
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

STDAPI DllCanUnloadNow() {
    // A form that was let go inside one of its own messages takes its windows away a little later, and a screen reader may keep
    // what it has read from; they run code of this file.
    using vrn::activex::Form;
    return vrn::activex::module::isIdle() && Form::windowsLeft() == 0 && Form::readersLeft() == 0 ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() { return vrn::activex::registerServer(); }

STDAPI DllUnregisterServer() { return vrn::activex::unregisterServer(); }
