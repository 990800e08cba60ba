#include <gtest/gtest.h>
#include <ole2.h>
// After windows.h, which it builds on.
#include <commctrl.h>

#include "activex/form/FormFixture.h"

namespace vrn::test {
namespace {

class Ole final : public ::testing::Environment {
  public:
    void SetUp() override { OleInitialize(nullptr); }
    void TearDown() override { OleUninitialize(); }
};
const auto* const ole = ::testing::AddGlobalTestEnvironment(new Ole);

TEST_F(FormTest, WindowsShowWhatTheModelsHold) {
    loadSteps({"WASH(7,W2,5)", "COUNT(2)"}, {"First", "Second"});
    EXPECT_EQ(textOf(window(ControlId::txtMethodDescription)), "First\r\nSecond\r\n");
    EXPECT_EQ(textOf(frame(ControlId::fraMacroSequence)), "Macro Sequence");
    EXPECT_EQ(SendMessageW(window(ControlId::lstMethodMacroList), LB_GETCOUNT, 0, 0), 2);
    EXPECT_EQ(SendMessageW(window(ControlId::lstMethodMacroList), LB_GETCURSEL, 0, 0), 0);
    EXPECT_EQ(textOf(window(ControlId::cboSyringe)), "10uL");
    EXPECT_EQ(textOf(window(ControlId::cboSelectedMacro)), "WASH");

    editor().DisableMethod(true);
    for (const auto id : {ControlId::cboSyringe, ControlId::cmdInsert, ControlId::cmdReplace, ControlId::cmdDelete,
                          ControlId::cboSelectedMacro, ControlId::cmdDefCycle}) {
        EXPECT_FALSE(IsWindowEnabled(window(id))) << static_cast<int>(id);
    }
    editor().DisableSyringe(false);
    EXPECT_TRUE(IsWindowEnabled(window(ControlId::cboSyringe)));
    EXPECT_FALSE(IsWindowVisible(window(ControlId::lblCycleDateChanged)));
    state().lblCycleDateChanged.setCaption("Notice");
    state().lblCycleDateChanged.setVisible(true);
    EXPECT_TRUE(IsWindowVisible(window(ControlId::lblCycleDateChanged)));
    EXPECT_EQ(textOf(window(ControlId::lblCycleDateChanged)), "Notice");
}

TEST_F(FormTest, ALongDescriptionIsPastedWhole) {
    const HWND field = window(ControlId::txtMethodDescription);
    const std::wstring pasted(40000, L'x');
    SendMessageW(field, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(pasted.c_str()));
    EXPECT_EQ(state().txtMethodDescription.text().size(), pasted.size());
}

TEST_F(FormTest, AThousandRowsComeAtOnceAndTheListKeepsItsPlace) {
    const HWND list = window(ControlId::lstMethodMacroList);
    auto& model = state().lstMethodMacroList;
    for (int i = 0; i < 1000; ++i) {
        model.addItem("row " + std::to_string(i));
    }
    EXPECT_EQ(SendMessageW(list, LB_GETCOUNT, 0, 0), 1000);
    SendMessageW(list, LB_SETTOPINDEX, 500, 0);
    model.removeItem(600);
    model.setItem(10, "other");
    EXPECT_EQ(SendMessageW(list, LB_GETCOUNT, 0, 0), 999);
    EXPECT_EQ(SendMessageW(list, LB_GETTOPINDEX, 0, 0), 500);
    std::array<wchar_t, 40> text{};
    SendMessageW(list, LB_GETTEXT, 10, reinterpret_cast<LPARAM>(text.data()));
    EXPECT_STREQ(text.data(), L"other");
    model.clear();
    EXPECT_EQ(SendMessageW(list, LB_GETCOUNT, 0, 0), 0);
}

TEST_F(FormTest, AClickSelectsAStep) {
    loadSteps({"WASH(7,W2,5)", "COUNT(2)"});
    const HWND list = window(ControlId::lstMethodMacroList);
    RECT row{};
    SendMessageW(list, LB_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&row));
    click(list, row.left + 5, row.top + 3);
    EXPECT_EQ(state().lstMethodMacroList.listIndex(), 1);
    EXPECT_EQ(textOf(window(ControlId::cboSelectedMacro)), "COUNT");
    EXPECT_GT(state().lngListMouseY, 0);

