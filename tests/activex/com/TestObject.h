// COM objects of the tests' own.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <ocidl.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "com/Dispatch.h"
#include "errors/Error.h"

namespace vrn::test {

/// An object with these interfaces, on the heap from `make`. It ends when nobody holds it any more.
template <typename First, typename... Others>
class TestObject : public First, public Others... {
  public:
    virtual ~TestObject() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        if (iid == IID_IUnknown || iid == __uuidof(First)) {
            *object = static_cast<First*>(this);
        }
        ((iid == __uuidof(Others) ? static_cast<void>(*object = static_cast<Others*>(this)) : static_cast<void>(0)),
         ...);
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&count_)); }
    ULONG STDMETHODCALLTYPE Release() override {
        const auto left = InterlockedDecrement(&count_);
        if (left == 0) {
            delete this;
        }
        return static_cast<ULONG>(left);
    }
    [[nodiscard]] LONG count() const noexcept { return count_; }

  private:
    LONG count_ = 1;
};

template <typename Object, typename... Arguments>
com::ComPtr<Object> make(Arguments&&... arguments) {
    auto* const object = new Object(std::forward<Arguments>(arguments)...);
    com::ComPtr<Object> made(object);
    object->Release();  // the reference that it was born with
    return made;
}

/// An object like a script's: members known by name, and nothing else. Values come as they are passed, by reference or not.
class NamedObject final : public TestObject<IDispatch> {
  public:
    using Arguments = std::vector<VARIANT*>;  ///< first to last
    using Member = std::function<void(const Arguments&, com::Variant& result)>;

    explicit NamedObject(std::vector<std::pair<std::wstring, Member>> members) : members_(std::move(members)) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*info*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT /*count*/, LCID /*locale*/,
                                            DISPID* ids) override {
        for (std::size_t i = 0; i < members_.size(); ++i) {
            if (members_[i].first == *names) {
                *ids = static_cast<DISPID>(i + 100);
                return S_OK;
            }
        }
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID /*reserved*/, LCID /*locale*/, WORD /*flags*/,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* /*wrongArgument*/) override {
        Arguments arguments;
        for (UINT i = parameters->cArgs; i > 0; --i) {
            arguments.push_back(&parameters->rgvarg[i - 1]);
        }
        try {
            com::Variant answer;
            members_.at(static_cast<std::size_t>(member - 100)).second(arguments, answer);
            if (result != nullptr) {
                *result = std::exchange(answer.ref(), VARIANT{});
            }
            return S_OK;
        } catch (const errors::Error& error) {
            exception->scode = error.number() < 0 ? error.number() : static_cast<SCODE>(0x800A0000) | error.number();
            exception->bstrDescription = com::Bstr(error.description()).release();
            exception->bstrSource = com::Bstr(error.source()).release();
            return DISP_E_EXCEPTION;
        }
    }

  private:
    std::vector<std::pair<std::wstring, Member>> members_;
};

inline com::Variant truth(bool value) {
    com::Variant result;
    result.ref().vt = VT_BOOL;
    result.ref().boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    return result;
}

}  // namespace vrn::test
