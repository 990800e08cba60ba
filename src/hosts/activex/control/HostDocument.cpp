#include "hosts/activex/control/HostDocument.h"

#include <array>
#include <mutex>

#include "errors/Error.h"
#include "text/TextFile.h"

namespace vrn::activex {

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
constexpr std::int32_t maximumDepth = 1000;  // what the editor itself reads

ComPtr<IXMLDOMDocument2> createNewest() {
    HRESULT result = E_FAIL;
    for (const CLSID& classId : msxmlClasses) {
        ComPtr<IXMLDOMDocument2> document;
        result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, documentInterface,
                                  reinterpret_cast<void**>(document.GetAddressOf()));
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

ComPtr<IXMLDOMDocument2> emptyDocument() {
    ComPtr<IXMLDOMDocument2> document = createNewest();
    com::require(document->put_async(VARIANT_FALSE));
    com::require(document->put_validateOnParse(VARIANT_TRUE));
    com::require(document->put_resolveExternals(VARIANT_FALSE));
    com::require(document->put_preserveWhiteSpace(VARIANT_TRUE));
    VARIANT prohibited{};
    prohibited.vt = VT_BOOL;
    prohibited.boolVal = VARIANT_TRUE;
    setProperty(*document.Get(), "ProhibitDTD", prohibited);
    setProperty(*document.Get(), "SelectionLanguage", Variant(std::string_view("XPath")).get());
    setProperty(*document.Get(), "MaxElementDepth", Variant(maximumDepth).get());
    return document;
}

bool loads(IXMLDOMDocument2& document, std::string_view text) {
    // One MSXML notes the last error of all threads in one place.
    static std::mutex parsing;
    const std::lock_guard<std::mutex> lock(parsing);
    VARIANT_BOOL loaded = VARIANT_FALSE;
    com::require(document.loadXML(Bstr(text).get(), &loaded));
    return loaded == VARIANT_TRUE;
}

void addDeclaration(IXMLDOMDocument2& document, std::string_view data) {
    ComPtr<IXMLDOMProcessingInstruction> declaration;
    if (FAILED(document.createProcessingInstruction(Bstr("xml").get(), Bstr(data).get(), &declaration))) {
        return;
    }
    ComPtr<IXMLDOMNode> first;
    com::require(document.get_firstChild(&first));
    const Variant reference(first.Get());
    ComPtr<IXMLDOMNode> added;
    com::require(document.insertBefore(declaration.Get(), reference.get(), &added));
}

}  // namespace

ComPtr<IXMLDOMDocument2> hostDocument(const xml::Document& document) {
    ComPtr<IXMLDOMDocument2> made = emptyDocument();
    std::string text = document.xml();
    // A document parsed with a declaration of UTF-16 is saved by one MSXML so that none can load it: the declaration comes last.
    const std::string declaration(text::declarationData(text).value_or(""));
    if (!declaration.empty()) {
        text.erase(0, text.find("?>") + 2);
    }
    if (!text.empty() && !loads(*made.Get(), text)) {
        errors::throwInvalidProcedureCall();
    }
    if (!declaration.empty()) {
        addDeclaration(*made.Get(), declaration);
    }
    return made;
}

}  // namespace vrn::activex
