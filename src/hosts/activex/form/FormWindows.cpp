#include "hosts/activex/form/FormWindows.h"

// After windows.h, which it builds on.
#include <commctrl.h>

#include <algorithm>
#include <atomic>

#include "hosts/activex/form/FormMeasures.h"
#include "hosts/activex/form/Metrics.h"
#include "hosts/activex/form/Naming.h"
#include "text/windows/Wide.h"

#ifndef WM_DPICHANGED_AFTERPARENT
#define WM_DPICHANGED_AFTERPARENT 0x02E3
#endif

namespace vrn::activex {

namespace {

constexpr int dropDownHeight = 260;  // lengths at 96 dpi
std::atomic<long> sets{0};

BOOL CALLBACK handOnTo(HWND child, LPARAM parameter) noexcept {
    const auto& what = *reinterpret_cast<const MSG*>(parameter);
    SendMessageW(child, what.message, what.wParam, what.lParam);
    return TRUE;
}

}  // namespace

Window::Making RootWindow::making(HWND parent) const {
    return {WindowClasses::form, L"Method Editor", WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, parent, 0};
}

void RootWindow::paint(HDC context) {
    RECT client{};
    GetClientRect(handle(), &client);
    FillRect(context, &client, GetSysColorBrush(COLOR_BTNFACE));
}

// The system's controls keep colours and themes of their own, and hear of a change through the windows around them.
void RootWindow::handOn(UINT message, WPARAM wParam, LPARAM lParam) const noexcept {
    const MSG given{handle(), message, wParam, lParam, 0, {}};
    EnumChildWindows(handle(), handOnTo, reinterpret_cast<LPARAM>(&given));
}

LRESULT RootWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            events_.resized();
            return 0;
        case WM_SETFOCUS:
            // A container gives the focus to the form as a whole.
            events_.focusGiven();
            return 0;
        case WM_DPICHANGED_AFTERPARENT:
        case WM_SETTINGCHANGE:
        case WM_SYSCOLORCHANGE:
        case WM_THEMECHANGED:
        case WM_FONTCHANGE:
            events_.appearanceChanged();
            handOn(message, wParam, lParam);
            return 0;
        case static_cast<UINT>(Later::SettleFocus):
            events_.settleFocus();
            return 0;
        case static_cast<UINT>(Later::OpenMenu):
            events_.openMenu();
            return 0;
        case static_cast<UINT>(Later::EndNow):
            events_.endNow();
            return 0;
        default:
            return FrameWindow::onMessage(message, wParam, lParam);
    }
}

long FormWindows::count() noexcept { return sets; }

FormWindows::FormWindows(shell::VRN_MethodEditor& editor, FormSite& site, HINSTANCE module)
    : classes_(module),
      state_(editor.state()),
      rule_(editor.font()),
      site_(site),
      module_(module),
      root_(*this, *this, state_.fraMethodEditor),
      fraMethodDescription_(*this, state_.fraMethodDescription, ControlId::fraMethodDescription),
      txtMethodDescription_(*this, state_.txtMethodDescription, ControlId::txtMethodDescription),
      fraSyringe_(*this, state_.fraSyringe, ControlId::fraSyringe),
      cboSyringe_(*this, state_.cboSyringe, ControlId::cboSyringe),
      fraMacroSequence_(*this, state_.fraMacroSequence, ControlId::fraMacroSequence),
      lstMethodMacroList_(*this, state_.lstMethodMacroList, ControlId::lstMethodMacroList),
      cmdInsert_(*this, state_.cmdInsert, ControlId::cmdInsert),
      cmdReplace_(*this, state_.cmdReplace, ControlId::cmdReplace),
      cmdDelete_(*this, state_.cmdDelete, ControlId::cmdDelete),
      fraAvailableCycles_(*this, state_.fraAvailableCycles, ControlId::fraAvailableCycles),
      cboSelectedMacro_(*this, state_.cboSelectedMacro, ControlId::cboSelectedMacro),
      cmdDefCycle_(*this, state_.cmdDefCycle, ControlId::cmdDefCycle),
      fraArgument_(*this, state_.fraArgument, ControlId::fraArgument),
      grdMacro_(*this, state_.grdMacro, ControlId::grdMacro),
      lblCycleDateChanged_(*this, state_.lblCycleDateChanged, ControlId::lblCycleDateChanged),
      txtToolTip_(*this, state_.txtToolTip, ControlId::txtToolTip, grdMacro_),
      mnuUserIndex_(*this, state_.mnuUserIndex),
      peers_{&root_,
             &fraMethodDescription_,
             &txtMethodDescription_,
             &fraSyringe_,
             &cboSyringe_,
             &fraMacroSequence_,
             &lstMethodMacroList_,
             &cmdInsert_,
             &cmdReplace_,
             &cmdDelete_,
             &fraAvailableCycles_,
             &cboSelectedMacro_,
             &cmdDefCycle_,
             &fraArgument_,
             &grdMacro_,
             &txtToolTip_,
             &lblCycleDateChanged_},
      tabOrder_{&txtMethodDescription_,
                &cboSyringe_,
                &lstMethodMacroList_,
                &cmdInsert_,
                &cmdReplace_,
                &cmdDelete_,
                &cboSelectedMacro_,
                &cmdDefCycle_,
                &grdMacro_} {
    ++sets;
}

