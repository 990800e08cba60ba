#include "controls/Choices.h"

namespace vrn::controls {

bool Choices::contains(std::string_view text) const {
    if (known_.empty()) {
        known_ = {items_.begin(), items_.end()};
    }
    return known_.contains(text);
}

}  // namespace vrn::controls
