#include "hosts/sample/Documents.h"

#include <array>

#include "errors/Error.h"
#include "text/windows/Wide.h"

namespace vrn::sample {

namespace {

com::Variant wideVariant(const std::wstring& text) { return com::Variant(text::fromWide(text)); }

[[noreturn]] void throwParseError(IXMLDOMDocument* document, const std::wstring& path) {
    com::ComPtr<IXMLDOMParseError> error;
    com::Bstr reason;
    long line = 0;
    long code = E_FAIL;
    if (document->get_parseError(&error) == S_OK) {
        error->get_reason(reason.put());
        error->get_line(&line);
        error->get_errorCode(&code);
    }
    auto text = text::fromWide(path) + " cannot be read.\n\n" + reason.utf8();
    if (line > 0) {
        text += " (line " + std::to_string(line) + ")";
    }
    throw errors::Error(static_cast<std::int32_t>(code), text);
}

}  // namespace

XmlDocument newDocument() {
    XmlDocument document;
    CLSID id{};
    for (const auto* const name : {L"Msxml2.DOMDocument.6.0", L"Msxml2.DOMDocument.4.0", L"Msxml2.DOMDocument.3.0"}) {
        if (SUCCEEDED(CLSIDFromProgID(name, &id)) &&
            SUCCEEDED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument, &document))) {
            break;
        }
    }
    if (document == nullptr) {
        throw errors::Error(REGDB_E_CLASSNOTREG, "This system has no MSXML.");
    }
    // The host wants the document as soon as the call returns, and nothing from anywhere else than the file.
    com::require(document->put_async(VARIANT_FALSE));
    com::require(document->put_validateOnParse(VARIANT_FALSE));
    com::require(document->put_resolveExternals(VARIANT_FALSE));
    return document;
}

XmlDocument loadDocument(const std::wstring& path) {
    auto document = newDocument();
    VARIANT_BOOL read = VARIANT_FALSE;
    const auto file = wideVariant(path);
    if (FAILED(document->load(file.get(), &read)) || read == VARIANT_FALSE) {
        throwParseError(document.Get(), path);
    }
    return document;
}

XmlDocument parseDocument(BSTR text) {
    auto document = newDocument();
    VARIANT_BOOL read = VARIANT_FALSE;
    return SUCCEEDED(document->loadXML(text, &read)) && read != VARIANT_FALSE ? document : XmlDocument();
}

void saveDocument(IDispatch* document, const std::wstring& path) {
    XmlDocument method;
    com::require(document->QueryInterface(IID_IXMLDOMDocument, &method));
    const auto file = wideVariant(path);
    if (const HRESULT result = method->save(file.get()); FAILED(result)) {
        throw errors::Error(result, text::fromWide(path) + " cannot be written.");
    }
}

DocumentSet loadDocumentSet(const std::wstring& folder) {
    return {folder, loadDocument(folder + L"\\macros.xml"), loadDocument(folder + L"\\objects.xml"),
            loadDocument(folder + L"\\config.xml")};
}

}  // namespace vrn::sample
