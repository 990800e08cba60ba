#include "hosts/sample/ToolBar.h"

#include <algorithm>
#include <vector>

#include "hosts/sample/Commands.h"
#include "hosts/sample/Measures.h"
#include "hosts/sample/ToolBarIcons.h"

namespace vrn::sample {

namespace {

constexpr DWORD opaque = 0xFF000000U;
constexpr int buttonHeight = 30;  // lengths at 96 dpi
constexpr int roomAround = 22;    // icon and text together need this much beside their own widths

struct ToolButton {
    int command;
    const wchar_t* caption;
    BYTE style;
    bool endsGroup;
};

// In the order of the icons.
constexpr std::array<ToolButton, 7> toolButtons{{
    {IDM_NEW, L"New", BTNS_BUTTON, false},
    {IDM_OPEN_SET, L"Open set", BTNS_BUTTON, false},
    {IDM_OPEN_METHOD, L"Open method", BTNS_BUTTON, false},
    {IDM_SAVE, L"Save", BTNS_BUTTON, true},
    {IDM_VERIFY, L"Verify", BTNS_BUTTON, false},
    {IDM_LOCK, L"Lock", BTNS_CHECK, true},
    {IDM_COMPARE, L"Compare", BTNS_BUTTON, false},
}};
static_assert(toolButtons.size() == toolBarIcons.size());

DWORD colourOf(char character) {
    const auto* const found = std::find_if(iconColours.begin(), iconColours.end(),
                                           [=](const IconColour& colour) { return colour.character == character; });
    return found == iconColours.end() ? 0 : opaque | found->rgb;
}

// Each character becomes a square of pixels. With a channel for opacity, so that the bar shows through.
HBITMAP bitmapOf(std::string_view icon, int scale) {
    const int size = static_cast<int>(iconSize) * scale;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size;
    info.bmiHeader.biHeight = -size;  // rows from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HBITMAP const bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (bitmap != nullptr) {
        auto* pixel = static_cast<DWORD*>(bits);
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                const auto row = static_cast<std::size_t>(y / scale);
                *pixel++ = colourOf(icon[row * iconSize + static_cast<std::size_t>(x / scale)]);
            }
        }
    }
    return bitmap;
}

int captionWidth(HFONT font, const wchar_t* caption) {
    HDC const screen = GetDC(nullptr);
    HGDIOBJ const before = SelectObject(screen, font);
    SIZE size{};
    GetTextExtentPoint32W(screen, caption, lstrlenW(caption), &size);
    SelectObject(screen, before);
    ReleaseDC(nullptr, screen);
    return size.cx;
}

HIMAGELIST makeIcons() {
    constexpr int size = static_cast<int>(iconSize);
    const int scale = std::max(scaled(size) / size, 1);
    HIMAGELIST const list =
        ImageList_Create(size * scale, size * scale, ILC_COLOR32, static_cast<int>(toolBarIcons.size()), 0);
    for (const auto& icon : toolBarIcons) {
        HBITMAP const bitmap = bitmapOf(icon, scale);
        ImageList_Add(list, bitmap, nullptr);
        DeleteObject(bitmap);
    }
    return list;
}

}  // namespace

void ToolBar::create(HWND parent, int id) {
    window_ = CreateWindowExW(0, TOOLBARCLASSNAMEW, L"",
                              WS_CHILD | WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS | CCS_TOP, 0, 0, 0,
                              0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    requireWindow(window_);
    icons_ = makeIcons();
    SendMessageW(window_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(window_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(icons_));
    SendMessageW(window_, TB_SETBUTTONSIZE, 0, MAKELPARAM(scaled(buttonHeight), scaled(buttonHeight)));
    std::vector<TBBUTTON> buttons;
    for (std::size_t i = 0; i < toolButtons.size(); ++i) {
        TBBUTTON button{};
        button.iBitmap = static_cast<int>(i);
        button.idCommand = toolButtons[i].command;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = toolButtons[i].style;
        button.iString = reinterpret_cast<INT_PTR>(toolButtons[i].caption);
        buttons.push_back(button);
        if (toolButtons[i].endsGroup) {
            TBBUTTON separator{};
            separator.fsStyle = BTNS_SEP;
            buttons.push_back(separator);
        }
    }
    SendMessageW(window_, TB_ADDBUTTONSW, buttons.size(), reinterpret_cast<LPARAM>(buttons.data()));
}

void ToolBar::setFont(HFONT font) noexcept {
    SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    for (const auto& button : toolButtons) {
        TBBUTTONINFOW size{};
        size.cbSize = sizeof size;
        size.dwMask = TBIF_SIZE;
        size.cx =
            static_cast<WORD>(captionWidth(font, button.caption) + scaled(static_cast<int>(iconSize) + roomAround));
        SendMessageW(window_, TB_SETBUTTONINFOW, static_cast<WPARAM>(button.command), reinterpret_cast<LPARAM>(&size));
    }
    resize();
}

int ToolBar::height() const noexcept {
    RECT place{};
    GetWindowRect(window_, &place);
    return place.bottom - place.top;
}

void ToolBar::enable(int command, bool enabled) const noexcept {
    SendMessageW(window_, TB_ENABLEBUTTON, static_cast<WPARAM>(command), MAKELPARAM(enabled ? TRUE : FALSE, 0));
}

void ToolBar::press(int command, bool pressed) const noexcept {
    SendMessageW(window_, TB_CHECKBUTTON, static_cast<WPARAM>(command), MAKELPARAM(pressed ? TRUE : FALSE, 0));
}

}  // namespace vrn::sample
