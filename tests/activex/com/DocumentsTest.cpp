// Documents in and out: every version of the system's XML library, nodes, and objects that only look like documents.
#include "activex/com/Server.h"
#include "activex/com/Sink.h"
#include "errors/Error.h"

namespace vrn::test {

namespace {

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
