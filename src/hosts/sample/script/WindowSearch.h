// Looks through the windows that there are at one moment. To ask for the next window after another one, as FindWindowEx does, is
// no way to do so while a program works: the other one may be ending, and the server of Wine 10 then never answers.
#pragma once

#include <windows.h>

namespace vrn::sample {

template <typename Condition>
struct WindowSearch {
    const Condition& wanted;
    HWND found = nullptr;

    static BOOL CALLBACK look(HWND window, LPARAM parameter) {
        auto& search = *reinterpret_cast<WindowSearch*>(parameter);
        if (search.wanted(window)) {
            search.found = window;
        }
        return search.found == nullptr ? TRUE : FALSE;
    }
};

/// The first window below another one, at whatever depth, that meets a condition; null when none does. The condition must not throw.
template <typename Condition>
[[nodiscard]] HWND findBelow(HWND window, const Condition& wanted) {
    WindowSearch<Condition> search{wanted};
    EnumChildWindows(window, search.look, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

/// The same for the windows of a thread that are no children.
template <typename Condition>
[[nodiscard]] HWND findInThread(DWORD thread, const Condition& wanted) {
    WindowSearch<Condition> search{wanted};
    EnumThreadWindows(thread, search.look, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

}  // namespace vrn::sample
