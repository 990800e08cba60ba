#include <gtest/gtest.h>
#include <oleacc.h>

#include <atomic>

#include "activex/form/FormFixture.h"
#include "com/Com.h"

namespace vrn::test {
namespace {

class GridWindowTest : public FormTest {
  protected:
    GridWindowTest() {
        loadSteps({"WASH(7,W2,5)"});
        SetFocus(grid());
        pump();
    }
    [[nodiscard]] int valueX() const {
        RECT item{};
        SendMessageW(GetDlgItem(grid(), activex::gridHeaderId), 0x1200 + 7 /* HDM_GETITEMRECT */, 1,
                     reinterpret_cast<LPARAM>(&item));
        return item.left;
    }
};

TEST_F(GridWindowTest, AValueIsEnteredByKeys) {
    key(grid(), VK_F2);
    EXPECT_EQ(GetFocus(), textEditor());
    EXPECT_EQ(textOf(textEditor()), "7");
    EXPECT_FALSE(state().grdMacro.pendingEdit().has_value());
    type(textEditor(), L"8");
    EXPECT_EQ(state().grdMacro.pendingEdit()->text, "8");
    key(textEditor(), VK_RETURN);
    EXPECT_EQ(state().grdMacro.cellText(1, 1), "8");
    EXPECT_EQ(GetFocus(), grid());

    type(grid(), L"9");
    EXPECT_EQ(state().grdMacro.pendingEdit()->text, "9");
    key(textEditor(), VK_ESCAPE);
    EXPECT_EQ(state().grdMacro.cellText(1, 1), "8");
    EXPECT_FALSE(IsWindowVisible(textEditor()));

    type(grid(), L"3");
    EXPECT_TRUE(translated(textEditor(), WM_KEYDOWN, VK_TAB));
    EXPECT_EQ(state().grdMacro.cellText(1, 1), "3");
    EXPECT_EQ(GetFocus(), listEditor());
    EXPECT_EQ(state().grdMacro.currentRow(), 2);
}

TEST_F(GridWindowTest, TheEditIsKnownToTheHostAndEndsWithIt) {
    type(grid(), L"4");
    const auto method = editor().GetMethodXml();
    ASSERT_TRUE(method.has_value());
    EXPECT_EQ(state().grdMacro.cellText(1, 1), "4");
    EXPECT_FALSE(IsWindowVisible(textEditor()));
    type(grid(), L"5");
    loadSteps({"COUNT(2)"});
    EXPECT_FALSE(IsWindowVisible(textEditor()));
    EXPECT_EQ(state().grdMacro.cellText(1, 1), "2");
    pump();
    EXPECT_EQ(GetFocus(), grid());
    type(grid(), L"6");
    SetFocus(window(ControlId::txtMethodDescription));
    pump();
    EXPECT_EQ(state().grdMacro.cellText(1, 1), "6");
    EXPECT_EQ(GetFocus(), window(ControlId::txtMethodDescription));
}

// A box as the user meets it: another thread waits for it and presses its button.
TEST_F(GridWindowTest, ARefusedValueIsShownAndTheCellStaysAsItWas) {
    std::atomic<bool> found{false};
    std::thread user([&found] {
        for (int i = 0; i < 500 && !found; ++i) {
            if (const HWND shown = FindWindowW(L"#32770", L"Refused"); shown != nullptr) {
                found = true;
                PostMessageW(shown, WM_COMMAND, IDOK, 0);
            }
            Sleep(10);
        }
    });
    box->whileShown = [this] {
        EXPECT_TRUE(IsWindowVisible(textEditor()));
        MessageBoxW(nullptr, L"…", L"Refused", MB_OK | MB_TASKMODAL);
    };
    type(grid(), L"99");
    key(textEditor(), VK_RETURN);
    user.join();
    pump();
    EXPECT_TRUE(found);
    EXPECT_EQ(boxTexts(), std::vector<std::string>{"The entered value is out of range."});
    EXPECT_EQ(state().grdMacro.cellText(1, 1), "7");
    EXPECT_FALSE(IsWindowVisible(textEditor()));
    EXPECT_EQ(GetFocus(), grid());
}

TEST_F(GridWindowTest, AListIsChosenFrom) {
    key(grid(), VK_DOWN);
    key(grid(), VK_F4);
    ASSERT_EQ(GetFocus(), listEditor());
    EXPECT_TRUE(SendMessageW(listEditor(), CB_GETDROPPEDSTATE, 0, 0));
    key(listEditor(), VK_UP);
    EXPECT_EQ(state().grdMacro.cellText(2, 1), "W2");
    key(listEditor(), VK_RETURN);
    pump();
    EXPECT_EQ(state().grdMacro.cellText(2, 1), "W1");
    EXPECT_EQ(GetFocus(), grid());

    key(grid(), VK_F4);
    key(listEditor(), VK_DOWN);
    key(listEditor(), VK_ESCAPE);
    pump();
    EXPECT_EQ(state().grdMacro.cellText(2, 1), "W1");
    EXPECT_FALSE(IsWindowVisible(listEditor()));

    // A stored value that is none of the items is shown and can be left as it is.
    state().grdMacro.setCellText(2, 1, "SL.Mine");
    type(grid(), L"W");
    EXPECT_EQ(state().grdMacro.pendingEdit()->text, "W1");
    key(listEditor(), VK_UP);
    EXPECT_EQ(textOf(listEditor()), "SL.Mine");
    key(listEditor(), VK_RETURN);
    EXPECT_EQ(state().grdMacro.cellText(2, 1), "SL.Mine");
}

TEST_F(GridWindowTest, TheMenuOfValuesOpensOnAClickInTheValue) {
    std::vector<std::string> captions;
    const auto answerMenu = [this, &captions](WPARAM last) {
        // Runs inside the menu's own message loop.
        static std::vector<std::string>* seen;
        static controls::Menu* menu;
        static HWND owner;
        static WPARAM lastKey;
        seen = &captions;
        menu = &state().mnuUserIndex;
        owner = grid();
        lastKey = last;
        SetTimer(parent, 1, 50, [](HWND window, UINT, UINT_PTR id, DWORD) {
            KillTimer(window, id);
            *seen = menu->captions();
            PostMessageW(owner, WM_KEYDOWN, VK_DOWN, 1);
            PostMessageW(owner, WM_KEYDOWN, lastKey, 1);
        });
        for (int i = 0; i < 300 && (state().mnuUserIndex.shown() || i == 0); ++i) {
            pump();
            Sleep(10);
        }
    };
    click(grid(), valueX() + 20, rowY(1));
    answerMenu(VK_RETURN);
    EXPECT_EQ(captions, (std::vector<std::string>{"SL.Vol", "SL.Any", "Default: 5"}));
    EXPECT_EQ(state().grdMacro.cellText(1, 1), "SL.Vol");

    click(grid(), valueX() + 20, rowY(3));
    answerMenu(VK_ESCAPE);
    EXPECT_FALSE(state().mnuUserIndex.shown());
    EXPECT_EQ(state().grdMacro.cellText(3, 1), "5");
    EXPECT_EQ(state().grdMacro.currentRow(), 3);

    click(grid(), valueX() - 10, rowY(1));
    EXPECT_FALSE(state().mnuUserIndex.shown());
    EXPECT_EQ(state().grdMacro.currentRow(), 1);
}

TEST_F(GridWindowTest, TheHintFollowsTheMouse) {
    const HWND hint = window(ControlId::txtToolTip);
    SendMessageW(grid(), WM_MOUSEMOVE, 0, MAKELPARAM(20, rowY(1)));
    EXPECT_TRUE(IsWindowVisible(hint));
    EXPECT_EQ(textOf(hint), "Range: 1 to 10 Default: 5");
    EXPECT_EQ(GetFocus(), grid());
    SendMessageW(grid(), WM_MOUSEMOVE, 0, MAKELPARAM(20, rowY(2)));
    EXPECT_EQ(textOf(hint), "WASH_STATION");
    SendMessageW(grid(), WM_MOUSELEAVE, 0, 0);
    EXPECT_FALSE(IsWindowVisible(hint));
    SendMessageW(grid(), WM_MOUSEMOVE, 0, MAKELPARAM(20, rowY(1)));
    SendMessageW(form.window(), WM_MOUSEMOVE, 0, MAKELPARAM(1, 1));
    EXPECT_FALSE(IsWindowVisible(hint));
}

TEST_F(GridWindowTest, ASecondClickOrADoubleClickOpensTheEditor) {
    RECT client{};
    GetClientRect(grid(), &client);
    click(grid(), client.right - 30, rowY(3));
    EXPECT_FALSE(IsWindowVisible(textEditor()));
    click(grid(), client.right - 30, rowY(3));
    EXPECT_TRUE(IsWindowVisible(textEditor()));
    type(textEditor(), L"11");
    // A click elsewhere in the grid takes the value; one in the arrow opens the list.
    click(grid(), client.right - 5, rowY(2));
    pump();
    EXPECT_EQ(state().grdMacro.cellText(3, 1), "11");
    EXPECT_EQ(GetFocus(), listEditor());
    EXPECT_TRUE(SendMessageW(listEditor(), CB_GETDROPPEDSTATE, 0, 0));
    SendMessageW(listEditor(), CB_SHOWDROPDOWN, FALSE, 0);
    SendMessageW(grid(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(10, rowY(1)));
    EXPECT_EQ(GetFocus(), textEditor());
    key(textEditor(), VK_DOWN);
    EXPECT_EQ(state().grdMacro.currentRow(), 2);
}

TEST_F(GridWindowTest, WhatCannotBeUsedIsGreyAndDoesNothing) {
    RECT client{};
    GetClientRect(grid(), &client);
    const auto ground = [&] {
        UpdateWindow(grid());
        const HDC context = GetDC(grid());
        const COLORREF colour = GetPixel(context, client.right / 2, client.bottom - 5);
        ReleaseDC(grid(), context);
        return colour;
    };
    EXPECT_EQ(ground(), GetSysColor(COLOR_WINDOW));
    type(grid(), L"9");
    editor().DisableMethod(true);
    EXPECT_EQ(ground(), GetSysColor(COLOR_BTNFACE));
    EXPECT_FALSE(IsWindowVisible(textEditor()));
    EXPECT_EQ(state().grdMacro.cellText(1, 1), "7");
    key(grid(), VK_F2);
    click(grid(), valueX() + 20, rowY(2));
    pump();
    EXPECT_FALSE(IsWindowVisible(textEditor()));
    EXPECT_FALSE(state().mnuUserIndex.shown());
    EXPECT_FALSE(translated(grid(), WM_KEYDOWN, VK_TAB));
    editor().DisableMethod(false);
    EXPECT_EQ(ground(), GetSysColor(COLOR_WINDOW));
    EXPECT_TRUE(IsWindowEnabled(grid()));
}

TEST_F(GridWindowTest, RowsScrollAndTheDividerIsDragged) {
    for (int i = 0; i < 1000; ++i) {
        state().grdMacro.addRow({"P" + std::to_string(i), "1", controls::EditStyle::Text, {}});
    }
    key(grid(), VK_END);
    EXPECT_EQ(state().grdMacro.currentRow(), 1003);
    EXPECT_GT(GetScrollPos(grid(), SB_VERT), 900);
    key(grid(), VK_HOME);
    EXPECT_EQ(GetScrollPos(grid(), SB_VERT), 1);
    SendMessageW(grid(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    EXPECT_GT(GetScrollPos(grid(), SB_VERT), 1);

    const HWND header = GetDlgItem(grid(), activex::gridHeaderId);
    const int before = valueX();
    SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(before, 5));
    SendMessageW(header, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(before - 40, 5));
    SendMessageW(header, WM_LBUTTONUP, 0, MAKELPARAM(before - 40, 5));
    EXPECT_EQ(valueX(), before - 40);
    RECT header1{};
    RECT client{};
    SendMessageW(header, 0x1200 + 7, 1, reinterpret_cast<LPARAM>(&header1));
    GetClientRect(grid(), &client);
    EXPECT_EQ(header1.right, client.right);
}

TEST_F(GridWindowTest, AssistiveTechnologyReadsNamesAndValues) {
    com::ComPtr<IAccessible> accessible;
    ASSERT_EQ(AccessibleObjectFromWindow(grid(), static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                         reinterpret_cast<void**>(accessible.GetAddressOf())),
              S_OK);
    long count = 0;
    accessible->get_accChildCount(&count);
    EXPECT_EQ(count, 3);
    VARIANT child{};
    child.vt = VT_I4;
    child.lVal = 2;
    com::Bstr name;
    com::Bstr value;
    EXPECT_EQ(accessible->get_accName(child, name.put()), S_OK);
    EXPECT_EQ(accessible->get_accValue(child, value.put()), S_OK);
    EXPECT_EQ(name.utf8(), "Station");
    EXPECT_EQ(value.utf8(), "W2");
    EXPECT_EQ(accessible->accSelect(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION, child), S_OK);
    EXPECT_EQ(state().grdMacro.currentRow(), 2);
    com::Variant focus;
    EXPECT_EQ(accessible->get_accFocus(focus.put()), S_OK);
    EXPECT_EQ(focus.get().lVal, 2);
    long left = 0;
    long top = 0;
    long width = 0;
    long height = 0;
    accessible->accLocation(&left, &top, &width, &height, child);
    com::Variant hit;
    EXPECT_EQ(accessible->accHitTest(left + width / 2, top + height / 2, hit.put()), S_OK);
    EXPECT_EQ(hit.get().lVal, 2);
    EXPECT_TRUE(FAILED(accessible->put_accValue(child, name.get())));
    child.lVal = 4;
    EXPECT_EQ(accessible->get_accName(child, name.put()), E_INVALIDARG);

    form.destroy();
    child.lVal = 1;
    EXPECT_TRUE(FAILED(accessible->get_accName(child, name.put())));
}

}  // namespace
}  // namespace vrn::test
