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
class RealBox {
  public:
    RealBox()
        : user_([this] {
              for (int i = 0; i < 500 && !found_; ++i) {
                  if (const HWND shown = FindWindowW(L"#32770", L"Refused"); shown != nullptr) {
                      found_ = true;
                      PostMessageW(shown, WM_COMMAND, IDOK, 0);
                  }
                  Sleep(10);
              }
          }) {}
    static void show() { MessageBoxW(nullptr, L"…", L"Refused", MB_OK | MB_TASKMODAL); }
    [[nodiscard]] bool wasAnswered() {
        user_.join();
        return found_;
    }

  private:
    std::atomic<bool> found_{false};
    std::thread user_;
};

TEST_F(GridWindowTest, ARefusedValueIsShownAndTheCellStaysAsItWas) {
    RealBox message;
    box->whileShown = [this] {
        EXPECT_TRUE(IsWindowVisible(textEditor()));
        RealBox::show();
    };
    type(grid(), L"99");
    key(textEditor(), VK_RETURN);
    EXPECT_TRUE(message.wasAnswered());
    pump();
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

// Answers the menu of values by keys, inside of the menu's own message loop.
class MenuAnswer {
  public:
    MenuAnswer(HWND parent, HWND grid, controls::Menu& menu) : parent_(parent), grid_(grid), menu_(menu) {}
    /// What the menu offers that opens now; empty when none does. The last key is sent after one step down.
    std::vector<std::string> captions(WPARAM last) {
        self_ = this;
        last_ = last;
        seen_.clear();
        place_ = {};
        SetTimer(parent_, 1, 50, timeIsUp);
        for (int i = 0; i < 300 && (menu_.shown() || i < 10); ++i) {
            FormTest::pump();
            Sleep(10);
        }
        return seen_;
    }
    /// Where it was, on the screen.
    [[nodiscard]] const RECT& place() const { return place_; }

  private:
    static void CALLBACK timeIsUp(HWND window, UINT /*message*/, UINT_PTR id, DWORD /*time*/) {
        KillTimer(window, id);
        self_->answer();
    }
    void answer() {
        const HWND shown = FindWindowW(L"#32768", nullptr);
        if (!menu_.shown() || shown == nullptr) {
            return;
        }
        seen_ = menu_.captions();
        GetWindowRect(shown, &place_);
        PostMessageW(grid_, WM_KEYDOWN, VK_DOWN, 1);
        PostMessageW(grid_, WM_KEYDOWN, last_, 1);
    }
    static inline MenuAnswer* self_ = nullptr;
    HWND parent_;
    HWND grid_;
    controls::Menu& menu_;
    WPARAM last_ = 0;
    std::vector<std::string> seen_;
    RECT place_{};
};

using Captions = std::vector<std::string>;

TEST_F(GridWindowTest, TheMenuOfValuesOpensWhenItsFieldIsLetGo) {
    MenuAnswer menu(parent, grid(), state().mnuUserIndex);
    const auto button = [this](UINT message, LONG x, LONG y) {
        SendMessageW(grid(), message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(x, y));
    };
    const RECT field = menuField(1);
    const POINT at = middleOf(field);
    button(WM_LBUTTONDOWN, at.x, at.y);
    pump();
    EXPECT_FALSE(state().mnuUserIndex.shown());
    EXPECT_EQ(state().grdMacro.currentRow(), 1);
    // A hand that shakes stays in the field.
    button(WM_MOUSEMOVE, at.x + 3, at.y + 4);
    button(WM_LBUTTONUP, at.x + 3, at.y + 4);
    EXPECT_EQ(menu.captions(VK_RETURN), (Captions{"SL.Vol", "SL.Any", "Default: 5"}));
    EXPECT_EQ(state().grdMacro.cellText(1, 1), "SL.Vol");
    POINT below{field.left, field.bottom};
    ClientToScreen(grid(), &below);
    EXPECT_GE(menu.place().top, below.y) << "where the next click of the same hand is none in the menu";

    // Let go elsewhere: the user has thought better of it.
    button(WM_LBUTTONDOWN, at.x, at.y);
    button(WM_MOUSEMOVE, at.x, field.bottom + 5);
    button(WM_LBUTTONUP, at.x, field.bottom + 5);
    EXPECT_EQ(menu.captions(VK_ESCAPE), Captions{});
    // The release went to another window.
    button(WM_LBUTTONDOWN, at.x, at.y);
    SendMessageW(grid(), WM_MOUSEMOVE, 0, MAKELPARAM(at.x, at.y));
    button(WM_LBUTTONUP, at.x, at.y);
    EXPECT_EQ(menu.captions(VK_ESCAPE), Captions{});

    const POINT third = middleOf(menuField(3));
    click(grid(), third.x, third.y);
    EXPECT_EQ(menu.captions(VK_ESCAPE).back(), "Default: 0");
    EXPECT_EQ(state().grdMacro.cellText(3, 1), "5");
    EXPECT_EQ(state().grdMacro.currentRow(), 3);
}

TEST_F(GridWindowTest, TheMenuOfValuesOpensAfterAMessageThatSwallowedTheRelease) {
    MenuAnswer menu(parent, grid(), state().mnuUserIndex);
    RealBox message;
    box->whileShown = [] { RealBox::show(); };
    type(grid(), L"99");
    const POINT third = middleOf(menuField(3));
    SendMessageW(grid(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(third.x, third.y));
    EXPECT_TRUE(message.wasAnswered());
    EXPECT_EQ(boxTexts(), std::vector<std::string>{"The entered value is out of range."});
    EXPECT_EQ(menu.captions(VK_ESCAPE).back(), "Default: 0");
    EXPECT_NE(GetCapture(), grid());
    EXPECT_EQ(state().grdMacro.cellText(1, 1), "7");
}

TEST_F(GridWindowTest, TheMenuOfValuesOpensByKeyAndByTheRightButton) {
    MenuAnswer menu(parent, grid(), state().mnuUserIndex);
    key(grid(), VK_DOWN);
    SendMessageW(grid(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(grid()), -1);
    EXPECT_EQ(menu.captions(VK_ESCAPE), (Captions{"W1", "W2", "SL.Station", "SL.Any"}));
    SendMessageW(grid(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(20, rowY(3)));
    EXPECT_FALSE(state().mnuUserIndex.shown());
    SendMessageW(grid(), WM_RBUTTONUP, 0, MAKELPARAM(20, rowY(3)));
    EXPECT_EQ(menu.captions(VK_RETURN).front(), "SL.Any");
    EXPECT_EQ(state().grdMacro.cellText(3, 1), "SL.Any");
    com::Variant button;
    accessibleGrid()->accNavigate(NAVDIR_RIGHT, com::Variant(std::int32_t{1}).get(), button.put());
    EXPECT_EQ(accessibleGrid()->accDoDefaultAction(button.get()), S_OK);
    EXPECT_EQ(menu.captions(VK_ESCAPE).front(), "SL.Vol");
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

TEST_F(GridWindowTest, AClickInAValueOpensTheEditor) {
    const auto clickValue = [this](int row) {
        const POINT at = middleOf(placeInGrid(row));
        click(grid(), at.x, at.y);
    };
    clickValue(3);
    ASSERT_TRUE(IsWindowVisible(textEditor()));
    EXPECT_FALSE(state().mnuUserIndex.shown());
    // The second click of a double click goes to the editor: what is typed next still takes the place of all there is.
    click(textEditor(), 2, 3);
    type(textEditor(), L"11");
    EXPECT_EQ(textOf(textEditor()), "11");
    // A later one is for the caret.
    click(textEditor(), 2, 3);
    type(textEditor(), L"2");
    EXPECT_EQ(textOf(textEditor()), "211");
    // A click elsewhere in the grid takes the value; one in the arrow opens the list.
    click(grid(), placeInGrid(2).right - 5, rowY(2));
    pump();
    EXPECT_EQ(state().grdMacro.cellText(3, 1), "211");
    EXPECT_EQ(GetFocus(), listEditor());
    EXPECT_TRUE(SendMessageW(listEditor(), CB_GETDROPPEDSTATE, 0, 0));
    SendMessageW(listEditor(), CB_SHOWDROPDOWN, FALSE, 0);
    clickValue(2);
    EXPECT_EQ(GetFocus(), listEditor());
    // The hand that shakes once more: the list stays closed, and the value as it is.
    click(listEditor(), 5, 5);
    EXPECT_FALSE(SendMessageW(listEditor(), CB_GETDROPPEDSTATE, 0, 0));
    EXPECT_EQ(state().grdMacro.cellText(2, 1), "W2");
    click(grid(), 10, rowY(1));
    pump();
    EXPECT_EQ(GetFocus(), grid());
    SendMessageW(grid(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(10, rowY(1)));
    EXPECT_EQ(GetFocus(), textEditor());
    key(textEditor(), VK_DOWN);
    EXPECT_EQ(state().grdMacro.currentRow(), 2);
}

TEST_F(GridWindowTest, WhatIsEnteredIsInView) {
    for (int i = 0; i < 100; ++i) {
        state().grdMacro.addRow({"P" + std::to_string(i), "1", controls::EditStyle::Text, {}});
    }
    const auto turnWheel = [this] {
        for (int i = 0; i < 5; ++i) {
            SendMessageW(grid(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
        }
        EXPECT_GT(GetScrollPos(grid(), SB_VERT), 1);
    };
    turnWheel();
    key(grid(), VK_F2);
    EXPECT_EQ(GetScrollPos(grid(), SB_VERT), 1);
    turnWheel();
    type(textEditor(), L"8");
    EXPECT_EQ(GetScrollPos(grid(), SB_VERT), 1) << "nobody types where he does not see it";
    key(textEditor(), VK_RETURN);
    turnWheel();
    type(grid(), L"9");
    EXPECT_EQ(GetScrollPos(grid(), SB_VERT), 1);
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
    click(grid(), menuField(2).left + 2, rowY(2));
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
    EXPECT_EQ(count, 6) << "a value and a button each";
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
    child.lVal = 7;
    EXPECT_EQ(accessible->get_accName(child, name.put()), E_INVALIDARG);

    com::Variant button;
    child.lVal = 2;
    EXPECT_EQ(accessible->accNavigate(NAVDIR_RIGHT, child, button.put()), S_OK);
    EXPECT_EQ(accessible->get_accName(button.get(), name.put()), S_OK);
    EXPECT_EQ(name.utf8(), "Values for Station");
    com::Variant role;
    com::Variant states;
    EXPECT_EQ(accessible->get_accRole(button.get(), role.put()), S_OK);
    EXPECT_EQ(role.get().lVal, ROLE_SYSTEM_BUTTONMENU);
    EXPECT_EQ(accessible->get_accState(button.get(), states.put()), S_OK);
    EXPECT_EQ(states.get().lVal, STATE_SYSTEM_HASPOPUP);
    accessible->accLocation(&left, &top, &width, &height, button.get());
    EXPECT_EQ(accessible->accHitTest(left + width / 2, top + height / 2, hit.put()), S_OK);
    EXPECT_EQ(hit.get().lVal, button.get().lVal);

    form.destroy();
    child.lVal = 1;
    EXPECT_TRUE(FAILED(accessible->get_accName(child, name.put())));
}

}  // namespace
}  // namespace vrn::test
