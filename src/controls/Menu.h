// A popup menu: shown with captions, answered by one of them or closed.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "controls/Control.h"

namespace vrn::controls {

class Menu final : public Control {
  public:
    explicit Menu(std::string name) : Control(ControlKind::Menu, std::move(name), nullptr) {}

    std::function<void(int index)> onChoose;

    [[nodiscard]] const std::vector<std::string>& captions() const noexcept { return captions_; }
    [[nodiscard]] bool shown() const noexcept { return shown_; }
    /// Shows the menu with these entries; without any it is not shown.
    void popUp(std::vector<std::string> captions);
    void close();
    /// The user chooses an entry, which closes the menu.
    UserRequest userChoose(int index);

  private:
    std::vector<std::string> captions_;
    bool shown_ = false;
};

}  // namespace vrn::controls