FormWindows::~FormWindows() { --sets; }

void FormWindows::create(HWND parent, const RECT& place, HFONT font) {
    containerFont_ = font;
    look_.dpi = dpiOf(parent);
    systemFont_ = messageFont(look_.dpi);
    gridFont_ = ruleFont(rule_, look_.dpi);
    look_.font = font != nullptr ? font : systemFont_.get();
    look_.gridFont = gridFont_.get();
    // With a theme in the host, this brings in the controls that are drawn with it.
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&classes);
    placing_ = true;
    // In the order of TAB, which the dialogs of some hosts take from the order of windows.
    for (auto* const peer : peers_) {
        const auto frame = frameOf(peer->controlId());
        peer->create(peer == &root_ ? parent : peers_[indexOf(frame)]->handle());
    }
    ShowWindow(root_.handle(), SW_HIDE);
    SetWindowPos(root_.handle(), nullptr, place.left, place.top, widthOf(place), heightOf(place),
                 SWP_NOZORDER | SWP_NOACTIVATE);
    // A button has a theme when the host's controls have one.
    look_.themed = GetWindowTheme(cmdInsert_.handle()) != nullptr;
    for (const auto* const peer : named()) {
        nameForAssistance(peer->handle(), windowText(GetParent(peer->handle())));
    }
    mnuUserIndex_.follow();
    placing_ = false;
    renewLook();
}

void FormWindows::end() noexcept {
    if (!open()) {
        return;
    }
    close();
    for (auto* const peer : peers_) {
        peer->letGo();
    }
    mnuUserIndex_.letGo();
    if (root_.handle() == nullptr) {
        return;
    }
    for (const auto* const peer : named()) {
        forgetName(peer->handle());
    }
    if (running() == 0) {
        DestroyWindow(root_.handle());
        return;
    }
    // A window is at work that the system's code may still need: it goes out of sight now and away when all are done.
    untilEnd_ = weak_from_this().lock();
    ShowWindow(root_.handle(), SW_HIDE);
    SetParent(root_.handle(), HWND_MESSAGE);
}

// By the message loop: a list of the system's that is no window of the form may still be at work.
void FormWindows::settled() noexcept {
    if (root_.handle() == nullptr) {
        untilEnd_.reset();
    } else if (untilEnd_) {
        root_.post(RootWindow::Later::EndNow);
    }
}

std::array<const Peer*, 4> FormWindows::named() const noexcept {
    return {&txtMethodDescription_, &cboSyringe_, &lstMethodMacroList_, &cboSelectedMacro_};
}

