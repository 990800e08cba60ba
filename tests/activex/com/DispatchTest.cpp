// The control's members as a script calls them: by name, with values by reference, properties of one direction.
#include "activex/com/Server.h"
#include "com/Dispatch.h"

namespace vrn::test {

namespace {

class DispatchTest : public ControlTest {
  protected:
    static HRESULT invoke(IDispatch* object, DISPID member, WORD kind, std::vector<VARIANT> arguments,
                          VARIANT* result = nullptr, EXCEPINFO* exception = nullptr) {
        DISPPARAMS parameters{};
        parameters.rgvarg = arguments.data();
        parameters.cArgs = static_cast<UINT>(arguments.size());
        DISPID put = DISPID_PROPERTYPUT;
        if ((kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
            parameters.rgdispidNamedArgs = &put;
            parameters.cNamedArgs = 1;
        }
        return object->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, result, exception, nullptr);
    }
    static DISPID idOf(IDispatch* object, const wchar_t* name) {
        std::wstring text(name);
        LPOLESTR names = text.data();
        DISPID id = DISPID_UNKNOWN;
        object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
        return id;
    }
};

}  // namespace

TEST_F(DispatchTest, MembersHaveTheirFrozenNumbers) {
    const auto control = create();
    const std::vector<std::pair<const wchar_t*, DISPID>> members{
        {L"refreshControls", 1}, {L"SetXmlDocuments", 2},      {L"GetMethodXml", 3},   {L"MethodIsChanged", 4},
        {L"DisableMethod", 5},   {L"DisableDescription", 6},   {L"DisableSyringe", 7}, {L"AuditTrail", 8},
        {L"audittrail", 8},      {L"Nonsense", DISPID_UNKNOWN}};
    for (const auto& [name, id] : members) {
        EXPECT_EQ(idOf(control.Get(), name), id);
    }
    const auto services = as<IMethodEditorServices>(control);
    EXPECT_EQ(idOf(services.Get(), L"InstrumentService"), 1);
    EXPECT_EQ(idOf(services.Get(), L"SignatureV4"), 2);
    EXPECT_EQ(idOf(services.Get(), L"SignatureV23"), 3);
    EXPECT_EQ(idOf(services.Get(), L"AuditTrail"), DISPID_UNKNOWN);
}

TEST_F(DispatchTest, AScriptLoadsReadsAndWrites) {
    const auto control = create();
    com::require(as<IMethodEditorServices>(control)->putref_SignatureV23(trustingSignature().Get()));
    auto set = smallSet();
    // As a script passes its variables: each by reference.
    com::Variant macros(set.macros.Get());
    com::Variant objects(set.objects.Get());
    com::Variant method(set.method.Get());
    com::Variant configuration(set.configuration.Get());
    ASSERT_EQ(invoke(control.Get(), 2, DISPATCH_METHOD,
                     {com::byReference(configuration), com::byReference(method), com::byReference(objects),
                      com::byReference(macros)}),
              S_OK);
    com::Variant built;
    ASSERT_EQ(invoke(control.Get(), 3, DISPATCH_METHOD, {}, built.put()), S_OK);
    ASSERT_EQ(built.get().vt, VT_DISPATCH);
    EXPECT_EQ(rootOf(built.get().pdispVal), "Method");
    com::Variant changed;
    ASSERT_EQ(invoke(control.Get(), 4, DISPATCH_PROPERTYGET, {}, changed.put()), S_OK);
    EXPECT_EQ(changed.get().vt, VT_BOOL);
    com::Variant value = truth(true);
    EXPECT_EQ(invoke(control.Get(), 4, DISPATCH_PROPERTYPUT, {com::byReference(value)}), S_OK);
    EXPECT_EQ(invoke(control.Get(), 5, DISPATCH_PROPERTYPUT, {value.get()}), S_OK);
    com::Variant trail;
    ASSERT_EQ(invoke(control.Get(), 8, DISPATCH_PROPERTYGET, {}, trail.put()), S_OK);
    EXPECT_EQ(trail.get().vt, VT_BSTR);
}

TEST_F(DispatchTest, WhatAMemberIsNotForIsRefused) {
    const auto control = create();
    com::Variant result;
    com::Variant yes = truth(true);
    EXPECT_EQ(invoke(control.Get(), 5, DISPATCH_PROPERTYGET, {}, result.put()), DISP_E_MEMBERNOTFOUND);
    // Wine 10 takes this for an assignment to what the member returns, and finds an argument too many.
    EXPECT_THAT(invoke(control.Get(), 8, DISPATCH_PROPERTYPUT, {yes.get()}),
                testing::AnyOf(DISP_E_MEMBERNOTFOUND, DISP_E_BADPARAMCOUNT));
    EXPECT_EQ(invoke(control.Get(), 99, DISPATCH_METHOD, {}), DISP_E_MEMBERNOTFOUND);
    const com::Variant number(std::int32_t{5});
    EXPECT_EQ(invoke(control.Get(), 2, DISPATCH_METHOD, {number.get(), number.get(), number.get(), number.get()}),
              DISP_E_TYPEMISMATCH);
    DISPPARAMS none{};
    EXPECT_EQ(control->Invoke(1, IID_IUnknown, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
}

TEST_F(DispatchTest, AFailureComesAsAnExceptionWithItsText) {
    const auto control = create();
    const auto wrong = make<NamedObject>(std::vector<std::pair<std::wstring, NamedObject::Member>>{});
    com::Variant argument;
    argument.ref().vt = VT_DISPATCH;
    argument.ref().pdispVal = wrong.Get();
    wrong->AddRef();
    EXCEPINFO exception{};
    EXPECT_EQ(invoke(control.Get(), 2, DISPATCH_METHOD,
                     {argument.get(), argument.get(), argument.get(), argument.get()}, nullptr, &exception),
              DISP_E_EXCEPTION);
    EXPECT_EQ(exception.scode, DISP_E_TYPEMISMATCH);
    com::Bstr description;
    com::Bstr source;
    *description.put() = exception.bstrDescription;
    *source.put() = exception.bstrSource;
    EXPECT_EQ(description.utf8(), "The argument domMacros is neither an XML document nor a node.");
    EXPECT_EQ(source.utf8(), "vrnMethodEditor");
    SysFreeString(exception.bstrHelpFile);
}

}  // namespace vrn::test
