// The menu of values as a popup menu of the system.
#pragma once

#include <windows.h>

#include "controls/Menu.h"
#include "hosts/activex/form/Session.h"

namespace vrn::activex {

/// Where a menu opens: below or above a row, from `x` on, or at the end of the button that was clicked.
struct MenuPlace {
    RECT row{};
    LONG x = 0;
    RECT button{};  ///< empty when none was
};

class MenuPeer final : public controls::ControlObserver {
  public:
    MenuPeer(Session& session, controls::Menu& model) noexcept : session_(session), model_(model) {}

    void follow() noexcept { model_.observe(this); }
    void letGo() noexcept { model_.observe(nullptr); }
    void controlChanged(controls::Control& control, controls::Change change) noexcept override;

    /// Shows the menu and tells the model how it ended. Returns when it is closed.
    void track(HWND owner, const MenuPlace& screen);

  private:
    Session& session_;
    controls::Menu& model_;
    bool tracking_ = false;
};

}  // namespace vrn::activex
