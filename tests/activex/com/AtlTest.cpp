// The control in a container that others wrote: the system's own host window for controls.
#include "activex/com/ContainerFixture.h"
#include "activex/com/Registered.h"

namespace vrn::test {

namespace {

class AtlTest : public ControlTest {
  protected:
    static void SetUpTestSuite() { registerServer(); }
    static void TearDownTestSuite() { unregisterServer(); }
};

}  // namespace

TEST_F(AtlTest, AHostWindowMakesShowsAndEndsTheControl) {
    HMODULE const atl = LoadLibraryW(L"atl.dll");
    ASSERT_NE(atl, nullptr);
    const auto init = exportOf<BOOL(WINAPI*)()>(atl, "AtlAxWinInit");
    const auto controlIn = exportOf<HRESULT(WINAPI*)(HWND, IUnknown**)>(atl, "AtlAxGetControl");
    ASSERT_TRUE(init());
    for (int i = 0; i < 20; ++i) {
        HWND const host =
            CreateWindowExW(0, L"AtlAxWin", L"vrnMethodEditor.VRN_MethodEditor", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                            700, 500, nullptr, nullptr, nullptr, nullptr);
        ASSERT_NE(host, nullptr);
        {
            ComPtr<IUnknown> control;
            ComPtr<IVRN_MethodEditor> editor;
            ASSERT_EQ(controlIn(host, &control), S_OK);
            ASSERT_EQ(control.As(&editor), S_OK);
            loadSmallSet(editor.Get());
            HWND window = nullptr;
            EXPECT_EQ(as<IOleInPlaceObject>(editor)->GetWindow(&window), S_OK);
            EXPECT_TRUE(IsChild(host, window));
            HWND const list = childOf(window, lstMethodMacroList);
            EXPECT_EQ(SendMessageW(list, LB_GETCOUNT, 0, 0), 2);
            SetWindowPos(host, nullptr, 0, 0, 500, 400, SWP_NOMOVE | SWP_NOZORDER);
            RECT inside{};
            RECT place{};
            GetClientRect(host, &inside);
            GetWindowRect(window, &place);
            EXPECT_EQ(place.right - place.left, inside.right);
            ComPtr<IDispatch> method;
            EXPECT_EQ(editor->GetMethodXml(&method), S_OK);
            EXPECT_EQ(rootOf(method.Get()), "Method");
        }
        DestroyWindow(host);
        pump();
        EXPECT_EQ(Server::instance().canUnload(), S_OK);
    }
}

}  // namespace vrn::test
