// Documents in and out: every version of the system's XML library, nodes, and objects that only look like documents.
#include <msxml.h>

#include "activex/com/Server.h"
#include "activex/com/Sink.h"
#include "errors/Error.h"
#include "support/OddDocuments.h"
#include "text/windows/Wide.h"

namespace vrn::test {

namespace {

std::wstring textOf(const ComPtr<IDispatch>& document) {
    const auto text = com::Object(document).read(L"xml");
    return {text.get().bstrVal, SysStringLen(text.get().bstrVal)};
}

ComPtr<IDispatch> built(IVRN_MethodEditor* editor) {
    ComPtr<IDispatch> method;
    EXPECT_EQ(editor->GetMethodXml(&method), S_OK);
    return method;
}

com::Variant wideText(const std::wstring& text) { return com::Variant(text::fromWide(text)); }

// The same for all versions of the library.
constexpr IID documentInterface{0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

// An empty document of the system's library that keeps white space between elements, or drops it.
ComPtr<IDispatch> emptyDocument(bool preservingWhiteSpace) {
    auto made = document(L"<a/>");
    ComPtr<IXMLDOMDocument> known;
    com::require(made->QueryInterface(documentInterface, reinterpret_cast<void**>(known.GetAddressOf())));
    com::require(known->put_async(VARIANT_FALSE));
    com::require(known->put_preserveWhiteSpace(preservingWhiteSpace ? VARIANT_TRUE : VARIANT_FALSE));
    return made;
}

ComPtr<IDispatch> passedAsText(const ComPtr<IDispatch>& original, bool preservingWhiteSpace) {
    auto made = emptyDocument(preservingWhiteSpace);
    EXPECT_TRUE(com::truthOf(com::Object(made).call(L"loadXML", {wideText(textOf(original)).get()})));
    return made;
}

ComPtr<IDispatch> passedAsFile(const ComPtr<IDispatch>& original, bool preservingWhiteSpace) {
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    const auto path = folder + std::wstring(L"vrn-odd-method.xml");
    com::Object(original).call(L"save", {wideText(path).get()});
    auto made = emptyDocument(preservingWhiteSpace);
    EXPECT_TRUE(com::truthOf(com::Object(made).call(L"load", {wideText(path).get()})));
    DeleteFileW(path.c_str());
    return made;
}

class DocumentsTest : public ControlTest {};

}  // namespace

TEST_F(DocumentsTest, EveryVersionOfTheLibraryIsUnderstood) {
    const auto set = smallSet();
    for (const auto* const progId :
         {L"Msxml2.DOMDocument.3.0", L"Msxml2.DOMDocument.4.0", L"Msxml2.DOMDocument.6.0", L"Microsoft.XMLDOM"}) {
        const auto again = [&](const ComPtr<IDispatch>& original) { return document(textOf(original), progId); };
        const auto editor = create();
        com::require(as<IMethodEditorServices>(editor)->putref_SignatureV23(trustingSignature().Get()));
        EXPECT_EQ(editor->SetXmlDocuments(again(set.macros).Get(), again(set.objects).Get(), again(set.method).Get(),
                                          again(set.configuration).Get()),
                  S_OK);
        EXPECT_EQ(rootOf(built(editor.Get()).Get()), "Method");
    }
}

TEST_F(DocumentsTest, TheMethodGivenOutLoadsAgainUnchanged) {
    const auto set = smallSet();
    const auto first = create();
    loadSmallSet(first.Get());
    const auto method = built(first.Get());
    ASSERT_NE(method, nullptr);
    const auto second = create();
    const auto sink = make<Sink>();
    connect(second.Get(), sink.Get());
    ASSERT_EQ(second->SetXmlDocuments(set.macros.Get(), set.objects.Get(), method.Get(), set.configuration.Get()),
              S_OK);
    EXPECT_TRUE(sink->told.empty()) << "its signature holds";
    VARIANT_BOOL changed = VARIANT_TRUE;
    EXPECT_EQ(second->get_MethodIsChanged(&changed), S_OK);
    EXPECT_EQ(changed, VARIANT_FALSE);
    // An element stands for its document.
    const auto root = com::Object(method).read(L"documentElement");
    ASSERT_EQ(second->SetXmlDocuments(set.macros.Get(), set.objects.Get(), root.get().pdispVal, nullptr), S_OK);
    EXPECT_TRUE(sink->told.empty());
    EXPECT_NE(built(second.Get()), nullptr);
}

TEST_F(DocumentsTest, AnOddMethodSurvivesTheLibraryInEveryWay) {
    const ClosingUser user;
    auto odd = oddSet();
    const std::string_view version = "<VERSION>01</VERSION>";
    odd.method.erase(odd.method.find(version), version.size());
    const auto macros = document(text::toWide(odd.macros));
    const auto objects = document(text::toWide(odd.objectList));
    const auto configuration = document(text::toWide(odd.configuration));
    const auto load = [&](const ComPtr<IVRN_MethodEditor>& editor, const ComPtr<IDispatch>& method) {
        EXPECT_EQ(editor->SetXmlDocuments(macros.Get(), objects.Get(), method.Get(), configuration.Get()), S_OK);
    };
    const auto first = create();
    com::require(as<IMethodEditorServices>(first)->putref_SignatureV23(trustingSignature().Get()));
    load(first, document(text::toWide(odd.method)));
    const auto saved = built(first.Get());
    ASSERT_NE(saved, nullptr);
    const auto expectSame = [&](const ComPtr<IDispatch>& method, const char* how) {
        SCOPED_TRACE(how);
        const auto editor = create();
        const auto sink = make<Sink>();
        connect(editor.Get(), sink.Get());
        load(editor, method);
        EXPECT_TRUE(sink->told.empty()) << (sink->told.empty() ? "" : sink->told[0].texts[0]);
        VARIANT_BOOL changed = VARIANT_TRUE;
        EXPECT_EQ(editor->get_MethodIsChanged(&changed), S_OK);
        EXPECT_EQ(changed, VARIANT_FALSE);
        const auto again = built(editor.Get());
        EXPECT_EQ(again ? textOf(again) : L"none", textOf(saved));
    };
    expectSame(saved, "as object");
    for (const bool preserving : {false, true}) {
        expectSame(passedAsText(saved, preserving), preserving ? "as text, white space kept" : "as text");
        expectSame(passedAsFile(saved, preserving), preserving ? "as file, white space kept" : "as file");
        expectSame(passedAsText(passedAsText(saved, true), preserving), "as text twice");
    }
}

TEST_F(DocumentsTest, NothingStandsForAnEmptyDocument) {
    const auto set = smallSet();
    const auto editor = create();
    const auto sink = make<Sink>();
    connect(editor.Get(), sink.Get());
    const auto empty = document(L"<a/>");
    com::Object(empty).call(L"removeChild", {com::Object(empty).read(L"documentElement").get()});
    for (IDispatch* const nothing : {static_cast<IDispatch*>(nullptr), empty.Get()}) {
        EXPECT_EQ(editor->SetXmlDocuments(set.macros.Get(), set.objects.Get(), nothing, nothing), S_OK);
        EXPECT_TRUE(sink->told.empty());
        EXPECT_EQ(built(editor.Get()), nullptr) << "an empty sequence";
    }
}

TEST_F(DocumentsTest, AnObjectThatAnswersLikeADocumentWillDo) {
    const auto set = smallSet();
    const auto editor = create();
    const auto standIn = [](const ComPtr<IDispatch>& original) {
        return make<NamedObject>(std::vector<std::pair<std::wstring, NamedObject::Member>>{
            {L"hasChildNodes", [](const auto&, com::Variant& result) { result = truth(true); }},
            {L"xml", [original](const auto&, com::Variant& result) { result = com::Object(original).read(L"xml"); }}});
    };
    com::require(as<IMethodEditorServices>(editor)->putref_SignatureV23(trustingSignature().Get()));
    EXPECT_EQ(editor->SetXmlDocuments(standIn(set.macros).Get(), standIn(set.objects).Get(), standIn(set.method).Get(),
                                      standIn(set.configuration).Get()),
              S_OK);
    EXPECT_EQ(rootOf(built(editor.Get()).Get()), "Method");
    // One that fails, as the last of the four: nothing is taken over, and its own text is told.
    const auto failing = make<NamedObject>(std::vector<std::pair<std::wstring, NamedObject::Member>>{
        {L"hasChildNodes", [](const auto&, com::Variant& result) { result = truth(true); }},
        {L"xml", [](const auto&, com::Variant&) { throw errors::Error(E_ACCESSDENIED, "Locked.", "TheirLibrary"); }}});
    EXPECT_EQ(editor->SetXmlDocuments(nullptr, nullptr, nullptr, failing.Get()), E_ACCESSDENIED);
    const auto told = takeErrorInformation();
    EXPECT_EQ(told.description, "Locked.");
    EXPECT_EQ(told.source, "TheirLibrary");
    EXPECT_EQ(told.interfaceId, IID_IVRN_MethodEditor);
    EXPECT_EQ(rootOf(built(editor.Get()).Get()), "Method");
    const auto stranger = trustingSignature();
    EXPECT_EQ(editor->SetXmlDocuments(nullptr, nullptr, stranger.Get(), nullptr), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(takeErrorInformation().description, "The argument domMethod is neither an XML document nor a node.");
    EXPECT_EQ(rootOf(built(editor.Get()).Get()), "Method");
}

}  // namespace vrn::test
