#include "hosts/activex/form/Form.h"

#include "hosts/activex/form/FormWindows.h"
#include "hosts/activex/form/GridAccessible.h"
#include "hosts/activex/form/Metrics.h"
#include "hosts/activex/form/Picture.h"

namespace vrn::activex {

Form::Form(shell::VRN_MethodEditor& editor, FormSite& site, HINSTANCE module)
    : editor_(editor), site_(site), module_(module) {}

Form::~Form() { destroy(); }

void Form::create(HWND parent, const RECT& place) {
    if (window() != nullptr) {
        return;
    }
    destroy();
    const auto windows = std::make_shared<FormWindows>(editor_, site_, module_);
    try {
        windows->create(parent, place, font_);
    } catch (...) {
        windows->end();
        throw;
    }
    windows_ = windows;
}

void Form::destroy() noexcept {
    const auto windows = std::exchange(windows_, nullptr);
    if (!windows) {
        return;
    }
    try {
        editor_.state().grdMacro.commitEdit();
    } catch (...) {
        editor_.state().grdMacro.discardEdit();
    }
    windows->end();
}

HWND Form::window() const noexcept { return windows_ ? windows_->window() : nullptr; }

void Form::show(bool visible) const noexcept { ShowWindow(window(), visible ? SW_SHOWNA : SW_HIDE); }

void Form::moveTo(const RECT& place, const RECT& clip) const noexcept {
    if (window() == nullptr) {
        return;
    }
    RECT seen{};
    IntersectRect(&seen, &place, &clip);
    if (EqualRect(&seen, &place) != FALSE) {
        SetWindowRgn(window(), nullptr, TRUE);
    } else {
        OffsetRect(&seen, -place.left, -place.top);
        // The region is the window's from here on.
        SetWindowRgn(window(), CreateRectRgnIndirect(&seen), TRUE);
    }
    SetWindowPos(window(), nullptr, place.left, place.top, widthOf(place), heightOf(place),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void Form::setFont(HFONT font) noexcept {
    font_ = font;
    if (window() != nullptr) {
        windows_->setFont(font);
    }
}

bool Form::hasFocus() const noexcept { return windows_ && windows_->hasFocus(); }

void Form::takeFocus(FocusTarget target) noexcept {
    if (const auto windows = windows_) {
        windows->takeFocus(target);
    }
}

bool Form::translateKey(const MSG& message) noexcept {
    const auto windows = windows_;
    return windows && windows->translateKey(message);
}

std::wstring Form::mnemonics() const {
    auto& state = editor_.state();
    std::wstring keys;
    for (const auto* const button : {&state.cmdInsert, &state.cmdReplace, &state.cmdDelete, &state.cmdDefCycle}) {
        if (const wchar_t key = ButtonPeer::mnemonicOf(*button); key != 0) {
            keys.push_back(key);
        }
    }
    return keys;
}

void Form::pressMnemonic(wchar_t key) noexcept {
    if (const auto windows = windows_) {
        static_cast<void>(windows->pressMnemonic(key));
    }
}

void Form::draw(const Canvas& canvas) const noexcept {
    try {
        drawForm(canvas, editor_.state(), editor_.font(), font_);
    } catch (...) {
        // Short of memory: the picture stays as far as it got.
        return;
    }
}

long Form::windowsLeft() noexcept { return FormWindows::count(); }

long Form::readersLeft() noexcept { return GridAccessible::count(); }

}  // namespace vrn::activex
