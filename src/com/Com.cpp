#include "com/Com.h"

#include <cstdint>
#include <new>

#include "errors/Error.h"
#include "errors/modErr.h"
#include "text/windows/Wide.h"

namespace vrn::com {

namespace {

BSTR allocated(std::wstring_view wide) {
    BSTR const text = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (text == nullptr) {
        throw std::bad_alloc();
    }
    return text;
}

}  // namespace

void throwFailure(HRESULT result, IUnknown* failed, const IID* interfaceId) {
    if (result == E_OUTOFMEMORY) {
        throw std::bad_alloc();
    }
    ComPtr<ISupportErrorInfo> support;
    ComPtr<IErrorInfo> info;
    if (failed != nullptr && interfaceId != nullptr && SUCCEEDED(failed->QueryInterface(IID_PPV_ARGS(&support))) &&
        support->InterfaceSupportsErrorInfo(*interfaceId) == S_OK && GetErrorInfo(0, &info) == S_OK) {
        Bstr description;
        Bstr source;
        Bstr helpFile;
        DWORD helpContext = 0;
        info->GetDescription(description.put());
        info->GetSource(source.put());
        info->GetHelpFile(helpFile.put());
        info->GetHelpContext(&helpContext);
        throw errors::Error(result, description.utf8(), source.utf8(), helpFile.utf8(),
                            static_cast<std::int32_t>(helpContext));
    }
    throw errors::Error(result, errors::GetSystemMessage(result));
}

Bstr::Bstr(std::string_view utf8) : Bstr(std::wstring_view(text::toWide(utf8))) {}

Bstr::Bstr(std::wstring_view wide) : text_(allocated(wide)) {}

std::string Bstr::utf8() const { return utf8Of(text_); }

std::string utf8Of(BSTR text) { return text == nullptr ? std::string() : text::fromWide({text, SysStringLen(text)}); }

Variant::Variant(std::string_view utf8) : Variant() {
    value_.bstrVal = allocated(text::toWide(utf8));
    value_.vt = VT_BSTR;
}

Variant::Variant(std::int32_t number) noexcept : Variant() {
    value_.vt = VT_I4;
    value_.lVal = number;
}

Variant::Variant(IUnknown* object) noexcept : Variant() {
    if (object != nullptr) {
        object->AddRef();
    }
    value_.vt = VT_UNKNOWN;
    value_.punkVal = object;
}

}  // namespace vrn::com
