// Message boxes of the engine inside a container.
#pragma once

#include <memory>

#include "errors/modMsgBox.h"
#include "hosts/activex/control/Control.h"

namespace vrn::activex {

/// The system's message boxes, owned by the container's window, which they disable while they are open. The container's other
/// modeless dialogs are its own to disable.
class MessageBox final : public errors::MessageBoxService {
  public:
    explicit MessageBox(Control& control);
    std::int32_t MessageBoxExA(std::intptr_t hWnd, const std::string& text, const std::string& caption,
                               std::int32_t flags) override;
    errors::ErrorState lastError() override;
    void fallback(const std::string& text, const std::string& caption, std::int32_t style) override;

  private:
    Control& control_;
    std::shared_ptr<errors::MessageBoxService> system_;
};

}  // namespace vrn::activex
