#include "activex/com/Server.h"

#include "activex/com/Registered.h"

#include "com/Dispatch.h"
#include "support/Documents.h"
#include "text/windows/Wide.h"

namespace vrn::test {

namespace {

class Apartment final : public ::testing::Environment {
  public:
    void SetUp() override { OleInitialize(nullptr); }
    void TearDown() override { OleUninitialize(); }
};

[[maybe_unused]] auto* const apartment = ::testing::AddGlobalTestEnvironment(new Apartment);

}  // namespace

ErrorInformation takeErrorInformation() {
    ErrorInformation taken;
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, &info) == S_OK && info != nullptr) {
        com::Bstr description;
        com::Bstr source;
        taken.present = true;
        info->GetGUID(&taken.interfaceId);
        info->GetDescription(description.put());
        info->GetSource(source.put());
        taken.description = description.utf8();
        taken.source = source.utf8();
    }
    return taken;
}

Server& Server::instance() {
    static Server theServer;
    return theServer;
}

Server::Server() {
    std::wstring program(MAX_PATH, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), MAX_PATH));
    path_ = program.substr(0, program.find_last_of(L'\\') + 1) + L"vrnMthdA.ocx";
    module_ = LoadLibraryW(path_.c_str());
    getClassObject_ = exportOf<LPFNGETCLASSOBJECT>(module_, "DllGetClassObject");
    canUnload_ = exportOf<LPFNCANUNLOADNOW>(module_, "DllCanUnloadNow");
}

ComPtr<IClassFactory> Server::factory() const {
    ComPtr<IClassFactory> factory;
    com::require(getClassObject_(CLSID_VRN_MethodEditor, IID_PPV_ARGS(&factory)));
    return factory;
}

void ControlTest::pump() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        DispatchMessageW(&message);
    }
}

ClosingUser::ClosingUser()
    : thread_([this] {
          while (!over_) {
              HWND const box = FindWindowW(L"#32770", L"Method Editor Component - Method Editor Control");
              if (box != nullptr) {
                  PostMessageW(box, WM_COMMAND, IDOK, 0);
              }
              Sleep(10);
          }
      }) {}

ClosingUser::~ClosingUser() {
    over_ = true;
    thread_.join();
}

ComPtr<IDispatch> document(const std::wstring& text, const wchar_t* progId) {
    CLSID clsid{};
    ComPtr<IDispatch> made;
    com::require(CLSIDFromProgID(progId, &clsid));
    com::require(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&made)));
    const com::Variant argument(text::fromWide(text));
    EXPECT_TRUE(com::truthOf(com::Object(made).call(L"loadXML", {argument.get()})));
    return made;
}

std::wstring textOf(const ComPtr<IDispatch>& document) {
    const auto text = com::Object(document).read(L"xml");
    return {text.get().bstrVal, SysStringLen(text.get().bstrVal)};
}

std::string rootOf(IDispatch* document) {
    const com::Object dom{ComPtr<IDispatch>(document)};
    const auto root = dom.read(L"documentElement");
    if (root.get().vt != VT_DISPATCH || root.get().pdispVal == nullptr) {
        return {};
    }
    return com::textOf(com::Object(root.get().pdispVal).read(L"nodeName"));
}

ComPtr<IDispatch> trustingSignature() {
    return make<NamedObject>(std::vector<std::pair<std::wstring, NamedObject::Member>>{
        {L"Verify", [](const auto&, com::Variant& result) { result = com::Variant(std::int32_t{0}); }}});
}

SmallSet smallSet() {
    const auto dom = [](const std::string& text) { return document(text::toWide(text)); };
    return {
        dom(catalogue(macro("WASH", {"Volume(UL);5;1;10"}, {"RINSE(Volume)"}))),
        dom(objectList(object("SYRINGE", "10uL"))),
        dom("<Method><Description><Line>First</Line></Description><Syringe><SyringeSize>10uL</SyringeSize></Syringe>"
            "<Macros><MacroVariable><MacroValues>WASH(5)</MacroValues><MacroValues>WASH(6)</MacroValues>"
            "</MacroVariable></Macros></Method>"),
        dom(configuration(category("UL", {"SL.Vol"})))};
}

ComPtr<IDispatch> built(IVRN_MethodEditor* editor) {
    ComPtr<IDispatch> method;
    EXPECT_EQ(editor->GetMethodXml(&method), S_OK);
    return method;
}

void loadSmallSet(IVRN_MethodEditor* editor) {
    ComPtr<IMethodEditorServices> services;
    com::require(editor->QueryInterface(IID_PPV_ARGS(&services)));
    com::require(services->putref_SignatureV23(trustingSignature().Get()));
    const auto set = smallSet();
    com::require(
        editor->SetXmlDocuments(set.macros.Get(), set.objects.Get(), set.method.Get(), set.configuration.Get()));
}

}  // namespace vrn::test
