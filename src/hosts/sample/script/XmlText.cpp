#include "hosts/sample/script/XmlText.h"

#include "hosts/sample/Documents.h"
#include "xml/Dom.h"

namespace vrn::sample {

namespace {

constexpr DISPID hasChildNodes = 1;
constexpr DISPID xml = 2;

class XmlText final : public IDispatch {
  public:
    explicit XmlText(std::string_view text) : text_(text) {}
    virtual ~XmlText() = default;
    XmlText(const XmlText&) = delete;
    XmlText& operator=(const XmlText&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_IDispatch ? this : nullptr;
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
    ULONG STDMETHODCALLTYPE Release() override {
        const auto left = static_cast<ULONG>(InterlockedDecrement(&references_));
        if (left == 0) {
            delete this;
        }
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** info) override {
        *info = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*iid*/, LPOLESTR* names, UINT /*count*/, LCID /*locale*/,
                                            DISPID* ids) override {
        const std::wstring_view name(names[0]);
        *ids = name == L"hasChildNodes" ? hasChildNodes : name == L"xml" ? xml : DISPID_UNKNOWN;
        return *ids == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID /*iid*/, LCID /*locale*/, WORD /*flags*/,
                                     DISPPARAMS* /*parameters*/, VARIANT* result, EXCEPINFO* /*exception*/,
                                     UINT* /*argument*/) override {
        if (member == hasChildNodes) {
            result->vt = VT_BOOL;
            result->boolVal = VARIANT_TRUE;
            return S_OK;
        }
        if (member != xml) {
            return DISP_E_MEMBERNOTFOUND;
        }
        result->vt = VT_BSTR;
        result->bstrVal = SysAllocStringLen(text_.get(), SysStringLen(text_.get()));
        return result->bstrVal == nullptr ? E_OUTOFMEMORY : S_OK;
    }

  private:
    LONG references_ = 1;
    com::Bstr text_;
};

bool hasDoctype(IXMLDOMDocument* document) {
    com::ComPtr<IXMLDOMDocumentType> type;
    return document->get_doctype(&type) == S_OK && type != nullptr;
}

}  // namespace

com::ComPtr<IDispatch> documentOf(std::string_view text) {
    com::ComPtr<IDispatch> document;
    if (text.empty()) {
        return document;
    }
    const auto parsed = parseDocument(com::Bstr(text).get());
    // A document type comes out of MSXML in other words than it went in.
    if (parsed != nullptr && !hasDoctype(parsed.Get())) {
        com::require(parsed.As(&document));
    } else {
        document.Attach(new XmlText(text));
    }
    return document;
}

// The text that MSXML gives differs from system to system in blanks and line ends; read anew, it says the same everywhere.
std::string textOf(IDispatch* document) {
    XmlDocument method;
    com::Bstr text;
    com::require(document->QueryInterface(IID_IXMLDOMDocument, &method));
    com::require(method->get_xml(text.put()));
    vrn::xml::Document parsed;
    parsed.loadXML(text.utf8());
    return parsed.xml();
}

}  // namespace vrn::sample
