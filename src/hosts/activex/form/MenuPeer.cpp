#include "hosts/activex/form/MenuPeer.h"

#include <algorithm>
#include <string>

#include "hosts/activex/form/Owners.h"
#include "text/windows/Wide.h"

namespace vrn::activex {

namespace {

// A menu takes "&" for a mnemonic and a tab for the begin of a shortcut.
std::wstring menuText(const std::string& caption) {
    std::wstring text;
    for (const wchar_t c : text::toWide(caption)) {
        text.push_back(c == L'\t' ? L' ' : c);
        if (c == L'&') {
            text.push_back(c);
        }
    }
    return text;
}

// A little more than what an entry takes.
int mostHeight(int entries) noexcept { return (entries + 1) * (GetSystemMetrics(SM_CYMENU) + 4); }

struct Opening {
    int x;
    UINT side;
};

// The second click of a double click on the button must not be one in the menu. It is none where the menu finds room below or
// above the row; a longer one opens aside of the button, which stays free then.
Opening openingAt(const MenuPlace& place, int entries) noexcept {
    if (IsRectEmpty(&place.button) != FALSE) {
        return {place.x, TPM_LEFTALIGN};
    }
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromRect(&place.button, MONITOR_DEFAULTTONEAREST), &monitor);
    const LONG room = std::max(monitor.rcWork.bottom - place.row.bottom, place.row.top - monitor.rcWork.top);
    const bool fits = mostHeight(entries) <= room;
    return {fits ? place.button.right : place.button.left - GetSystemMetrics(SM_CXDOUBLECLK), TPM_RIGHTALIGN};
}

}  // namespace

void MenuPeer::controlChanged(controls::Control& /*control*/, controls::Change change) noexcept {
    if (change == controls::Change::Popup) {
        session_.menuWanted();
    }
}

void MenuPeer::track(HWND owner, const MenuPlace& screen) {
    if (!model_.shown() || tracking_) {
        return;
    }
    const UniqueMenu menu(CreatePopupMenu());
    const auto captions = model_.captions();
    for (std::size_t i = 0; i < captions.size(); ++i) {
        AppendMenuW(menu.get(), MF_STRING, i + 1, menuText(captions[i]).c_str());
    }
    tracking_ = true;
    const auto opening = openingAt(screen, static_cast<int>(captions.size()));
    TPMPARAMS besides{sizeof besides, screen.row};
    const int command = TrackPopupMenuEx(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_VERTICAL | opening.side,
                                         opening.x, screen.row.bottom, owner, &besides);
    tracking_ = false;
    if (!session_.open()) {
        return;
    }
    // The host may have loaded another method while the menu was open: its entries mean nothing then.
    if (command > 0 && session_.userMayAct() && model_.captions() == captions) {
        model_.userChoose(command - 1);
    } else {
        model_.close();
    }
}

}  // namespace vrn::activex
