#include <gtest/gtest.h>

#include "activex/form/FormFixture.h"

namespace vrn::test {
namespace {

// Counts the turns of the wheel that reach the container.
class Container {
  public:
    explicit Container(HWND window) : window_(window) {
        turns() = 0;
        before() = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Container::procedure)));
    }
    ~Container() { SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(before())); }
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;
    static int& turns() {
        static int count;
        return count;
    }

  private:
    static WNDPROC& before() {
        static WNDPROC procedure;
        return procedure;
    }
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        turns() += message == WM_MOUSEWHEEL ? 1 : 0;
        return CallWindowProcW(before(), window, message, wParam, lParam);
    }
    HWND window_;
};

class ListsTest : public FormTest {
  protected:
    [[nodiscard]] HWND list() const { return window(ControlId::lstMethodMacroList); }
    static void turnWheel(HWND over) {
        SendMessageW(over, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    }
    [[nodiscard]] RECT rowPlace(int row) const {
        RECT place{};
        SendMessageW(list(), LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
        return place;
    }
    [[nodiscard]] bool inView(int row) const {
        RECT client{};
        GetClientRect(list(), &client);
        const RECT place = rowPlace(row);
        return place.top >= 0 && place.bottom <= client.bottom;
    }
    /// Makes the list so high that its last row in view is cut, and finds that row.
    [[nodiscard]] int rowSeenInPart() const {
        for (int height = 600;; --height) {
            form.moveTo({0, 0, 800, height}, {0, 0, 800, height});
            RECT client{};
            GetClientRect(list(), &client);
            const int row = static_cast<int>(client.bottom / rowPlace(0).bottom);
            const RECT place = rowPlace(row);
            if (client.bottom - place.top > 5 && !inView(row)) {
                return row;
            }
        }
    }
    /// What is said when a row is clicked.
    std::vector<std::string> saidOnClick(int row) {
        box->shown.clear();
        const RECT place = rowPlace(row);
        click(list(), place.left + 5, place.top + 3);
        pump();
        return boxTexts();
    }
    static std::string outOfRange(const std::string& value) {
        return "In macro COUNT, the parameter 'Number' with value of '" + value +
               "' is out of range.\r\nThe valid range is (1-20) .";
    }
    using Texts = std::vector<std::string>;
};

TEST_F(ListsTest, AWrongStepSpeaksOnceWhenItIsClicked) {
    loadSteps({"COUNT(7)", "COUNT(98)", "COUNT(99)"});
    EXPECT_EQ(saidOnClick(1), Texts{outOfRange("98")});
    EXPECT_EQ(saidOnClick(2), Texts{outOfRange("99")});
    EXPECT_EQ(saidOnClick(0), Texts{});
    SetFocus(grid());
    type(grid(), L"50");
    EXPECT_EQ(saidOnClick(1), (Texts{"The entered value is out of range.", outOfRange("98")}));
    EXPECT_EQ(SendMessageW(list(), LB_GETCURSEL, 0, 0), 1);
    EXPECT_EQ(state().lstMethodMacroList.listIndex(), 1);
    // The selected step again: it is loaded anew, as by a choice of the list.
    EXPECT_EQ(saidOnClick(1), Texts{outOfRange("98")});
    box->shown.clear();
    key(list(), VK_DOWN);
    EXPECT_EQ(boxTexts(), Texts{outOfRange("99")});
}

TEST_F(ListsTest, TheWheelOverAClosedListGoesToTheContainer) {
    loadSteps({"WASH(7,W2,5)"});
    const Container container(parent);
    for (const auto id : {ControlId::cboSyringe, ControlId::cboSelectedMacro}) {
        SetFocus(window(id));
        turnWheel(window(id));
    }
    EXPECT_EQ(Container::turns(), 2);
    EXPECT_EQ(textOf(window(ControlId::cboSyringe)), "10uL");
    EXPECT_EQ(state().cboSelectedMacro.text(), "WASH");
    EXPECT_FALSE(state().IsChanged);

    SendMessageW(window(ControlId::cboSelectedMacro), CB_SHOWDROPDOWN, TRUE, 0);
    turnWheel(window(ControlId::cboSelectedMacro));
    EXPECT_EQ(Container::turns(), 2) << "an open list has a use for it";
    SendMessageW(window(ControlId::cboSelectedMacro), CB_SHOWDROPDOWN, FALSE, 0);

    SetFocus(grid());
    key(grid(), VK_DOWN);
    key(grid(), VK_F2);
    ASSERT_EQ(GetFocus(), listEditor());
    turnWheel(listEditor());
    EXPECT_FALSE(state().grdMacro.pendingEdit().has_value());
    EXPECT_EQ(textOf(listEditor()), "W2");
    // All rows are in view: the grid has no use for it either.
    EXPECT_EQ(Container::turns(), 3);
}

TEST_F(ListsTest, WhatAButtonDidIsInView) {
    std::vector<std::string> many;
    for (int i = 1; i <= 120; ++i) {
        many.push_back("COUNT(" + std::to_string(i % 20 + 1) + ")");
    }
    loadSteps(many);
    const auto scrollTo = [this](WPARAM top) {
        SendMessageW(list(), LB_SETTOPINDEX, top, 0);
        ASSERT_EQ(SendMessageW(list(), LB_GETTOPINDEX, 0, 0), static_cast<LRESULT>(top));
    };
    const auto press = [this](ControlId button) {
        SendMessageW(window(button), BM_CLICK, 0, 0);
        pump();
    };
    scrollTo(40);
    press(ControlId::cmdInsert);
    EXPECT_TRUE(inView(0));
    EXPECT_TRUE(inView(1));

    // At the lower edge: the new row is not seen yet, the selected one just so.
    state().lstMethodMacroList.userSelect(20);
    EXPECT_TRUE(inView(20));
    for (int top = 0; top <= 20; top += 20) {
        scrollTo(static_cast<WPARAM>(top));
        press(ControlId::cmdInsert);
        EXPECT_TRUE(inView(20)) << top;
        EXPECT_TRUE(inView(21)) << top;
    }
    for (const auto button : {ControlId::cmdReplace, ControlId::cmdDelete}) {
        scrollTo(50);
        press(button);
        EXPECT_TRUE(inView(20)) << static_cast<int>(button);
    }
    scrollTo(50);
    loadSteps(many);
    EXPECT_TRUE(inView(0));

    // A press on a row that is seen in part leaves the list where it is.
    const int part = rowSeenInPart();
    saidOnClick(part);
    EXPECT_EQ(state().lstMethodMacroList.listIndex(), part);
    EXPECT_EQ(SendMessageW(list(), LB_GETTOPINDEX, 0, 0), 0);
}

TEST_F(ListsTest, ATypedNameIsFound) {
    loadSteps({"WASH(7,W2,5)", "COUNT(2)", "NOTE(a,b)"});
    const HWND combo = window(ControlId::cboSelectedMacro);
    std::vector<std::string> chosen;
    const auto handler = state().cboSelectedMacro.onClick;
    state().cboSelectedMacro.onClick = [&] {
        chosen.push_back(state().cboSelectedMacro.text());
        handler();
    };
    type(combo, L"count");
    EXPECT_EQ(textOf(combo), "COUNT");
    EXPECT_EQ(chosen, Texts{"COUNT"});
    key(combo, VK_ESCAPE);
    type(combo, L"wa");
    EXPECT_EQ(textOf(combo), "WASH") << "the A of the next cycle's name is not what was typed";
    key(combo, VK_ESCAPE);
    type(combo, L"tE");
    EXPECT_EQ(textOf(combo), "NOTE");

    // In the open list the user is still looking around.
    key(combo, VK_ESCAPE);
    SetFocus(combo);
    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    type(combo, L"wa");
    EXPECT_EQ(state().cboSelectedMacro.text(), "NOTE");
    key(combo, VK_RETURN);
    EXPECT_EQ(state().cboSelectedMacro.text(), "WASH");
    EXPECT_EQ(chosen, (Texts{"COUNT", "WASH", "COUNT", "NOTE", "WASH"}));

    type(list(), L"no");
    EXPECT_EQ(state().lstMethodMacroList.listIndex(), 2);
    key(list(), VK_HOME);
    type(list(), L"2");
    EXPECT_EQ(state().lstMethodMacroList.listIndex(), 1);
    EXPECT_EQ(textOf(combo), "COUNT");

    site.dead = true;
    key(list(), VK_HOME);
    type(list(), L"n");
    type(combo, L"n");
    EXPECT_EQ(state().lstMethodMacroList.listIndex(), 1);
    EXPECT_EQ(state().cboSelectedMacro.text(), "COUNT");
}

}  // namespace
}  // namespace vrn::test
