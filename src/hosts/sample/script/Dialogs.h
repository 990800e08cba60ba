// Message boxes and menus that a thread has opened, met from another thread of the program like from any tool beside it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vrn::sample {

struct MessageBoxTexts {
    HWND window = nullptr;
    std::string text;
    std::string title;
    std::int32_t flags = 0;  ///< of the icon: 16 for an error, 64 for an information
};

/// Reads the message box that the thread shows. None when it shows none.
[[nodiscard]] std::optional<MessageBoxTexts> openMessageBox(DWORD thread);
/// Presses OK. Comes back when the box is no longer seen, so that it is not met twice.
void pressOk(const MessageBoxTexts& box) noexcept;

/// The window of the menu that the thread shows, null when it shows none.
[[nodiscard]] HWND openMenuWindow(DWORD thread);
/// What the menu's entries say.
[[nodiscard]] std::vector<std::string> menuCaptions(HWND menuWindow);
/// Presses the keys that choose an entry. `window` is one of the thread's windows.
void chooseInMenu(HWND window, int index);

}  // namespace vrn::sample
