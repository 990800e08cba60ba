// Message boxes and menus that a thread has opened, met from another thread of the program like from any tool beside it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vrn::sample {

struct MessageBoxTexts {
    std::string text;
    std::string title;
    std::int32_t flags = 0;  ///< of the icon: 16 for an error, 64 for an information
};

/// Reads the message box that the thread shows, and presses OK. None when it shows none.
[[nodiscard]] std::optional<MessageBoxTexts> answerMessageBox(DWORD thread);

/// The window of the menu that the thread shows, null when it shows none.
[[nodiscard]] HWND openMenuWindow(DWORD thread);
/// What the menu's entries say.
[[nodiscard]] std::vector<std::string> menuCaptions(HWND menuWindow);
/// Presses the keys that choose an entry. `window` is one of the thread's windows.
void chooseInMenu(HWND window, int index);

}  // namespace vrn::sample
