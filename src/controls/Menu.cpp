#include "controls/Menu.h"

#include <utility>

namespace vrn::controls {

void Menu::popUp(std::vector<std::string> captions) {
    captions_ = std::move(captions);
    shown_ = !captions_.empty();
    if (shown_) {
        changed(Change::Popup);
    }
}

void Menu::close() { shown_ = false; }

UserRequest Menu::userChoose(int index) {
    if (!shown_) {
        return UserRequest::NotUsable;
    }
    close();
    if (index < 0 || std::cmp_greater_equal(index, captions_.size())) {
        return UserRequest::NoSuchEntry;
    }
    if (onChoose) {
        onChoose(index);
    }
    return UserRequest::Done;
}

}  // namespace vrn::controls
