// Services of a host's installation: set by the host, or found under their ProgIDs.
#include "activex/com/Server.h"
#include "activex/com/Sink.h"
#include "errors/Error.h"
#include "support/Documents.h"
#include "text/windows/Wide.h"

namespace vrn::test {

namespace {

using Members = std::vector<std::pair<std::wstring, NamedObject::Member>>;

std::string text(const VARIANT* argument) { return com::utf8Of(argument->bstrVal); }

class ServicesTest : public ControlTest {
  protected:
    /// Loads a method of version 4 that is signed "BY THE HOST", if at all.
    HRESULT loadVersion4(IVRN_MethodEditor* editor) {
        const auto set = smallSet();
        const auto method = document(text::toWide(
            "<Method><VERSION>4</VERSION><Description/><Syringe><SyringeSize>10uL</SyringeSize></Syringe><Macros>"
            "<MacroVariable><MacroValues>WASH(5)</MacroValues></MacroVariable></Macros></Method>"));
        return editor->SetXmlDocuments(set.macros.Get(), set.objects.Get(), method.Get(), set.configuration.Get());
    }
    /// Signs by a comment's worth of an element, and finds right what the test says.
    ComPtr<IDispatch> signature(bool matches) {
        return make<NamedObject>(
            Members{{L"Sign",
                     [this](const NamedObject::Arguments& arguments, com::Variant& result) {
                         asked.push_back("Sign " + text(arguments.at(2)));
                         auto xml = text(arguments.at(0));
                         xml.insert(xml.rfind("</"), "<Mark><SignatureValue>BY THE HOST</SignatureValue></Mark>");
                         result = com::Variant(xml);
                     }},
                    {L"Verify", [this, matches](const NamedObject::Arguments& arguments, com::Variant& result) {
                         asked.push_back("Verify " + text(arguments.at(2)));
                         result = truth(matches);
                     }}});
    }
    std::vector<std::string> asked;
};

/// A class of an object under a ProgID, known to this process only, while this lives.
class RegisteredClass final : public TestObject<IClassFactory> {
  public:
    RegisteredClass(const wchar_t* progId, std::function<ComPtr<IDispatch>()> create)
        : key_(progId), create_(std::move(create)) {
        GUID id{};
        CoCreateGuid(&id);
        wchar_t idText[40];
        StringFromGUID2(id, idText, 40);
        HKEY key = nullptr;
        RegCreateKeyW(HKEY_CLASSES_ROOT, (key_ + L"\\CLSID").c_str(), &key);
        RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(idText), sizeof(idText) - 2);
        RegCloseKey(key);
        com::require(CoRegisterClassObject(id, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_));
    }
    void revoke() {
        CoRevokeClassObject(cookie_);
        RegDeleteTreeW(HKEY_CLASSES_ROOT, key_.c_str());
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* /*outer*/, REFIID iid, void** object) override {
        ++created;
        const auto made = create_();
        return made == nullptr ? E_ACCESSDENIED : made->QueryInterface(iid, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL /*lock*/) override { return S_OK; }
    int created = 0;

  private:
    std::wstring key_;
    std::function<ComPtr<IDispatch>()> create_;
    DWORD cookie_ = 0;
};

}  // namespace

TEST_F(ServicesTest, TheInstrumentServiceAnswersThroughItsReferences) {
    const auto editor = create();
    const auto services = as<IMethodEditorServices>(editor);
    const auto instrument = make<NamedObject>(
        Members{{L"UnitInfo",
                 [&](const NamedObject::Arguments& arguments, com::Variant&) {
                     asked.push_back("UnitInfo " + text(arguments.at(0)));
                     EXPECT_EQ(arguments.at(1)->vt, VT_BYREF | VT_VARIANT);
                     EXPECT_EQ(arguments.at(1)->pvarVal->vt, VT_BSTR);
                     EXPECT_EQ(arguments.at(2)->pvarVal->lVal, 1);
                     throw errors::Error(1234, "No such unit.", "Instrument");
                 }},
                {L"UnitPair",
                 [&](const NamedObject::Arguments& arguments, com::Variant&) {
                     *arguments.at(1)->pvarVal = std::exchange(com::Variant(std::string_view("UL")).ref(), VARIANT{});
                 }},
                {L"ObjectNames", [&](const NamedObject::Arguments& arguments, com::Variant& result) {
                     asked.push_back("ObjectNames " + text(arguments.at(0)));
                     result.ref().vt = VT_ARRAY | VT_BSTR;
                     result.ref().parray = SafeArrayCreateVector(VT_BSTR, 0, 2);
                     for (LONG i = 0; i < 2; ++i) {
                         SafeArrayPutElement(result.ref().parray, &i, com::Bstr(std::wstring_view(L"SL.Own")).get());
                     }
                 }}});
    const auto sink = make<Sink>();
    connect(editor.Get(), sink.Get());
    EXPECT_EQ(services->putref_InstrumentService(instrument.Get()), S_OK);
    loadSmallSet(editor.Get());
    EXPECT_THAT(asked, ::testing::Contains("UnitInfo UL"));
    ASSERT_FALSE(sink->told.empty()) << "what the service fails with is reported";
    EXPECT_EQ(sink->told[0].number, 1234);
    EXPECT_EQ(sink->told[0].texts.at(0), "No such unit.");
    EXPECT_EQ(services->putref_InstrumentService(nullptr), S_OK);
    asked.clear();
    loadSmallSet(editor.Get());
    EXPECT_THAT(asked, ::testing::IsEmpty());
    EXPECT_EQ(instrument->count(), 1);
}

TEST_F(ServicesTest, TheHostsSignatureIsAskedAndUsed) {
    const auto editor = create();
    const auto services = as<IMethodEditorServices>(editor);
    const auto sink = make<Sink>();
    connect(editor.Get(), sink.Get());
    const ClosingUser user;  // who is told that a refused method has no syringe
    services->putref_SignatureV4(signature(false).Get());
    EXPECT_EQ(loadVersion4(editor.Get()), S_OK);
    ASSERT_EQ(sink->told.size(), 1U);
    EXPECT_EQ(sink->told[0].texts.at(0), "Method failed verification.");
    EXPECT_THAT(asked, ::testing::ElementsAre("Sign /GUID", "Verify /Method"));
    services->putref_SignatureV4(signature(true).Get());
    EXPECT_EQ(loadVersion4(editor.Get()), S_OK);
    EXPECT_EQ(sink->told.size(), 1U);
    ComPtr<IDispatch> method;
    EXPECT_EQ(editor->GetMethodXml(&method), S_OK);
    ASSERT_NE(method, nullptr);
    EXPECT_THAT(com::textOf(com::Object(method).read(L"text")), ::testing::EndsWith("BY THE HOST"));
    // One that breaks the document.
    services->putref_SignatureV4(
        make<NamedObject>(
            Members{{L"Sign", [](const auto&, com::Variant& result) { result = com::Variant(std::string_view("<a")); }},
                    {L"Verify", [](const auto&, com::Variant&) {}}})
            .Get());
    sink->told.clear();
    ComPtr<IDispatch> none;
    EXPECT_EQ(editor->GetMethodXml(&none), S_OK);
    EXPECT_EQ(none, nullptr);
    ASSERT_FALSE(sink->told.empty());
    EXPECT_EQ(sink->told[0].number, -2147220991);
}

TEST_F(ServicesTest, ComponentsAreFoundByTheirProgIds) {
    const auto found = make<RegisteredClass>(L"vrnMethodEditor.SignatureV4", [&] { return signature(true); });
    const auto broken = make<RegisteredClass>(L"vrnMethodEditor.InstrumentService", [] { return ComPtr<IDispatch>(); });
    const auto editor = create();
    const auto sink = make<Sink>();
    connect(editor.Get(), sink.Get());
    EXPECT_EQ(loadVersion4(editor.Get()), S_OK);
    EXPECT_TRUE(sink->told.empty());
    EXPECT_EQ(found->created, 1);
    EXPECT_EQ(broken->created, 1) << "asked for once, then the default does its work";
    // What the host sets goes before what is installed.
    const ClosingUser user;
    as<IMethodEditorServices>(editor)->putref_SignatureV4(signature(false).Get());
    EXPECT_EQ(loadVersion4(editor.Get()), S_OK);
    EXPECT_EQ(sink->told.size(), 1U);
    EXPECT_EQ(found->created, 1);
    as<IMethodEditorServices>(editor)->putref_SignatureV4(nullptr);
    EXPECT_EQ(loadVersion4(editor.Get()), S_OK);
    EXPECT_EQ(found->created, 2);
    found->revoke();
    broken->revoke();
}

}  // namespace vrn::test
