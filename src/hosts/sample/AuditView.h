// The audit trail as a list: what changed, and what it is now.
#pragma once

#include "hosts/sample/Documents.h"
#include "hosts/sample/ListView.h"

namespace vrn::sample {

class AuditView : public ListView {
  public:
    void create(HWND parent, int id);
    /// `trail` is the text that the control gave.
    void showTrail(const com::Bstr& trail) const;
    /// Nothing is known of changes.
    void showNothing() const;
};

}  // namespace vrn::sample
