// The control in a container: coming to life and going in the right order, ambient properties, keys.
#include "activex/com/ContainerFixture.h"
#include "support/Documents.h"
#include "text/windows/Wide.h"

namespace vrn::test {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(ContainerTest, ActivatesAndDeactivatesInOrder) {
    ASSERT_EQ(container.verb(OLEIVERB_INPLACEACTIVATE), S_OK);
    EXPECT_THAT(container.calls,
                ElementsAre("CanInPlaceActivate", "OnInPlaceActivate", "GetWindowContext", "ShowObject"));
    HWND const window = container.controlWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(GetParent(window), container.window);
    EXPECT_TRUE(IsWindowVisible(window));
    RECT place{};
    GetWindowRect(window, &place);
    EXPECT_EQ(place.right - place.left, 640);
    container.calls.clear();
    ASSERT_EQ(container.verb(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_THAT(container.calls, ElementsAre("OnUIActivate", "OnFocus true", "SetActiveObject", "SetBorderSpace null"));
    EXPECT_TRUE(IsChild(window, GetFocus()));
    container.calls.clear();
    const RECT moved{0, 0, 400, 300};
    EXPECT_EQ(as<IOleInPlaceObject>(editor)->SetObjectRects(&moved, &moved), S_OK);
    GetWindowRect(window, &place);
    EXPECT_EQ(place.right - place.left, 400);
    EXPECT_EQ(container.control->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_THAT(container.calls, ElementsAre("SetActiveObject null", "OnUIDeactivate", "OnInPlaceDeactivate"));
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(as<IOleInPlaceObject>(editor)->GetWindow(&container.window), E_FAIL);
    container.calls.clear();
    EXPECT_EQ(container.control->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_THAT(container.calls, IsEmpty());
}

TEST_F(ContainerTest, TheFocusMakesItActiveAndLeavingIsTold) {
    ASSERT_EQ(container.verb(OLEIVERB_SHOW), S_OK);
    container.calls.clear();
    SetFocus(child(txtMethodDescription));
    EXPECT_THAT(container.calls, ElementsAre("OnUIActivate", "SetActiveObject", "SetBorderSpace null", "OnFocus true"));
    container.calls.clear();
    SetFocus(container.window);
    EXPECT_THAT(container.calls, ElementsAre("OnFocus false"));
    EXPECT_EQ(as<IOleInPlaceObject>(editor)->UIDeactivate(), S_OK);
    EXPECT_NE(container.controlWindow(), nullptr) << "visible all the same";
    EXPECT_EQ(container.verb(OLEIVERB_HIDE), S_OK);
    EXPECT_FALSE(IsWindowVisible(container.controlWindow()));
    EXPECT_EQ(container.verb(17), OLEOBJ_S_INVALIDVERB);
    EXPECT_EQ(container.verb(-17), E_NOTIMPL);
}

TEST_F(ContainerTest, AContainerThatRefusesGetsAnErrorAndNoWindow) {
    container.allowsActivation = false;
    EXPECT_EQ(container.verb(OLEIVERB_SHOW), E_FAIL);
    container.allowsActivation = true;
    container.onActivate = E_OUTOFMEMORY;
    EXPECT_EQ(container.verb(OLEIVERB_SHOW), E_OUTOFMEMORY);
    EXPECT_EQ(container.controlWindow(), nullptr);
    container.onActivate = S_OK;
    container.hasInPlaceSite = false;
    EXPECT_EQ(container.verb(OLEIVERB_SHOW), E_FAIL);
    EXPECT_EQ(takeErrorInformation().description, "The container has no place for windows.");
    loadSmallSet(editor.Get());
    ComPtr<IDispatch> built;
    EXPECT_EQ(editor->GetMethodXml(&built), S_OK);
    EXPECT_EQ(rootOf(built.Get()), "Method");
    EXPECT_EQ(container.control->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 3, nullptr, nullptr), DV_E_LINDEX);
}

TEST_F(ContainerTest, ASiteThatCannotTellThePlaceLeavesItToTheVerb) {
    container.onActivate = E_NOTIMPL;
    container.onUIActivate = E_NOTIMPL;
    container.windowContext = E_NOTIMPL;
    EXPECT_EQ(container.control->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, &container.bounds), E_NOTIMPL);
    EXPECT_EQ(container.control->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, container.window, nullptr), E_NOTIMPL);
    EXPECT_EQ(container.controlWindow(), nullptr);
    ASSERT_EQ(container.verb(OLEIVERB_UIACTIVATE), S_OK);
    HWND const window = container.controlWindow();
    EXPECT_EQ(GetParent(window), container.window);
    RECT place{};
    GetWindowRect(window, &place);
    EXPECT_EQ(place.right - place.left, container.bounds.right - container.bounds.left);
    EXPECT_TRUE(IsChild(window, GetFocus()));
}

TEST_F(ContainerTest, ComesBackAfterItsWindowWasDestroyedByTheContainer) {
    ASSERT_EQ(container.verb(OLEIVERB_UIACTIVATE), S_OK);
    for (const LONG verb : {OLEIVERB_SHOW, OLEIVERB_UIACTIVATE}) {
        container.loseWindow();
        EXPECT_EQ(container.controlWindow(), nullptr);
        container.calls.clear();
        ASSERT_EQ(container.verb(verb), S_OK);
        EXPECT_EQ(GetParent(container.controlWindow()), container.window);
        EXPECT_THAT(container.calls, ::testing::IsSupersetOf({"OnInPlaceDeactivate", "OnInPlaceActivate"}))
            << "the site can count them";
    }
}

TEST_F(ContainerTest, TheSameSiteAgainChangesNothing) {
    ASSERT_EQ(container.verb(OLEIVERB_UIACTIVATE), S_OK);
    HWND const window = container.controlWindow();
    ComPtr<IOleClientSite> site;
    ASSERT_EQ(container.site()->QueryInterface(IID_PPV_ARGS(&site)), S_OK);
    container.calls.clear();
    EXPECT_EQ(container.control->SetClientSite(site.Get()), S_OK);
    EXPECT_EQ(container.controlWindow(), window);
    EXPECT_THAT(container.calls, IsEmpty());
}

TEST_F(ContainerTest, TheUserBringsItBackAfterTheContainerHasDeactivatedIt) {
    ASSERT_EQ(container.verb(OLEIVERB_UIACTIVATE), S_OK);
    loadSmallSet(editor.Get());
    HWND const box = child(txtMethodDescription);
    // By a click into the field that has the focus, a key, and the focus of another field.
    const std::vector<std::function<void()>> ways{[&] { SendMessageW(box, WM_LBUTTONDOWN, MK_LBUTTON, 0); },
                                                  [&] { SendMessageW(box, WM_KEYDOWN, VK_HOME, 1); },
                                                  [&] { SetFocus(child(lstMethodMacroList)); }};
    for (const auto& way : ways) {
        SetFocus(box);
        ASSERT_EQ(as<IOleInPlaceObject>(editor)->UIDeactivate(), S_OK);
        EXPECT_EQ(container.activeObject, nullptr);
        container.calls.clear();
        way();
        EXPECT_THAT(container.calls, ElementsAre("OnUIActivate", "SetActiveObject", "SetBorderSpace null"));
        EXPECT_TRUE(container.translate(VK_TAB));
    }
    ASSERT_EQ(as<IOleInPlaceObject>(editor)->UIDeactivate(), S_OK);
    EXPECT_EQ(changeAmbient(DISPID_AMBIENT_UIDEAD, truth(true)), S_OK);
    container.calls.clear();
    SendMessageW(box, WM_LBUTTONDOWN, MK_LBUTTON, 0);
    EXPECT_THAT(container.calls, IsEmpty());
}

TEST_F(ContainerTest, AnActivationEndsWhenTheContainerLetsGoInTheMidstOfIt) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> moments{
        {"CanInPlaceActivate", {}},
        {"OnInPlaceActivate", {"OnInPlaceDeactivate"}},
        {"GetWindowContext", {"OnInPlaceDeactivate"}},
        {"ShowObject", {"OnInPlaceDeactivate"}},
        {"OnUIActivate", {"OnUIDeactivate", "OnInPlaceDeactivate"}}};
    for (const auto& one : moments) {
        const auto& moment = one.first;
        std::size_t upToThere = 0;
        container.calls.clear();
        container.whenCalled = [&](const std::string& call) {
            if (call == moment) {
                container.whenCalled = nullptr;
                upToThere = container.calls.size();
                container.control.Reset();
                editor.Reset();
            }
        };
        auto* const raw = container.control.Get();
        raw->DoVerb(OLEIVERB_UIACTIVATE, nullptr, nullptr, 0, container.window, &container.bounds);
        EXPECT_EQ(editor, nullptr) << moment;
        const std::vector<std::string> after(container.calls.begin() + static_cast<std::ptrdiff_t>(upToThere),
                                             container.calls.end());
        // What it says of keys and focus on the way out is another matter.
        std::vector<std::string> said;
        std::copy_if(after.begin(), after.end(), std::back_inserter(said),
                     [](const std::string& call) { return call.starts_with("On") && call.ends_with("activate"); });
        EXPECT_EQ(said, one.second) << moment;
        EXPECT_EQ(FindWindowExW(container.window, nullptr, nullptr, nullptr), nullptr) << moment;
        pump();
        EXPECT_EQ(Server::instance().canUnload(), S_OK) << moment;
        SetUp();
    }
}

TEST_F(ContainerTest, TheContainerMayCloseTheControlFromWithinAnyOfItsCalls) {
    for (const auto* const moment : {"CanInPlaceActivate", "OnInPlaceActivate", "GetWindowContext", "OnUIActivate",
                                     "OnFocus true", "SetActiveObject", "SetBorderSpace null", "ShowObject"}) {
        container.whenCalled = [&](const std::string& call) {
            if (call == moment) {
                container.whenCalled = nullptr;
                container.control->Close(OLECLOSE_NOSAVE);
            }
        };
        container.verb(OLEIVERB_UIACTIVATE);
        EXPECT_FALSE(container.whenCalled) << moment;
        container.whenCalled = nullptr;
        container.control->Close(OLECLOSE_NOSAVE);
        EXPECT_EQ(container.controlWindow(), nullptr) << moment;
        EXPECT_EQ(std::count(container.calls.begin(), container.calls.end(), "OnInPlaceActivate"),
                  std::count(container.calls.begin(), container.calls.end(), "OnInPlaceDeactivate"))
            << moment;
    }
}

TEST_F(ContainerTest, TabGoesThroughTheControlAndOut) {
    const MSG tab{container.window, WM_KEYDOWN, VK_TAB, 1, 0, {}};
    loadSmallSet(editor.Get());
    ASSERT_EQ(container.verb(OLEIVERB_UIACTIVATE, &tab), S_OK);
    HWND const first = GetFocus();
    container.calls.clear();
    int steps = 0;
    while (steps < 20 && container.translate(VK_TAB) && container.calls.empty()) {
        EXPECT_TRUE(IsChild(container.controlWindow(), GetFocus()));
        ++steps;
    }
    EXPECT_GT(steps, 3) << "several controls can have the focus";
    EXPECT_THAT(container.calls, ElementsAre("TranslateAccelerator 9 0"));
    ASSERT_EQ(container.verb(OLEIVERB_UIACTIVATE, &tab), S_OK);
    EXPECT_EQ(GetFocus(), first) << "entered anew, at the beginning";
    container.calls.clear();
    EXPECT_FALSE(container.translate(VK_F5)) << "a key that nobody wants";
    EXPECT_FALSE(container.translate(0, WM_MOUSEMOVE));
    EXPECT_THAT(container.calls, ElementsAre("TranslateAccelerator 116 0"));
    container.hasControlSite = false;
    EXPECT_FALSE(container.translate(VK_F5));
}

TEST_F(ContainerTest, MnemonicsReachTheButtons) {
    loadSmallSet(editor.Get());
    ASSERT_EQ(container.verb(OLEIVERB_SHOW), S_OK);
    const auto oleControl = as<IOleControl>(editor);
    CONTROLINFO info{};
    info.cb = sizeof(info);
    ASSERT_EQ(oleControl->GetControlInfo(&info), S_OK);
    EXPECT_EQ(info.dwFlags, static_cast<DWORD>(CTRLINFO_EATS_RETURN));
    std::vector<ACCEL> keys(info.cAccel);
    ASSERT_EQ(CopyAcceleratorTableW(info.hAccel, keys.data(), info.cAccel), info.cAccel);
    std::string letters;
    for (const auto& key : keys) {
        EXPECT_TRUE((key.fVirt & FALT) != 0);
        letters += static_cast<char>(key.key);
    }
    EXPECT_THAT(letters, ::testing::UnorderedElementsAre('I', 'R', 'D'));
    HWND const list = child(lstMethodMacroList);
    ASSERT_EQ(SendMessageW(list, LB_GETCOUNT, 0, 0), 2);
    MSG altD{container.window, WM_SYSKEYDOWN, 'D', 1 << 29, 0, {}};
    EXPECT_EQ(oleControl->OnMnemonic(&altD), S_OK);
    EXPECT_EQ(SendMessageW(list, LB_GETCOUNT, 0, 0), 1) << "Delete was pressed";
    EXPECT_EQ(changeAmbient(DISPID_AMBIENT_UIDEAD, truth(true)), S_OK);
    EXPECT_EQ(oleControl->OnMnemonic(&altD), S_OK);
    EXPECT_EQ(SendMessageW(list, LB_GETCOUNT, 0, 0), 1) << "the container's user interface is dead";
    SendMessageW(child(cmdDelete), BM_CLICK, 0, 0);
    EXPECT_EQ(SendMessageW(list, LB_GETCOUNT, 0, 0), 1);
    EXPECT_EQ(changeAmbient(DISPID_AMBIENT_UIDEAD, truth(false)), S_OK);
    EXPECT_EQ(oleControl->OnMnemonic(&altD), S_OK);
    EXPECT_EQ(SendMessageW(list, LB_GETCOUNT, 0, 0), 0);
}

TEST_F(ContainerTest, WhileTheContainerIsDesignedTheControlTakesNoPart) {
    EXPECT_EQ(changeAmbient(DISPID_AMBIENT_USERMODE, truth(false)), S_OK);
    EXPECT_EQ(container.verb(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_THAT(container.calls, ::testing::Not(::testing::Contains("OnUIActivate")));
    EXPECT_EQ(changeAmbient(DISPID_AMBIENT_USERMODE, truth(true)), S_OK);
    EXPECT_EQ(container.verb(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_THAT(container.calls, ::testing::Contains("OnUIActivate"));
    EXPECT_EQ(changeAmbient(DISPID_AMBIENT_USERMODE, truth(false)), S_OK);
    EXPECT_EQ(container.calls.back(), "OnUIDeactivate");
}

TEST_F(ContainerTest, TheContainersFontIsUsed) {
    ASSERT_EQ(container.verb(OLEIVERB_SHOW), S_OK);
    FONTDESC description{};
    std::wstring name = L"Arial";
    description.cbSizeofstruct = sizeof(description);
    description.lpstrName = name.data();
    description.cySize.Lo = 140000;
    description.sWeight = FW_NORMAL;
    ComPtr<IFontDisp> font;
    ASSERT_EQ(OleCreateFontIndirect(&description, IID_IFontDisp, &font), S_OK);
    ComPtr<IFont> details;
    HFONT handle = nullptr;
    ASSERT_EQ(font.As(&details), S_OK);
    ASSERT_EQ(details->get_hFont(&handle), S_OK);
    const auto fontOf = [&] {
        return reinterpret_cast<HFONT>(SendMessageW(child(txtMethodDescription), WM_GETFONT, 0, 0));
    };
    EXPECT_NE(fontOf(), handle);
    com::Variant value;
    value.ref().vt = VT_DISPATCH;
    font.CopyTo(IID_IDispatch, reinterpret_cast<void**>(&value.ref().pdispVal));
    EXPECT_EQ(changeAmbient(DISPID_AMBIENT_FONT, std::move(value)), S_OK);
    EXPECT_EQ(fontOf(), handle);
}

}  // namespace vrn::test
