// What the control reported: one row per event.
#pragma once

#include "hosts/sample/EventSink.h"
#include "hosts/sample/ListView.h"

namespace vrn::sample {

class EventLog : public ListView {
  public:
    void create(HWND parent, int id);
    void add(const MethodEditorError& error) const;
    /// Something that the host itself did or found.
    void note(const std::wstring& what) const;
};

}  // namespace vrn::sample
