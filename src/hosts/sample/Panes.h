// Where the panes of the window are: the control, the audit trail to its right, the event log below, movable lines between.
#pragma once

#include <windows.h>

namespace vrn::sample {

enum class Splitter { None, Audit, Events };

class Panes {
  public:
    bool showAudit = true;
    bool showEvents = true;

    /// Lays the panes out in this part of the window.
    void arrange(const RECT& area) noexcept;
    /// The line at a place, to be dragged.
    [[nodiscard]] Splitter splitterAt(POINT place) const noexcept;
    /// The line has been dragged to this place.
    void drag(Splitter splitter, POINT place) noexcept;

    [[nodiscard]] const RECT& control() const noexcept { return control_; }
    [[nodiscard]] const RECT& audit() const noexcept { return audit_; }
    [[nodiscard]] const RECT& events() const noexcept { return events_; }

  private:
    RECT area_{};
    RECT control_{};
    RECT audit_{};
    RECT events_{};
    int auditWidth_ = 0;  // 0: not chosen yet
    int eventsHeight_ = 0;
};

}  // namespace vrn::sample
