// What can be read: in a method that is locked, and in places that are too narrow for their texts.
#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it builds on.
#include <commctrl.h>

#include <algorithm>
#include <cmath>

#include "activex/form/FormFixture.h"
#include "hosts/sample/script/WindowSearch.h"

namespace vrn::test {
namespace {

double luminance(COLORREF colour) {
    const auto part = [](int value) {
        const double v = value / 255.0;
        return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(GetRValue(colour)) + 0.7152 * part(GetGValue(colour)) + 0.0722 * part(GetBValue(colour));
}

double contrast(COLORREF a, COLORREF b) {
    const double lighter = std::max(luminance(a), luminance(b));
    const double darker = std::min(luminance(a), luminance(b));
    return (lighter + 0.05) / (darker + 0.05);
}

std::string clipboardText() {
    std::string text;
    if (OpenClipboard(nullptr) != FALSE) {
        if (HANDLE const data = GetClipboardData(CF_UNICODETEXT); data != nullptr) {
            text = text::fromWide(static_cast<const wchar_t*>(GlobalLock(data)));
            GlobalUnlock(data);
        }
        CloseClipboard();
    }
    return text;
}

class ReadingTest : public FormTest {
  protected:
    ReadingTest() {
        std::vector<std::string> steps(90, "COUNT(2)");
        steps.insert(steps.begin(), "WASH(7,W2,5)");
        loadSteps(steps, std::vector<std::string>(40, "A line of the description"));
    }
    [[nodiscard]] HWND list() const { return window(ControlId::lstMethodMacroList); }
    [[nodiscard]] HWND description() const { return window(ControlId::txtMethodDescription); }
    [[nodiscard]] int topRow() const { return static_cast<int>(SendMessageW(list(), LB_GETTOPINDEX, 0, 0)); }
    void resize(int width, int height) { form.moveTo({0, 0, width, height}, {0, 0, width, height}); }

    /// The strongest contrast that a part of a window has with its most frequent colour: that of its text.
    static double textContrast(HWND of, const RECT& area) {
        UpdateWindow(of);
        const HDC context = GetDC(of);
        const COLORREF ground = GetPixel(context, area.right - 2, area.bottom - 2);
        double strongest = 1;
        for (LONG y = area.top; y < area.bottom; ++y) {
            for (LONG x = area.left; x < area.right; ++x) {
                strongest = std::max(strongest, contrast(ground, GetPixel(context, x, y)));
            }
        }
        ReleaseDC(of, context);
        return strongest;
    }

    /// What the tool tip of a window says when the mouse comes to this place, nothing without one. `mouse` gets the message.
    static std::string tip(HWND mouse, int x, int y) {
        SendMessageW(mouse, WM_MOUSEMOVE, 0, MAKELPARAM(x, y));
        std::array<wchar_t, 1000> text{};
        TOOLINFOW tool{};
        tool.cbSize = TTTOOLINFOW_V2_SIZE;
        tool.hwnd = mouse;
        tool.uId = 1;
        tool.lpszText = text.data();
        const HWND tips = sample::findInThread(GetCurrentThreadId(), [&](HWND candidate) {
            std::array<wchar_t, 40> name{};
            GetClassNameW(candidate, name.data(), static_cast<int>(name.size()));
            return std::wstring_view(name.data()) == TOOLTIPS_CLASSW &&
                   SendMessageW(candidate, TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&tool)) != FALSE &&
                   PtInRect(&tool.rect, {x, y}) != FALSE;
        });
        return tips == nullptr ? std::string() : text::fromWide(text.data());
    }
    static std::string tipInTheMiddle(HWND of) {
        RECT client{};
        GetClientRect(of, &client);
        return tip(of, client.right / 2, client.bottom / 2);
    }
};

TEST_F(ReadingTest, ALockedListScrollsAndKeepsItsSelection) {
    editor().DisableMethod(true);
    int clicks = 0;
    state().lstMethodMacroList.onClick = [&clicks] { ++clicks; };
    ASSERT_TRUE(IsWindowEnabled(list()));
    EXPECT_NE(GetPropW(list(), activex::readOnlyProperty), nullptr);
    SetFocus(list());
    key(list(), VK_NEXT);
    const int after = topRow();
    EXPECT_GT(after, 0);
    key(list(), VK_UP);
    EXPECT_EQ(topRow(), after - 1);
    key(list(), VK_END);
    EXPECT_GT(topRow(), after);
    key(list(), VK_HOME);
    EXPECT_EQ(topRow(), 0);
    SendMessageW(list(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    EXPECT_GT(topRow(), 0);
    click(list(), 10, 40);
    type(list(), L"05");
    SendMessageW(list(), LB_SETCURSEL, 7, 0);
    SendMessageW(GetParent(list()), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(list()), LBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(list()));
    EXPECT_EQ(SendMessageW(list(), LB_GETCURSEL, 0, 0), 0);
    EXPECT_EQ(state().lstMethodMacroList.listIndex(), 0);
    EXPECT_EQ(clicks, 0);

    editor().DisableMethod(false);
    EXPECT_EQ(GetPropW(list(), activex::readOnlyProperty), nullptr);
    key(list(), VK_DOWN);
    EXPECT_EQ(state().lstMethodMacroList.listIndex(), 1);
}

TEST_F(ReadingTest, ALockedDescriptionIsReadAndCopied) {
    editor().DisableDescription(true);
    const HWND field = description();
    ASSERT_TRUE(IsWindowEnabled(field));
    EXPECT_NE(GetWindowLongW(field, GWL_STYLE) & ES_READONLY, 0);
    SendMessageW(field, WM_VSCROLL, SB_PAGEDOWN, 0);
    EXPECT_GT(SendMessageW(field, EM_GETFIRSTVISIBLELINE, 0, 0), 0);
    SendMessageW(field, EM_SETSEL, 0, 6);
    SendMessageW(field, WM_COPY, 0, 0);
    EXPECT_EQ(clipboardText(), "A line");
    const auto before = state().txtMethodDescription.text();
    type(field, L"x");
    SendMessageW(field, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"y"));
    EXPECT_EQ(state().txtMethodDescription.text(), before);
    EXPECT_EQ(windowTextOf(field), before);
    editor().DisableDescription(false);
    EXPECT_EQ(GetWindowLongW(field, GWL_STYLE) & ES_READONLY, 0);
}

TEST_F(ReadingTest, ALockedGridIsWalkedThroughAndCopiedFrom) {
    SetFocus(grid());
    key(grid(), VK_DOWN);
    editor().DisableMethod(true);
    EXPECT_EQ(GetFocus(), grid());
    // From where the user was; the model's own row stays.
    key(grid(), VK_UP);
    type(grid(), L"\x03");
    EXPECT_EQ(clipboardText(), "7");
    click(grid(), 20, rowY(2));
    SendMessageW(grid(), WM_COPY, 0, 0);
    EXPECT_EQ(clipboardText(), "W2");
    key(grid(), VK_F2);
    type(grid(), L"9");
    EXPECT_FALSE(IsWindowVisible(textEditor()));
    EXPECT_FALSE(IsWindowVisible(listEditor()));
    EXPECT_EQ(state().grdMacro.currentRow(), 2);
    for (int i = 0; i < 100; ++i) {
        state().grdMacro.addRow({"P" + std::to_string(i), "1", controls::EditStyle::Text, {}});
    }
    key(grid(), VK_END);
    EXPECT_GT(GetScrollPos(grid(), SB_VERT), 50);
    type(grid(), L"\x03");
    EXPECT_EQ(clipboardText(), "1");

    com::ComPtr<IAccessible> accessible;
    AccessibleObjectFromWindow(grid(), static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                               reinterpret_cast<void**>(accessible.GetAddressOf()));
    com::Variant states;
    ASSERT_EQ(accessible->get_accState(com::Variant(std::int32_t{CHILDID_SELF}).get(), states.put()), S_OK);
    EXPECT_EQ(states.get().lVal,
              STATE_SYSTEM_UNAVAILABLE | STATE_SYSTEM_READONLY | STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED);
}

TEST_F(ReadingTest, TabReachesWhatCanBeReadInALockedMethod) {
    editor().DisableMethod(true);
    form.takeFocus(Form::FocusTarget::First);
    EXPECT_EQ(GetFocus(), description());
    EXPECT_TRUE(translated(GetFocus(), WM_KEYDOWN, VK_TAB));
    EXPECT_EQ(GetFocus(), list());
    EXPECT_TRUE(translated(GetFocus(), WM_KEYDOWN, VK_TAB));
    EXPECT_EQ(GetFocus(), grid());
    EXPECT_FALSE(translated(GetFocus(), WM_KEYDOWN, VK_TAB));
}

TEST_F(ReadingTest, WhatIsLockedIsGreyAndItsTextIsNot) {
    editor().DisableMethod(true);
    SetFocus(parent);
    pump();
    RECT client{};
    GetClientRect(list(), &client);
    RECT row{};
    SendMessageW(list(), LB_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&row));
    EXPECT_GE(textContrast(list(), row), 4.5);
    EXPECT_GE(textContrast(description(), {2, 2, 120, 30}), 4.5);
    const int middle = rowY(2);
    EXPECT_GE(textContrast(grid(), {2, middle - 8, 100, middle + 8}), 4.5);
    EXPECT_GE(textContrast(window(ControlId::cboSyringe), {5, 5, 60, 17}), 4.5);
    for (const auto& [of, x, y] : {std::tuple(list(), row.right - 2, row.bottom - 2), {description(), 200, 2}}) {
        const HDC context = GetDC(of);
        EXPECT_EQ(GetPixel(context, x, y), GetSysColor(COLOR_BTNFACE));
        ReleaseDC(of, context);
    }
}

TEST_F(ReadingTest, ASmallFormStillHasRowsAndWholeCaptions) {
    state().lblCycleDateChanged.setCaption("Notice");
    resize(320, 260);
    RECT row{};
    SendMessageW(list(), LB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
    RECT client{};
    GetClientRect(list(), &client);
    EXPECT_GE(client.bottom / (row.bottom - row.top), 5);
    GetClientRect(grid(), &client);
    EXPECT_GE((client.bottom - rowY(1)) / (rowY(2) - rowY(1)), 3);
    EXPECT_EQ(tipInTheMiddle(window(ControlId::cmdReplace)), "");
    GetClientRect(description(), &client);
    EXPECT_GT(client.bottom, 0);
}

TEST_F(ReadingTest, CutCaptionsEndInAnEllipsisAndHaveATip) {
    // Nothing fits any more: the caption is cut, whoever asks for it gets it whole, and the tip shows it.
    const HFONT big = CreateFontW(-60, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");
    form.setFont(big);
    resize(300, 800);
    const HWND button = window(ControlId::cmdReplace);
    EXPECT_EQ(tipInTheMiddle(button), "Replace ");
    EXPECT_EQ(textOf(button), "&Replace ");
    std::array<wchar_t, 40> drawn{};
    InternalGetWindowText(button, drawn.data(), static_cast<int>(drawn.size()));
    EXPECT_EQ(std::wstring(drawn.data()).back(), L'\u2026');
    EXPECT_EQ(tip(frame(ControlId::fraAvailableCycles), 12, 10), "Available Cycles");
    // Also of what is disabled, which gets no mouse of its own.
    editor().DisableMethod(true);
    RECT place{};
    GetWindowRect(button, &place);
    MapWindowPoints(nullptr, frame(ControlId::fraMacroSequence), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_EQ(tip(frame(ControlId::fraMacroSequence), place.left + 5, place.top + 5), "Replace ");

    form.setFont(nullptr);
    DeleteObject(big);
    resize(800, 600);
    EXPECT_EQ(tipInTheMiddle(button), "");
    InternalGetWindowText(button, drawn.data(), static_cast<int>(drawn.size()));
    EXPECT_STREQ(drawn.data(), L"&Replace ");
}

TEST_F(ReadingTest, CutTextsHaveATip) {
    const std::string longName(120, 'M');
    state().lstMethodMacroList.setItem(1, longName);
    RECT row{};
    SendMessageW(list(), LB_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&row));
    EXPECT_EQ(tip(list(), row.left + 5, row.top + 3), longName);
    EXPECT_EQ(tip(list(), row.left + 5, row.top - 3), "");

    auto& combo = state().cboSyringe;
    combo.addItem(longName);
    combo.setListIndex(combo.count() - 1);
    EXPECT_EQ(tipInTheMiddle(window(ControlId::cboSyringe)), longName);

    state().lblCycleDateChanged.setCaption(longName + " " + longName + " " + longName);
    state().lblCycleDateChanged.setVisible(true);
    resize(640, 220);
    EXPECT_EQ(tipInTheMiddle(window(ControlId::lblCycleDateChanged)), state().lblCycleDateChanged.caption());
    EXPECT_EQ(SendMessageW(window(ControlId::lblCycleDateChanged), WM_NCHITTEST, 0, 0), HTCLIENT);
    state().lblCycleDateChanged.setCaption("Short");
    EXPECT_EQ(tipInTheMiddle(window(ControlId::lblCycleDateChanged)), "");
}

// A row without a hint has a tip of its own; where there is a hint, it shows the cut texts above its own.
TEST_F(ReadingTest, CutCellsAreToldByTheTipOrTheHint) {
    state().grdMacro.addRow({"Short", std::string(150, 'v'), controls::EditStyle::Text, {}});
    const int last = state().grdMacro.rowCount() - 1;
    EXPECT_EQ(tip(grid(), 20, rowY(last)), std::string(150, 'v'));
    const HWND hint = window(ControlId::txtToolTip);
    const auto heightAt = [&](int row) {
        SendMessageW(grid(), WM_MOUSEMOVE, 0, MAKELPARAM(20, rowY(row)));
        RECT place{};
        GetWindowRect(hint, &place);
        return place.bottom - place.top;
    };
    const auto before = heightAt(1);
    SendMessageW(grid(), WM_MOUSELEAVE, 0, 0);
    state().grdMacro.setCellText(1, 1, std::string(50, 'w'));
    resize(500, 600);
    EXPECT_GT(heightAt(1), before);
    EXPECT_EQ(tip(grid(), 20, rowY(2)), "");
    SendMessageW(grid(), WM_MOUSELEAVE, 0, 0);
    EXPECT_EQ(tip(grid(), 20, rowY(1)), "");
    EXPECT_EQ(textOf(hint), "Range: 1 to 10 Default: 5");
}

}  // namespace
}  // namespace vrn::test
