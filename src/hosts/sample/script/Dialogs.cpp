#include "hosts/sample/script/Dialogs.h"

#include <array>
#include <string_view>

#include "hosts/sample/script/UserInput.h"
#include "hosts/sample/script/WindowSearch.h"
#include "text/windows/Wide.h"

namespace vrn::sample {

namespace {

constexpr const wchar_t* dialogClass = L"#32770";
constexpr const wchar_t* menuClass = L"#32768";
constexpr int messageTextId = 0xFFFF;
constexpr int patience = 50;            // milliseconds
constexpr UINT getMenuHandle = 0x01E1;  // MN_GETHMENU, which headers of newer systems alone declare

bool isOfClass(HWND window, const wchar_t* wanted) {
    std::array<wchar_t, 32> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return std::wstring_view(name.data()) == wanted;
}

HWND visibleWindow(DWORD thread, const wchar_t* windowClass) {
    return findInThread(
        thread, [&](HWND window) { return IsWindowVisible(window) != FALSE && isOfClass(window, windowClass); });
}

std::int32_t flagsOf(HICON icon) {
    if (icon == LoadIconW(nullptr, IDI_ERROR)) {
        return MB_ICONERROR;
    }
    return icon == LoadIconW(nullptr, IDI_INFORMATION) ? MB_ICONINFORMATION : 0;
}

std::int32_t shownFlags(HWND box) {
    HWND const icon = findBelow(box, [](HWND child) {
        return isOfClass(child, L"Static") && (GetWindowLongW(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
    });
    return icon == nullptr ? 0 : flagsOf(reinterpret_cast<HICON>(SendMessageW(icon, STM_GETICON, 0, 0)));
}

// A box that is seen may still be about to get its icon.
std::int32_t flagsOfBox(HWND box) {
    std::int32_t flags = shownFlags(box);
    for (int look = 0; flags == 0 && look < patience; ++look) {
        Sleep(1);
        flags = shownFlags(box);
    }
    return flags;
}

}  // namespace

std::optional<MessageBoxTexts> openMessageBox(DWORD thread) {
    HWND const box = visibleWindow(thread, dialogClass);
    HWND const text = box == nullptr ? nullptr : GetDlgItem(box, messageTextId);
    if (text == nullptr || !isOfClass(box, dialogClass)) {
        return std::nullopt;
    }
    return MessageBoxTexts{box, textOf(text), textOf(box), flagsOfBox(box)};
}

void pressOk(const MessageBoxTexts& box) noexcept { SendMessageW(box.window, WM_COMMAND, IDOK, 0); }

HWND openMenuWindow(DWORD thread) { return visibleWindow(thread, menuClass); }

std::vector<std::string> menuCaptions(HWND menuWindow) {
    auto* const menu = reinterpret_cast<HMENU>(SendMessageW(menuWindow, getMenuHandle, 0, 0));
    std::vector<std::string> captions;
    const int count = GetMenuItemCount(menu);
    for (int i = 0; i < count; ++i) {
        const auto position = static_cast<UINT>(i);
        std::wstring text(static_cast<std::size_t>(GetMenuStringW(menu, position, nullptr, 0, MF_BYPOSITION)) + 1,
                          L'\0');
        text.resize(static_cast<std::size_t>(
            GetMenuStringW(menu, position, text.data(), static_cast<int>(text.size()), MF_BYPOSITION)));
        // "&&" is one "&" to the reader.
        std::wstring shown;
        for (std::size_t at = 0; at < text.size(); ++at) {
            at += text[at] == L'&' && at + 1 < text.size() ? 1 : 0;
            shown.push_back(text[at]);
        }
        captions.push_back(text::fromWide(shown));
    }
    return captions;
}

void chooseInMenu(HWND window, int index) {
    PostMessageW(window, WM_KEYDOWN, VK_HOME, 0);
    for (int i = 0; i < index; ++i) {
        PostMessageW(window, WM_KEYDOWN, VK_DOWN, 0);
    }
    PostMessageW(window, WM_KEYDOWN, VK_RETURN, 0);
}

}  // namespace vrn::sample
