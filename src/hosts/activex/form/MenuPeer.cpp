#include "hosts/activex/form/MenuPeer.h"

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
    // Never over what was clicked: a second click there must not be one in the menu.
    TPMPARAMS besides{sizeof besides, screen.beside};
    const UINT side = screen.leftwards ? TPM_RIGHTALIGN : TPM_LEFTALIGN;
    const int command = TrackPopupMenuEx(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_VERTICAL | side, screen.x,
                                         screen.beside.bottom, owner, &besides);
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
