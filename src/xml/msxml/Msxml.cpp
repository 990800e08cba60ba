#include "xml/msxml/Msxml.h"

#include <array>

#include "errors/Error.h"
#include "xml/Prolog.h"
#include "xml/msxml/Tree.h"

namespace vrn::xml {

using com::Bstr;
using com::ComPtr;
using com::Variant;

namespace {

// The system's import libraries have neither these classes nor this interface.
constexpr std::array<CLSID, 3> msxmlClasses{{
    {0x88D96A05, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}},  // DOMDocument60
    {0x88D969C0, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}},  // DOMDocument40
    {0xF5078F32, 0xC551, 0x11D3, {0x89, 0xB9, 0x00, 0x00, 0xF8, 0x1F, 0xE2, 0x21}},  // DOMDocument30
}};
constexpr IID documentInterface = {0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

ComPtr<IXMLDOMDocument2> createNewest() {
    HRESULT result = E_FAIL;
    for (const CLSID& classId : msxmlClasses) {
        ComPtr<IXMLDOMDocument2> document;
        void** const place = reinterpret_cast<void**>(document.GetAddressOf());
        result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, documentInterface, place);
        // A host's thread has COM; a console program's may not. It keeps it: documents live as long as they like.
        if (result == CO_E_NOTINITIALIZED) {
            com::require(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
            result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, documentInterface, place);
        }
        if (SUCCEEDED(result)) {
            return document;
        }
    }
    com::throwFailure(result);
}

// Not every version has every property; one that it lacks has nothing to set.
void setProperty(IXMLDOMDocument2& document, std::string_view name, VARIANT value) {
    (void)document.setProperty(Bstr(name).get(), value);
}

VARIANT boolean(bool value) noexcept {
    VARIANT variant;
    VariantInit(&variant);
    variant.vt = VT_BOOL;
    variant.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    return variant;
}

void addDeclaration(IXMLDOMDocument2& document, std::string_view data) {
    ComPtr<IXMLDOMProcessingInstruction> declaration;
    if (FAILED(document.createProcessingInstruction(Bstr("xml").get(), Bstr(data).get(), &declaration))) {
        return;
    }
    const ComPtr<IXMLDOMNode> first = tree::firstChild(&document);
    const Variant reference(first.Get());
    ComPtr<IXMLDOMNode> added;
    com::require(document.insertBefore(declaration.Get(), reference.get(), &added));
}

}  // namespace

ComPtr<IXMLDOMDocument2> newMsxmlDocument() {
    ComPtr<IXMLDOMDocument2> document = createNewest();
    com::require(document->put_async(VARIANT_FALSE));
    com::require(document->put_validateOnParse(VARIANT_TRUE));
    com::require(document->put_resolveExternals(VARIANT_FALSE));
    com::require(document->put_preserveWhiteSpace(VARIANT_TRUE));
    setProperty(*document.Get(), "ProhibitDTD", boolean(true));
    setProperty(*document.Get(), "SelectionLanguage", Variant(std::string_view("XPath")).get());
    setProperty(*document.Get(), "MaxElementDepth", Variant(std::int32_t{tree::maximumDepth}).get());
    return document;
}

ComPtr<IXMLDOMDocument2> hostDocument(const Document& document) {
    ComPtr<IXMLDOMDocument2> made = newMsxmlDocument();
    std::string text = document.xml();
    const auto data = declarationData(text);
    const std::string declaration(data.value_or(""));
    if (data) {
        text.erase(0, text.find("?>") + 2);
    }
    if (!text.empty()) {
        VARIANT_BOOL loaded = VARIANT_FALSE;
        const auto lock = tree::lockParser();
        com::require(made->loadXML(Bstr(text).get(), &loaded));
        if (loaded != VARIANT_TRUE) {
            errors::throwInvalidProcedureCall();
        }
    }
    if (data) {
        addDeclaration(*made.Get(), declaration);
    }
    return made;
}

}  // namespace vrn::xml
