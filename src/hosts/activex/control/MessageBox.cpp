#include "hosts/activex/control/MessageBox.h"

#include "hosts/activex/control/InPlace.h"
#include "hosts/activex/control/OleObject.h"
#include "services/windows/SystemServices.h"

namespace vrn::activex {

namespace {

class Modal {
  public:
    explicit Modal(Control& control) : frame_(control.inPlace().frame()) { enable(FALSE); }
    ~Modal() { enable(TRUE); }
    Modal(const Modal&) = delete;
    Modal& operator=(const Modal&) = delete;

  private:
    void enable(BOOL modeless) const {
        if (frame_ != nullptr) {
            frame_->EnableModeless(modeless);
        }
    }

    // A copy: the box dispatches the container's messages as well, and it may close the control while it is open.
    const com::ComPtr<IOleInPlaceFrame> frame_;
};

// The container's window that the user works in: where the control is shown or, while it is not, where its site says that it would
// be. Null for a control without a container. A window that is only there for messages cannot own another.
HWND ownerFor(Control& control) {
    HWND window = control.form().window();
    if (window == nullptr) {
        if (const auto site = control.ole().siteAs<IOleInPlaceSite>(); site != nullptr) {
            if (FAILED(site->GetWindow(&window))) {
                window = nullptr;
            }
        }
    }
    HWND const top = GetAncestor(window, GA_ROOT);
    return top != nullptr && GetAncestor(top, GA_PARENT) == GetDesktopWindow() ? top : nullptr;
}

}  // namespace

MessageBox::MessageBox(Control& control)
    : control_(control),
      system_(services::systemMessageBox([this] { return reinterpret_cast<std::intptr_t>(ownerFor(control_)); })) {}

std::int32_t MessageBox::MessageBoxExA(std::intptr_t hWnd, const std::string& text, const std::string& caption,
                                       std::int32_t flags) {
    const Modal modal(control_);
    return system_->MessageBoxExA(hWnd, text, caption, flags);
}

errors::ErrorState MessageBox::lastError() { return system_->lastError(); }

void MessageBox::fallback(const std::string& text, const std::string& caption, std::int32_t style) {
    const Modal modal(control_);
    system_->fallback(text, caption, style);
}

}  // namespace vrn::activex
