#include "hosts/activex/server/ClassFactory.h"

#include "hosts/activex/control/Control.h"
#include "hosts/activex/server/Module.h"

namespace vrn::activex {

namespace {

// Has no state, so that one for all will do. Who holds it holds the module, as long as factories are counted as locks.
class ClassFactory final : public IClassFactory {
  public:
    virtual ~ClassFactory() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        if (iid != IID_IUnknown && iid != IID_IClassFactory) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        AddRef();
        *object = static_cast<IClassFactory*>(this);
        return S_OK;
    }
    // The answers are for debuggers only; nothing may be concluded from them.
    ULONG STDMETHODCALLTYPE AddRef() override {
        module::lock(true);
        return 2;
    }
    ULONG STDMETHODCALLTYPE Release() override {
        module::lock(false);
        return 1;
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        *object = nullptr;
        if (outer != nullptr && iid != IID_IUnknown) {
            // Whoever aggregates gets the inner unknown, and nothing else at first.
            return CLASS_E_NOAGGREGATION;
        }
        return createControl(outer, iid, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL keep) override {
        module::lock(keep != FALSE);
        return S_OK;
    }
};

}  // namespace

HRESULT classFactory(REFIID iid, void** factory) noexcept {
    static ClassFactory theFactory;
    return theFactory.QueryInterface(iid, factory);
}

}  // namespace vrn::activex
