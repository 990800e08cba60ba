// The method being edited: the set that it belongs to, its file, and when it is saved, changed or genuine.
#pragma once

#include <string>

#include "hosts/sample/Documents.h"
#include "hosts/sample/EditorControl.h"

namespace vrn::sample {

class MethodFile {
  public:
    explicit MethodFile(EditorControl& control) : control_(control) {}

    [[nodiscard]] const DocumentSet& set() const noexcept { return set_; }
    /// Empty for a method that has no file yet.
    [[nodiscard]] const std::wstring& path() const noexcept { return path_; }
    /// What `isChanged` answered last.
    [[nodiscard]] bool knownAsChanged() const noexcept { return knownAsChanged_; }

    /// Each hands documents to the control and leaves an unchanged method. `errors::Error` when a file cannot be read; the
    /// editor is left as it was then.
    void openSet(const std::wstring& folder);
    void startNew();
    /// False when the control did not accept the method: it has raised its error event and shows an empty method.
    bool open(const std::wstring& path);

    /// Asks the control. That takes the values in the grid over into the method, so it is asked only when it matters.
    bool isChanged();
    /// False when the control gives no method: a value is refused, or the sequence is empty.
    bool save(const std::wstring& path);
    /// The method as it would be saved now; none when the control gives none. Changes nothing.
    [[nodiscard]] com::ComPtr<IDispatch> build();
    /// The method's text as it was opened or saved last; empty for a new one.
    [[nodiscard]] const std::string& reference() const noexcept { return reference_; }
    [[nodiscard]] com::Bstr auditTrail() { return control_.AuditTrail(); }

    /// An error event has come in.
    void noteError() noexcept { ++errors_; }

  private:
    void load(const DocumentSet& set, IDispatch* method);

    EditorControl& control_;
    DocumentSet set_;
    std::wstring path_;
    std::string reference_;
    int errors_ = 0;
    bool knownAsChanged_ = false;
};

}  // namespace vrn::sample
