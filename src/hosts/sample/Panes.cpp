#include "hosts/sample/Panes.h"

#include <algorithm>

#include "hosts/sample/Measures.h"

namespace vrn::sample {

namespace {

constexpr int gap = 5;  // lengths at 96 dpi
constexpr int firstAuditWidth = 300;
constexpr int firstEventsHeight = 130;
constexpr int leastPane = 80;
constexpr int leastControl = 320;

}  // namespace

void Panes::arrange(const RECT& area) noexcept {
    area_ = area;
    control_ = area;
    if (showEvents) {
        const int most = std::max<int>(area.bottom - area.top - scaled(leastControl), scaled(leastPane));
        const int height =
            std::clamp(eventsHeight_ > 0 ? eventsHeight_ : scaled(firstEventsHeight), scaled(leastPane), most);
        control_.bottom = area.bottom - height - scaled(gap);
        events_ = {area.left, area.bottom - height, area.right, area.bottom};
    }
    if (showAudit) {
        const int most = std::max<int>(area.right - area.left - scaled(leastControl), scaled(leastPane));
        const int width = std::clamp(auditWidth_ > 0 ? auditWidth_ : scaled(firstAuditWidth), scaled(leastPane), most);
        audit_ = {area.right - width, control_.top, area.right, control_.bottom};
        control_.right = audit_.left - scaled(gap);
    }
}

Splitter Panes::splitterAt(POINT place) const noexcept {
    if (showAudit && place.x >= control_.right && place.x < audit_.left && place.y < control_.bottom &&
        place.y >= control_.top) {
        return Splitter::Audit;
    }
    return showEvents && place.y >= control_.bottom && place.y < events_.top ? Splitter::Events : Splitter::None;
}

void Panes::drag(Splitter splitter, POINT place) noexcept {
    if (splitter == Splitter::Audit) {
        auditWidth_ = std::max<int>(area_.right - place.x, 1);
    } else if (splitter == Splitter::Events) {
        eventsHeight_ = std::max<int>(area_.bottom - place.y, 1);
    }
    arrange(area_);
}

}  // namespace vrn::sample
