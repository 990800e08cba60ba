// Takes a method through the method editor without a window: the control verifies the method, brings its cycles up to the
// catalogue's state and signs it again. COM in the open: this file and vrnMethodEditor.h are all that it takes.
//
//   edit-method SET METHOD OUTPUT      SET is a folder with macros.xml, objects.xml and config.xml
//
// Exit status: 0 OUTPUT is written, 1 something failed, 2 wrong arguments, 3 the control refused the method.
#include <windows.h>
// After windows.h, which they build on.
#include <fcntl.h>
#include <io.h>
#include <msxml2.h>
#include <ocidl.h>
#include <wrl/client.h>

#include <cstdio>
#include <functional>
#include <string>

#include "vrnMethodEditor.h"

using Microsoft::WRL::ComPtr;

namespace {

struct Failure {
    HRESULT result;
    std::wstring what;
};

void require(HRESULT result, const std::wstring& what) {
    if (FAILED(result)) {
        throw Failure{result, what};
    }
}

class Text {
  public:
    explicit Text(const std::wstring& text = {}) : text_(SysAllocString(text.c_str())) {}
    ~Text() { SysFreeString(text_); }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    [[nodiscard]] BSTR get() const { return text_; }
    BSTR* put() {
        SysFreeString(text_);
        return &(text_ = nullptr);
    }

  private:
    BSTR text_;
};

// snippet: sink
// The control's events arrive as calls of Invoke. An object that outlives the control need not count references.
class Errors final : public DVRN_MethodEditorEvents {
  public:
    virtual ~Errors() = default;
    std::function<void(long number, const wchar_t* text, const wchar_t* procedure)> handler;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(DVRN_MethodEditorEvents);
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*info*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* /*names*/, UINT /*count*/, LCID /*locale*/,
                                            DISPID* /*ids*/) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID /*reserved*/, LCID /*locale*/, WORD /*flags*/,
                                     DISPPARAMS* parameters, VARIANT* /*result*/, EXCEPINFO* /*exception*/,
                                     UINT* /*argument*/) override {
        if (member == 1 && parameters->cArgs == 6) {
            const VARIANT* const reversed = parameters->rgvarg;  // the last argument comes first
            handler(reversed[5].lVal, reversed[4].bstrVal, reversed[1].bstrVal);
        }
        return S_OK;
    }
};
// end of snippet

// snippet: create
ComPtr<IVRN_MethodEditor> createEditor() {
    // By its class, the control is found registered or through the manifest beside the program.
    ComPtr<IVRN_MethodEditor> editor;
    require(CoCreateInstance(__uuidof(VRN_MethodEditor), nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&editor)),
            L"The method editor cannot be created.");
    return editor;
}
// end of snippet

// snippet: documents
ComPtr<IXMLDOMDocument> load(const std::wstring& path) {
    CLSID msxml{};
    ComPtr<IXMLDOMDocument> document;
    require(CLSIDFromProgID(L"Msxml2.DOMDocument.6.0", &msxml), L"There is no MSXML 6.");
    require(CoCreateInstance(msxml, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument, &document),
            L"There is no MSXML 6.");
    require(document->put_async(VARIANT_FALSE), path);
    const Text name(path);
    VARIANT file{};
    file.vt = VT_BSTR;
    file.bstrVal = name.get();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    require(document->load(file, &loaded) == S_OK && loaded != VARIANT_FALSE ? S_OK : E_FAIL, path + L" is not read.");
    return document;
}

void save(IDispatch* method, const std::wstring& path) {
    ComPtr<IXMLDOMDocument> document;
    require(method->QueryInterface(IID_IXMLDOMDocument, &document), L"The method is no document.");
    const Text name(path);
    VARIANT file{};
    file.vt = VT_BSTR;
    file.bstrVal = name.get();
    require(document->save(file), path + L" cannot be written.");  // in the encoding that the method declares: UTF-16
}
// end of snippet

int editMethod(const std::wstring& set, const std::wstring& methodFile, const std::wstring& output) {
    Errors errors;  // outlives the control, which keeps a reference
    const auto editor = createEditor();
    // snippet: load
    const auto macros = load(set + L"\\macros.xml");
    const auto objects = load(set + L"\\objects.xml");
    const auto config = load(set + L"\\config.xml");
    const auto given = load(methodFile);
    bool refused = false;
    errors.handler = [&](long number, const wchar_t* text, const wchar_t* procedure) {
        fwprintf(stderr, L"MethodEditorError 0x%08lX in %ls: %ls\n", number, procedure, text);
        refused = true;
        if (number == static_cast<long>(vrnMethEdErrorInvalidXML)) {
            // The control would go on to tell a user in a message box that the refused method has no syringe. Without a
            // user, nothing is loaded in its place: of two loads the one begun last counts.
            editor->SetXmlDocuments(macros.Get(), objects.Get(), nullptr, config.Get());
        }
    };
    ComPtr<IConnectionPointContainer> container;
    ComPtr<IConnectionPoint> events;
    DWORD connection = 0;
    require(editor.As(&container), L"The control has no events.");
    require(container->FindConnectionPoint(__uuidof(DVRN_MethodEditorEvents), &events), L"The control has no events.");
    require(events->Advise(&errors, &connection), L"The control refuses the connection.");
    require(editor->SetXmlDocuments(macros.Get(), objects.Get(), given.Get(), config.Get()), L"SetXmlDocuments");
    // end of snippet

    ComPtr<IDispatch> method;
    if (!refused) {
        // snippet: take-back
        VARIANT_BOOL changed = VARIANT_FALSE;
        Text trail;
        require(editor->get_MethodIsChanged(&changed), L"MethodIsChanged");
        require(editor->get_AuditTrail(trail.put()), L"AuditTrail");
        wprintf(L"changed: %ls\n%ls\n", changed != VARIANT_FALSE ? L"yes" : L"no", trail.get());
        require(editor->GetMethodXml(&method), L"GetMethodXml");
        if (method != nullptr) {
            save(method.Get(), output);
        }
        // end of snippet
    }
    events->Unadvise(connection);
    return method != nullptr ? 0 : 3;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    _setmode(_fileno(stdout), _O_U8TEXT);
    _setmode(_fileno(stderr), _O_U8TEXT);
    if (count != 4) {
        fputws(L"edit-method SET METHOD OUTPUT\n", stderr);
        return 2;
    }
    // A single-threaded apartment: the control belongs to the thread that makes it.
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    int status = 1;
    try {
        status = editMethod(arguments[1], arguments[2], arguments[3]);
    } catch (const Failure& failure) {
        fwprintf(stderr, L"%ls (0x%08lX)\n", failure.what.c_str(), failure.result);
    }
    CoUninitialize();
    return status;
}