void FormWindows::endNow() noexcept {
    if (running() > 1) {
        return;  // a procedure's own message loop has brought it; what is asked for comes again when that is done
    }
    const auto self = std::exchange(untilEnd_, nullptr);
    DestroyWindow(root_.handle());
}

void FormWindows::setFont(HFONT font) noexcept {
    containerFont_ = font;
    try {
        renewLook();
    } catch (...) {
        look_.font = font != nullptr ? font : systemFont_.get();
    }
}

// Measures anew and tells every window.
void FormWindows::renewLook() {
    look_.dpi = dpiOf(root_.handle());
    // The former fonts go when no window has them any more: at the end.
    const auto formerSystemFont = std::exchange(systemFont_, messageFont(look_.dpi));
    const auto formerGridFont = std::exchange(gridFont_, ruleFont(rule_, look_.dpi));
    look_.themed = GetWindowTheme(cmdInsert_.handle()) != nullptr;
    look_.font = containerFont_ != nullptr ? containerFont_ : systemFont_.get();
    look_.gridFont = gridFont_.get();
    for (auto* const peer : peers_) {
        peer->lookChanged();
    }
    placed_ = false;
    placesChanged();
    RedrawWindow(root_.handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

void FormWindows::appearanceChanged() {
    if (open()) {
        renewLook();
    }
}

Layout FormWindows::places() {
    RECT client{};
    GetClientRect(root_.handle(), &client);
    const WindowContext context(root_.handle());
    auto input = measuredTexts(context.get(), {client.right, client.bottom}, look_, state_);
    input.comboHeight = cboSyringe_.closedHeight();
    input.listRowHeight = lstMethodMacroList_.rowHeight();
    input.gridRowHeight = grdMacro_.rowHeight();
    input.gridHeaderHeight = grdMacro_.headerHeight();
    return layOut(input);
}

bool FormWindows::changes(ControlId id, const Layout& layout) const noexcept {
    return !placed_ || !(layout_.of(id) == layout.of(id));
}

// The windows of one frame move together, and only those that have to.
void FormWindows::apply(const Layout& layout) const noexcept {
    for (const auto* const frame : peers_) {
        HDWP moves = BeginDeferWindowPos(static_cast<int>(controlCount));
        for (const auto* const peer : peers_) {
            const auto id = peer->controlId();
            if (peer == &root_ || peer == &txtToolTip_ || peers_[indexOf(frameOf(id))] != frame ||
                !changes(id, layout)) {
                continue;
            }
            RECT place = toRect(layout.of(id));
            if ((peer == &cboSyringe_ || peer == &cboSelectedMacro_) && !layout.of(id).empty()) {
                // The height of a drop-down list is that of its open state.
                place.bottom = place.top + scaled(dropDownHeight, look_.dpi);
            }
            if (moves != nullptr) {
                moves = DeferWindowPos(moves, peer->handle(), nullptr, place.left, place.top, widthOf(place),
                                       heightOf(place), SWP_NOZORDER | SWP_NOACTIVATE);
            }
        }
        if (moves != nullptr) {
            EndDeferWindowPos(moves);
        }
    }
}

void FormWindows::placesChanged() noexcept {
    if (!open() || placing_ || root_.handle() == nullptr) {
        return;
    }
    placing_ = true;
    try {
        const auto layout = places();
        apply(layout);
        layout_ = layout;
        placed_ = true;
    } catch (...) {
        // Short of memory: everything stays where it is until the next time.
        placed_ = false;
    }
    placing_ = false;
}

Window* FormWindows::windowOf(HWND handle) const noexcept {
    if (handle == nullptr) {
        return nullptr;
    }
    const auto found =
        std::find_if(peers_.begin(), peers_.end(), [&](const Peer* peer) { return peer->handle() == handle; });
    return found == peers_.end() ? nullptr : *found;
}

void FormWindows::menuWanted() noexcept { root_.post(RootWindow::Later::OpenMenu); }

void FormWindows::openMenu() {
    if (open()) {
        mnuUserIndex_.track(grdMacro_.handle(), grdMacro_.menuPlace());
    }
}

}  // namespace vrn::activex
