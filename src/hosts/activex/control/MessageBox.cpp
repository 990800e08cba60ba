#include "hosts/activex/control/MessageBox.h"

#include "hosts/activex/control/InPlace.h"
#include "services/windows/SystemServices.h"

namespace vrn::activex {

namespace {

class Modal {
  public:
    explicit Modal(Control& control) : hold_(control), frame_(control.inPlace().frame()) { enable(FALSE); }
    ~Modal() { enable(TRUE); }
    Modal(const Modal&) = delete;
    Modal& operator=(const Modal&) = delete;

  private:
    void enable(BOOL modeless) const {
        if (frame_ != nullptr) {
            frame_->EnableModeless(modeless);
        }
    }

    // Its messages are dispatched by the box as well: a container may close the control meanwhile.
    const Control::Hold hold_;
    const com::ComPtr<IOleInPlaceFrame> frame_;
};

}  // namespace

MessageBox::MessageBox(Control& control) : control_(control), system_(services::systemMessageBox()) {}

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
