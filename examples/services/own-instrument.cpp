// Gives the method editor an instrument service of the host's own, through the interface IMethodEditorServices: what the units of
// the instrument are called, and names that the configuration does not hold.
//
//   own-instrument SET METHOD      SET is a folder with macros.xml, objects.xml and config.xml
//
// Prints what the control asks the service while it loads the method. Exit status: 0 it asked, 1 something failed or it did not.
#include <windows.h>
// After windows.h, which they build on.
#include <fcntl.h>
#include <io.h>
#include <msxml2.h>
#include <wrl/client.h>

#include <array>
#include <cstdio>
#include <string>

#include "vrnMethodEditor.h"

using Microsoft::WRL::ComPtr;

namespace {

// snippet: service
// The control finds the members by their names, so that IDispatch will do; IInstrumentService says what they are.
class Instrument final : public IDispatch {
  public:
    virtual ~Instrument() = default;

    // The names that this installation defines, beside those of the configuration. Anything else: an empty result.
    static HRESULT objectNames(const std::wstring& key, VARIANT* names) {
        if (key != L"TRAY") {
            return S_OK;
        }
        const std::array<const wchar_t*, 2> trays{L"SL.Left Tray", L"SL.Right Tray"};
        names->vt = VT_ARRAY | VT_BSTR;
        names->parray = SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(trays.size()));
        for (LONG i = 0; i < static_cast<LONG>(trays.size()); ++i) {
            BSTR const name = SysAllocString(trays.at(static_cast<std::size_t>(i)));
            SafeArrayPutElement(names->parray, &i, name);  // takes a copy
            SysFreeString(name);
        }
        return S_OK;
    }
    // The text for a unit. The factor that comes third, 1, divides what a property of the syringe says; it may be left alone.
    static HRESULT unitInfo(const std::wstring& unitCode, VARIANT* unitText) {
        return unitCode == L"UL" ? put(unitText, L"microlitres") : S_OK;
    }
    // The first text of the code E is the instrument's standard unit.
    static HRESULT unitPair(const std::wstring& code, VARIANT* first) {
        return code == L"E" ? put(first, L"UL") : S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT /*count*/, LCID /*locale*/,
                                            DISPID* ids) override {
        for (DISPID i = 0; i < static_cast<DISPID>(members.size()); ++i) {
            if (_wcsicmp(names[0], members.at(static_cast<std::size_t>(i))) == 0) {
                *ids = i;
                return S_OK;
            }
        }
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID /*reserved*/, LCID /*locale*/, WORD /*flags*/,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* /*exception*/,
                                     UINT* /*argument*/) override {
        if (member < 0 || member >= static_cast<DISPID>(members.size())) {
            return DISP_E_MEMBERNOTFOUND;
        }
        const UINT expected = member == objectNamesId ? 1 : 3;
        if (parameters->cArgs != expected) {
            return DISP_E_BADPARAMCOUNT;
        }
        // In reverse order: the code or key is the last one, and what is to be filled in comes by reference.
        const VARIANT* const arguments = parameters->rgvarg;
        if (member != objectNamesId && arguments[1].vt != (VT_BYREF | VT_VARIANT)) {
            return DISP_E_TYPEMISMATCH;
        }
        const VARIANT& code = arguments[expected - 1];
        const std::wstring text = code.vt == VT_BSTR && code.bstrVal != nullptr ? code.bstrVal : L"";
        wprintf(L"%ls \"%ls\"\n", members.at(static_cast<std::size_t>(member)), text.c_str());
        ++asked;
        switch (member) {
            case unitInfoId:
                return unitInfo(text, arguments[1].pvarVal);
            case unitPairId:
                return unitPair(text, arguments[1].pvarVal);
            default:
                return result == nullptr ? S_OK : objectNames(text, result);
        }
    }
    // end of snippet
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*info*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_IDispatch ? this : nullptr;
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }

    int asked = 0;

  private:
    static constexpr DISPID unitInfoId = 0;
    static constexpr DISPID unitPairId = 1;
    static constexpr DISPID objectNamesId = 2;
    static constexpr std::array<const wchar_t*, 3> members{L"UnitInfo", L"UnitPair", L"ObjectNames"};

    static HRESULT put(VARIANT* place, const wchar_t* text) {
        VariantClear(place);
        place->vt = VT_BSTR;
        place->bstrVal = SysAllocString(text);
        return S_OK;
    }

    ULONG references_ = 1;
};

ComPtr<IXMLDOMDocument> load(const std::wstring& path) {
    CLSID msxml{};
    ComPtr<IXMLDOMDocument> document;
    VARIANT_BOOL loaded = VARIANT_FALSE;
    VARIANT file{};
    file.vt = VT_BSTR;
    file.bstrVal = SysAllocString(path.c_str());
    if (SUCCEEDED(CLSIDFromProgID(L"Msxml2.DOMDocument.6.0", &msxml)) &&
        SUCCEEDED(CoCreateInstance(msxml, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument, &document))) {
        document->put_async(VARIANT_FALSE);
        document->load(file, &loaded);
    }
    VariantClear(&file);
    return loaded != VARIANT_FALSE ? document : nullptr;
}

bool controlAsks(const std::wstring& set, const std::wstring& methodFile) {
    const auto macros = load(set + L"\\macros.xml");
    const auto objects = load(set + L"\\objects.xml");
    const auto config = load(set + L"\\config.xml");
    const auto method = load(methodFile);
    ComPtr<IVRN_MethodEditor> editor;
    if (macros == nullptr || objects == nullptr || config == nullptr || method == nullptr ||
        FAILED(CoCreateInstance(__uuidof(VRN_MethodEditor), nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&editor)))) {
        fputws(L"The documents or the control are not there.\n", stderr);
        return false;
    }
    ComPtr<Instrument> instrument;
    instrument.Attach(new Instrument);
    // snippet: set-service
    ComPtr<IMethodEditorServices> services;
    const bool accepted =
        SUCCEEDED(editor.As(&services)) && SUCCEEDED(services->putref_InstrumentService(instrument.Get()));
    // Before the documents: lists and hints are filled while they are loaded.
    const bool loaded =
        accepted && SUCCEEDED(editor->SetXmlDocuments(macros.Get(), objects.Get(), method.Get(), config.Get()));
    // end of snippet
    return loaded && instrument->asked > 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    _setmode(_fileno(stdout), _O_U8TEXT);
    if (count != 3) {
        fputws(L"own-instrument SET METHOD\n", stderr);
        return 1;
    }
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const bool asked = controlAsks(arguments[1], arguments[2]);
    CoUninitialize();
    return asked ? 0 : 1;
}
