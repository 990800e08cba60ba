#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

#include "activex/form/FormFixture.h"

namespace vrn::test {
namespace {

// The highest place in the process's table of drawing objects that new ones get.
int highestGdiIndex() {
    std::vector<HBRUSH> brushes;
    int highest = 0;
    for (COLORREF i = 0; i < 64; ++i) {
        brushes.push_back(CreateSolidBrush(i));
        highest = std::max(highest, static_cast<int>(LOWORD(reinterpret_cast<ULONG_PTR>(brushes.back()))));
    }
    for (const auto brush : brushes) {
        DeleteObject(brush);
    }
    return highest;
}

TEST_F(FormTest, TheFormMayGoInsideOfWhatItStarted) {
    loadSteps({"WASH(7,W2,5)", "COUNT(1)"});
    const HWND before = form.window();
    state().cmdInsert.onClick = [this] { form.destroy(); };
    SendMessageW(window(ControlId::cmdInsert), BM_CLICK, 0, 0);
    EXPECT_EQ(form.window(), nullptr);
    pump();
    EXPECT_FALSE(IsWindow(before));
    EXPECT_EQ(Form::windowsLeft(), 0);

    // In the message about a refused value, and by a choice in a list.
    form.create(parent, {0, 0, 800, 600});
    form.show(true);
    SetFocus(grid());
    type(grid(), L"99");
    box->whileShown = [this] { form.destroy(); };
    key(textEditor(), VK_RETURN);
    EXPECT_EQ(box->shown.size(), 1U);
    form.create(parent, {0, 0, 800, 600});
    state().cboSelectedMacro.onClick = [this] { form.destroy(); };
    key(window(ControlId::cboSelectedMacro), VK_DOWN);
    EXPECT_EQ(form.window(), nullptr);
    pump();
    EXPECT_EQ(Form::windowsLeft(), 0);
}

TEST_F(FormTest, AWindowStaysUntilItsOwnWorkIsDone) {
    loadSteps({"WASH(7,W2,5)", "COUNT(1)"});
    HWND const combo = window(ControlId::cboSelectedMacro);
    bool thereInside = false;
    // As in a message box, whose loop brings everything that is posted.
    state().cboSelectedMacro.onClick = [&] {
        form.destroy();
        pump();
        thereInside = IsWindow(combo) != FALSE;
    };
    key(combo, VK_DOWN);
    EXPECT_TRUE(thereInside) << "the system's code for the key still needs it";
    EXPECT_EQ(site.inside, 0);
    pump();
    EXPECT_FALSE(IsWindow(combo));
    EXPECT_EQ(Form::windowsLeft(), 0);
}

TEST_F(FormTest, AValueBeingEnteredIsLeftWhenTheFormGoes) {
    loadSteps({"WASH(7,W2,5)"});
    SetFocus(grid());
    type(grid(), L"8");
    form.destroy();
    EXPECT_EQ(state().grdMacro.cellText(1, 1), "8");
    // The models live on without windows, and new windows show them.
    loadSteps({"COUNT(4)"});
    form.create(parent, {10, 10, 300, 200});
    EXPECT_EQ(SendMessageW(window(ControlId::lstMethodMacroList), LB_GETCOUNT, 0, 0), 1);
}

TEST_F(FormTest, ManyFormsLeaveNothingBehind) {
    loadSteps({"WASH(7,W2,5)"});
    const auto cycle = [this] {
        form.destroy();
        form.create(parent, {0, 0, 640, 480});
        form.show(true);
        SetFocus(grid());
        type(grid(), L"8");
        UpdateWindow(form.window());
        pump();
    };
    cycle();
    const HANDLE process = GetCurrentProcess();
    const auto gdi = GetGuiResources(process, GR_GDIOBJECTS);
    const auto user = GetGuiResources(process, GR_USEROBJECTS);
    const int highest = highestGdiIndex();
    for (int i = 0; i < 100; ++i) {
        cycle();
    }
    EXPECT_EQ(Form::windowsLeft(), 1);
    EXPECT_LE(GetGuiResources(process, GR_GDIOBJECTS), gdi + 2);
    EXPECT_LE(GetGuiResources(process, GR_USEROBJECTS), user + 2);
    if (gdi == 0) {
        // A system that does not count: one object left behind by each form would use up 100 places of its table.
        EXPECT_LT(highestGdiIndex(), highest + 50);
    }
}

TEST_F(FormTest, APlaceMayBeCutOff) {
    form.moveTo({50, 40, 550, 440}, {50, 40, 300, 440});
    RECT window{};
    GetWindowRect(form.window(), &window);
    EXPECT_EQ(window.right - window.left, 500);
    const HRGN region = CreateRectRgn(0, 0, 0, 0);
    GetWindowRgn(form.window(), region);
    RECT seen{};
    GetRgnBox(region, &seen);
    DeleteObject(region);
    EXPECT_EQ(seen.right, 250);
}

TEST_F(FormTest, ThePictureShowsTheFormWithoutWindows) {
    loadSteps({"WASH(7,W2,5)"});
    form.destroy();
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 700, 500);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    form.draw({memory, {20, 10, 660, 490}, 96});
    std::set<COLORREF> colours;
    for (int x = 20; x < 660; x += 3) {
        for (int y = 10; y < 490; y += 3) {
            colours.insert(GetPixel(memory, x, y));
        }
    }
    EXPECT_TRUE(colours.contains(GetSysColor(COLOR_WINDOW)));
    EXPECT_TRUE(colours.contains(GetSysColor(COLOR_BTNFACE)));
    EXPECT_GT(colours.size(), 5U);
    EXPECT_EQ(GetPixel(memory, 10, 5), RGB(0, 0, 0));
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
}

}  // namespace
}  // namespace vrn::test
