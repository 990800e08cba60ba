// What changed as a list: every difference that a user would want to see, then the audit trail that the control gives.
#pragma once

#include <vector>

#include "hosts/sample/ChangeList.h"
#include "hosts/sample/Documents.h"
#include "hosts/sample/ListView.h"

namespace vrn::sample {

class AuditView : public ListView {
  public:
    void create(HWND parent, int id);
    /// `trail` is the text that the control gave.
    void showChanges(const std::vector<ChangeRow>& changes, const com::Bstr& trail) const;
    /// There is no method to compare with what was opened.
    void showNoMethod() const;
    /// Nothing is known of changes.
    void showNothing() const;

  private:
    void addTrail(const com::Bstr& trail) const;
};

}  // namespace vrn::sample
