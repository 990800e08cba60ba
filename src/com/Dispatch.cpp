#include "com/Dispatch.h"

#include <algorithm>

#include "errors/Error.h"
#include "errors/modErr.h"

namespace vrn::com {

namespace {

Variant converted(const Variant& value, VARTYPE type) {
    Variant result;
    // Also resolves what is passed by reference.
    require(VariantChangeTypeEx(result.put(), value.readOnly(), LOCALE_INVARIANT, 0, type));
    return result;
}

// The data of an array between SafeArrayAccessData and SafeArrayUnaccessData.
template <typename Element>
class Elements {
  public:
    explicit Elements(SAFEARRAY* array) : array_(array) {
        void* data = nullptr;
        require(SafeArrayAccessData(array, &data));
        data_ = static_cast<Element*>(data);
    }
    ~Elements() { SafeArrayUnaccessData(array_); }
    Elements(const Elements&) = delete;
    Elements& operator=(const Elements&) = delete;
    [[nodiscard]] Element& operator[](std::size_t index) const noexcept { return data_[index]; }

  private:
    SAFEARRAY* array_;
    Element* data_ = nullptr;
};

std::size_t lengthOf(SAFEARRAY* array) {
    LONG first = 0;
    LONG last = 0;
    if (SafeArrayGetDim(array) != 1) {
        throwFailure(DISP_E_TYPEMISMATCH);
    }
    require(SafeArrayGetLBound(array, 1, &first));
    require(SafeArrayGetUBound(array, 1, &last));
    return last < first ? 0 : static_cast<std::size_t>(last - first) + 1;
}

}  // namespace

void throwException(EXCEPINFO& exception, HRESULT result) {
    if (exception.pfnDeferredFillIn != nullptr) {
        exception.pfnDeferredFillIn(&exception);
    }
    Bstr source;
    Bstr description;
    Bstr helpFile;
    *source.put() = exception.bstrSource;
    *description.put() = exception.bstrDescription;
    *helpFile.put() = exception.bstrHelpFile;
    // Run-time error numbers of scripts and the like travel in this range of results.
    constexpr DWORD runTimeErrors = 0x800A0000;
    constexpr DWORD rangeMask = 0xFFFF0000;
    HRESULT number = result;
    if (FAILED(exception.scode)) {
        const auto code = static_cast<DWORD>(exception.scode);
        number = static_cast<HRESULT>((code & rangeMask) == runTimeErrors ? code & ~rangeMask : code);
    } else if (exception.wCode != 0) {
        number = exception.wCode;  // a run-time error number of its own kind
    }
    auto text = description.utf8();
    if (text.empty()) {
        text = errors::GetSystemMessage(number);
    }
    throw errors::Error(number, std::move(text), source.utf8(), helpFile.utf8(),
                        static_cast<std::int32_t>(exception.dwHelpContext));
}

Object::Object(IUnknown* object) {
    if (object != nullptr) {
        object->QueryInterface(IID_PPV_ARGS(&object_));
    }
}

bool Object::has(std::wstring_view member) const {
    std::wstring name(member);
    LPOLESTR names = name.data();
    DISPID id = DISPID_UNKNOWN;
    return object_ != nullptr && SUCCEEDED(object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id));
}

DISPID Object::idOf(std::wstring_view member) const {
    if (object_ == nullptr) {
        errors::throwObjectNotSet();
    }
    std::wstring name(member);
    LPOLESTR names = name.data();
    DISPID id = DISPID_UNKNOWN;
    require(object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id));
    return id;
}

Variant Object::call(std::wstring_view member, std::initializer_list<VARIANT> arguments) const {
    return invoke(idOf(member), DISPATCH_METHOD, arguments);
}

Variant Object::read(std::wstring_view member) const {
    return invoke(idOf(member), DISPATCH_PROPERTYGET | DISPATCH_METHOD, {});
}

Variant Object::invoke(DISPID member, WORD kind, std::initializer_list<VARIANT> arguments) const {
    // Automation passes arguments last to first.
    std::vector<VARIANT> reversed(arguments);
    std::reverse(reversed.begin(), reversed.end());
    DISPPARAMS parameters{};
    parameters.rgvarg = reversed.data();
    parameters.cArgs = static_cast<UINT>(reversed.size());
    Variant result;
    EXCEPINFO exception{};
    const ComPtr<IDispatch> alive = object_;  // whoever is called may let go of everything
    const HRESULT outcome =
        alive->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, result.put(), &exception, nullptr);
    if (outcome == DISP_E_EXCEPTION) {
        throwException(exception, outcome);
    }
    require(outcome);
    return result;
}

VARIANT byReference(Variant& value) noexcept {
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &value.ref();
    return reference;
}

std::string textOf(const Variant& value) { return utf8Of(converted(value, VT_BSTR).get().bstrVal); }

std::int32_t numberOf(const Variant& value) { return converted(value, VT_I4).get().lVal; }

bool truthOf(const Variant& value) { return converted(value, VT_BOOL).get().boolVal != VARIANT_FALSE; }

std::vector<std::string> textsOf(const Variant& value) {
    Variant plain;
    require(VariantCopyInd(plain.put(), value.readOnly()));
    if ((plain.get().vt & VT_ARRAY) == 0) {
        throwFailure(DISP_E_TYPEMISMATCH);
    }
    SAFEARRAY* const array = plain.get().parray;
    const auto length = lengthOf(array);
    std::vector<std::string> texts;
    texts.reserve(length);
    if (plain.get().vt == (VT_ARRAY | VT_BSTR)) {
        const Elements<BSTR> elements(array);
        for (std::size_t i = 0; i < length; ++i) {
            texts.push_back(utf8Of(elements[i]));
        }
    } else if (plain.get().vt == (VT_ARRAY | VT_VARIANT)) {
        const Elements<VARIANT> elements(array);
        for (std::size_t i = 0; i < length; ++i) {
            Variant element;
            require(VariantCopyInd(element.put(), &elements[i]));
            texts.push_back(textOf(element));
        }
    } else {
        throwFailure(DISP_E_TYPEMISMATCH);
    }
    return texts;
}

}  // namespace vrn::com