    site.dead = true;
    click(list, row.left + 5, 3);
    SendMessageW(window(ControlId::cmdDelete), BM_CLICK, 0, 0);
    EXPECT_EQ(rows().size(), 2U);
    EXPECT_EQ(SendMessageW(list, LB_GETCURSEL, 0, 0), 1);
}

TEST_F(FormTest, DropDownListsTellOfAChoiceOnce) {
    loadSteps({"WASH(7,W2,5)"});
    const HWND combo = window(ControlId::cboSelectedMacro);
    int clicks = 0;
    const auto handler = state().cboSelectedMacro.onClick;
    state().cboSelectedMacro.onClick = [&] {
        ++clicks;
        handler();
    };
    key(combo, VK_DOWN);
    EXPECT_EQ(state().cboSelectedMacro.text(), "COUNT");
    EXPECT_EQ(clicks, 1);
    SetFocus(combo);
    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    key(combo, VK_DOWN);
    EXPECT_EQ(state().cboSelectedMacro.text(), "COUNT");
    key(combo, VK_RETURN);
    EXPECT_EQ(state().cboSelectedMacro.text(), "NOTE");
    EXPECT_EQ(clicks, 2);
    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    key(combo, VK_UP);
    key(combo, VK_ESCAPE);
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(textOf(combo), "NOTE");
}

TEST_F(FormTest, ButtonsWorkByClickAndByMnemonic) {
    loadSteps({"WASH(7,W2,5)"});
    choose("COUNT");
    SendMessageW(window(ControlId::cmdInsert), BM_CLICK, 0, 0);
    EXPECT_EQ(rows().size(), 2U);
    {
        const HeldKey alt(VK_MENU);
        EXPECT_TRUE(translated(grid(), WM_SYSCHAR, 'i'));
    }
    EXPECT_EQ(rows().size(), 3U);
    EXPECT_EQ(form.mnemonics(), L"IRD");
    form.pressMnemonic(L'D');
    EXPECT_EQ(rows().size(), 2U);
    EXPECT_FALSE(translated(grid(), WM_SYSCHAR, 'x'));
}

TEST_F(FormTest, TheDescriptionIsTyped) {
    loadSteps({}, {"First"});
    const HWND field = window(ControlId::txtMethodDescription);
    state().IsChanged = false;
    SendMessageW(field, EM_SETSEL, 0, 0);
    type(field, L"a\rü");
    EXPECT_EQ(state().txtMethodDescription.text(), "a\r\nüFirst\r\n");
    EXPECT_TRUE(state().IsChanged);
    EXPECT_FALSE(translated(field, WM_KEYDOWN, VK_ESCAPE));
    key(field, VK_ESCAPE);
    pump();
    EXPECT_TRUE(IsWindow(field));
    // What the model refuses does not stay in the window.
    site.dead = true;
    type(field, L"z");
    EXPECT_EQ(textOf(field), "a\r\nüFirst\r\n");
}

TEST_F(FormTest, TabGoesRoundTheControlsThatCanBeUsed) {
    loadSteps({"WASH(7,W2,5)"});
    form.takeFocus(Form::FocusTarget::First);
    std::vector<int> order{GetDlgCtrlID(GetFocus())};
    while (order.size() < 20 && translated(GetFocus(), WM_KEYDOWN, VK_TAB)) {
        order.push_back(GetDlgCtrlID(GetFocus()));
    }
    const auto id = [](ControlId control) { return static_cast<int>(control); };
    EXPECT_EQ(order,
              (std::vector<int>{id(ControlId::txtMethodDescription), id(ControlId::cboSyringe),
                                id(ControlId::lstMethodMacroList), id(ControlId::cmdInsert), id(ControlId::cmdReplace),
                                id(ControlId::cmdDelete), id(ControlId::cboSelectedMacro), id(ControlId::grdMacro)}));
    const HeldKey shift(VK_SHIFT);
    EXPECT_TRUE(translated(GetFocus(), WM_KEYDOWN, VK_TAB));
    EXPECT_EQ(GetFocus(), window(ControlId::cboSelectedMacro));
    form.takeFocus(Form::FocusTarget::First);
    EXPECT_FALSE(translated(GetFocus(), WM_KEYDOWN, VK_TAB));
    EXPECT_EQ(site.focus, std::vector<bool>{true});
    SetFocus(parent);
    EXPECT_EQ(site.focus, (std::vector<bool>{true, false}));
    form.takeFocus(Form::FocusTarget::Previous);
    EXPECT_EQ(GetFocus(), window(ControlId::txtMethodDescription));
    // A container that only knows the outermost window.
    SetFocus(window(ControlId::cmdReplace));
    SetFocus(parent);
    SetFocus(form.window());
    EXPECT_EQ(GetFocus(), window(ControlId::cmdReplace));
}

TEST_F(FormTest, EverythingStandsApartAndGrowsWithTheForm) {
    loadSteps({"WASH(7,W2,5)"});
    const auto place = [this](ControlId id) {
        RECT rect{};
        GetWindowRect(window(id), &rect);
        return rect;
    };
    const RECT before = place(ControlId::grdMacro);
    form.moveTo({0, 0, 1400, 1000}, {0, 0, 1400, 1000});
    const RECT after = place(ControlId::grdMacro);
    EXPECT_GT(after.right - after.left, before.right - before.left);
    EXPECT_GT(after.bottom - after.top, before.bottom - before.top);
    // The notice takes its room from the frames, and gives it back.
    const RECT list = place(ControlId::lstMethodMacroList);
    state().lblCycleDateChanged.setCaption("Notice");
    state().lblCycleDateChanged.setVisible(true);
    EXPECT_LT(place(ControlId::lstMethodMacroList).bottom, list.bottom);
    EXPECT_GT(place(ControlId::lblCycleDateChanged).top, place(ControlId::grdMacro).bottom);
    state().lblCycleDateChanged.setVisible(false);
    EXPECT_EQ(place(ControlId::lstMethodMacroList).bottom, list.bottom);
    // A bigger font: taller rows, and drop-down lists that still have one line.
    const HFONT big = CreateFontW(-40, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");
    form.setFont(big);
    EXPECT_GE(place(ControlId::cmdInsert).bottom - place(ControlId::cmdInsert).top, 40);
    EXPECT_GT(place(ControlId::cboSelectedMacro).bottom - place(ControlId::cboSelectedMacro).top, 40);
    EXPECT_LT(place(ControlId::cboSelectedMacro).bottom, place(ControlId::grdMacro).top);
    form.setFont(nullptr);
    DeleteObject(big);
}

LRESULT CALLBACK countColourChanges(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR /*id*/,
                                    DWORD_PTR count) {
    *reinterpret_cast<int*>(count) += message == WM_SYSCOLORCHANGE ? 1 : 0;
    return DefSubclassProc(window, message, wParam, lParam);
}

TEST_F(FormTest, NewsOfTheSystemReachItsControls) {
    int heard = 0;
    const HWND header = GetDlgItem(grid(), activex::gridHeaderId);
    SetWindowSubclass(header, countColourChanges, 1, reinterpret_cast<DWORD_PTR>(&heard));
    SendMessageW(form.window(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(heard, 1);
    RemoveWindowSubclass(header, countColourChanges, 1);
}

TEST_F(FormTest, TheFocusIsNotLostWithItsControl) {
    loadSteps({"COUNT(2)"});
    SetFocus(window(ControlId::cmdDelete));
    SendMessageW(window(ControlId::cmdDelete), BM_CLICK, 0, 0);
    pump();
    EXPECT_FALSE(IsWindowEnabled(window(ControlId::cmdDelete)));
    EXPECT_EQ(GetFocus(), window(ControlId::cboSelectedMacro));
    EXPECT_EQ(site.focus, std::vector<bool>{true});
}

}  // namespace
}  // namespace vrn::test
