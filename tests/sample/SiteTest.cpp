// What a control finds when it looks around, and what its events become.
#include "hosts/sample/Site.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "activex/support/ControlFile.h"
#include "com/Dispatch.h"
#include "hosts/sample/EventSink.h"
#include "vrnMethodEditor.h"

namespace vrn::test {
namespace {

using com::ComPtr;

class RememberingContainer final : public sample::Container {
  public:
    [[nodiscard]] HWND frameWindow() const noexcept override { return GetDesktopWindow(); }
    [[nodiscard]] HWND controlParent() const noexcept override { return GetDesktopWindow(); }
    [[nodiscard]] RECT controlPlace() const noexcept override { return {1, 2, 30, 40}; }
    void activeObjectChanged(IOleInPlaceActiveObject* /*object*/) noexcept override {}
    void controlFocusChanged(bool inControl) noexcept override { focused = inControl; }
    bool unusedKey(const MSG& message) noexcept override { return message.wParam == VK_TAB; }
    void enableModeless(bool enable) noexcept override { enabled = enable; }
    void showStatus(const wchar_t* /*text*/) noexcept override {}

    bool focused = false;
    bool enabled = true;
};

class SiteTest : public ::testing::Test {
  protected:
    SiteTest() { site.Attach(new sample::Site(container)); }

    com::Variant ambient(DISPID property, HRESULT expected = S_OK) {
        com::Variant value;
        DISPPARAMS none{};
        EXPECT_EQ(site->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value.put(),
                               nullptr, nullptr),
                  expected);
        return value;
    }
    ComPtr<IOleInPlaceFrame> frame() {
        ComPtr<IOleInPlaceFrame> result;
        ComPtr<IOleInPlaceUIWindow> document;
        RECT clip{};
        OLEINPLACEFRAMEINFO info{};
        EXPECT_EQ(site->GetWindowContext(&result, &document, &place, &clip, &info), S_OK);
        EXPECT_EQ(document, nullptr);
        EXPECT_TRUE(EqualRect(&place, &clip));
        return result;
    }

    Apartment apartment;
    RememberingContainer container;
    ComPtr<sample::Site> site;
    RECT place{};
};

TEST_F(SiteTest, OneObjectOfSeveralInterfaces) {
    ComPtr<IUnknown> identity;
    ASSERT_EQ(site->QueryInterface(IID_PPV_ARGS(&identity)), S_OK);
    for (const auto& id :
         {IID_IOleClientSite, IID_IOleControlSite, IID_IOleInPlaceSite, IID_IOleWindow, IID_IDispatch}) {
        ComPtr<IUnknown> face;
        ComPtr<IUnknown> back;
        ASSERT_EQ(site->QueryInterface(id, reinterpret_cast<void**>(face.GetAddressOf())), S_OK);
        ASSERT_EQ(face->QueryInterface(IID_PPV_ARGS(&back)), S_OK);
        EXPECT_EQ(back.Get(), identity.Get());
    }
    // The frame is another object: it answers GetWindow with another window.
    ComPtr<IUnknown> ofFrame;
    ASSERT_EQ(frame()->QueryInterface(IID_PPV_ARGS(&ofFrame)), S_OK);
    EXPECT_NE(ofFrame.Get(), identity.Get());
}

TEST_F(SiteTest, AmbientProperties) {
    EXPECT_TRUE(com::truthOf(ambient(DISPID_AMBIENT_USERMODE)));
    EXPECT_FALSE(com::truthOf(ambient(DISPID_AMBIENT_UIDEAD)));
    EXPECT_EQ(static_cast<LCID>(ambient(DISPID_AMBIENT_LOCALEID).get().lVal), GetThreadLocale());
    const auto font = ambient(DISPID_AMBIENT_FONT);
    ComPtr<IFont> usable;
    CY size{};
    ASSERT_EQ(font.get().vt, VT_DISPATCH);
    ASSERT_EQ(font.get().pdispVal->QueryInterface(IID_PPV_ARGS(&usable)), S_OK);
    ASSERT_EQ(usable->get_Size(&size), S_OK);
    EXPECT_GT(size.int64, 50000);  // five points and more: nobody reads less
    static_cast<void>(ambient(DISPID_AMBIENT_DISPLAYNAME, DISP_E_MEMBERNOTFOUND));
}

TEST_F(SiteTest, TellsTheContainerUntilThatIsGone) {
    const auto inFrame = frame();
    EXPECT_EQ(place.right, 30);
    MSG tab{};
    tab.wParam = VK_TAB;
    EXPECT_EQ(site->TranslateAccelerator(&tab, 0), S_OK);
    site->OnFocus(TRUE);
    EXPECT_TRUE(container.focused);
    inFrame->EnableModeless(FALSE);
    EXPECT_FALSE(container.enabled);
    site->detach();
    HWND window = nullptr;
    inFrame->EnableModeless(TRUE);
    EXPECT_FALSE(container.enabled);
    EXPECT_EQ(site->TranslateAccelerator(&tab, 0), S_FALSE);
    EXPECT_EQ(site->CanInPlaceActivate(), S_FALSE);
    EXPECT_TRUE(FAILED(site->GetWindow(&window)) && FAILED(inFrame->GetWindow(&window)));
}

class EventSinkTest : public ::testing::Test {
  protected:
    HRESULT raise(DISPID member, UINT count, sample::ErrorHandler handler) {
        ComPtr<IDispatch> sink;
        sink.Attach(new sample::EventSink(std::move(handler)));
        com::Variant text("text");
        com::Variant application("application");
        com::Variant module("module");
        com::Variant procedure("procedure");
        VARIANT line{};
        line.vt = VT_I2;
        line.iVal = 7;
        VARIANT number{};
        number.vt = VT_I4;
        number.lVal = -5;
        VARIANT arguments[] = {line, procedure.get(), module.get(), application.get(), text.get(), number};
        DISPPARAMS parameters{arguments, nullptr, count, 0};
        return sink->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr, nullptr,
                            nullptr);
    }
};

TEST_F(EventSinkTest, ArgumentsUnderTheirNames) {
    sample::MethodEditorError got;
    EXPECT_EQ(raise(1, 6, [&](const sample::MethodEditorError& error) { got = error; }), S_OK);
    EXPECT_EQ(got.lngError, -5);
    EXPECT_EQ(got.strError, L"text");
    EXPECT_EQ(got.strApplication, L"application");
    EXPECT_EQ(got.strModule, L"module");
    EXPECT_EQ(got.strProcedure, L"procedure");
    EXPECT_EQ(got.intLineNumber, 7);
}

TEST_F(EventSinkTest, NothingForeignComesInAndNothingThrownGoesOut) {
    int calls = 0;
    const auto counting = [&](const sample::MethodEditorError&) { ++calls; };
    EXPECT_EQ(raise(2, 6, counting), S_OK);
    EXPECT_EQ(raise(1, 5, counting), S_OK);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(raise(1, 6, [](const sample::MethodEditorError&) { throw std::runtime_error("host"); }), E_FAIL);
}

}  // namespace
}  // namespace vrn::test
