// The method editor as a host meets it: public members, the one event, and the child controls that the user works.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "method/EditorState.h"
#include "services/Services.h"
#include "shell/modMethod.h"

namespace vrn::shell {

/// One editor. Everything runs on the thread that made it; events are raised synchronously, before the failing member returns.
/// Members report their failures through the event and return normally with their default result, but where noted: there the
/// failure comes as `errors::Error`.
class VRN_MethodEditor {
  public:
    explicit VRN_MethodEditor(services::Services services = services::embeddedServices());
    ~VRN_MethodEditor();
    VRN_MethodEditor(const VRN_MethodEditor&) = delete;
    VRN_MethodEditor& operator=(const VRN_MethodEditor&) = delete;

    /// Repaints frames, text boxes and the grid.
    void refreshControls() noexcept;

    /// Takes the four documents over and loads the method. Each argument is a node's serialised XML text (UTF-8); an empty one
    /// stands for a node without children. Parse errors are shown to the user and disable the method.
    void SetXmlDocuments(std::string_view domMacros, std::string_view domlatestKex, std::string_view domMethod,
                         std::string_view domConfig) noexcept;

    /// The edited method as a new signed document, or none when the user's input is refused or the sequence is empty.
    [[nodiscard]] std::optional<xml::Document> GetMethodXml() noexcept;

    /// Whether the method as it would now be written differs from the baseline; recomputed on every read. Failures throw.
    [[nodiscard]] bool MethodIsChanged();
    /// Stores the value as changed flag and as "the baseline follows `GetMethodXml`".
    void MethodIsChanged(bool value) noexcept;

    /// Makes the whole method read-only or editable. Failures throw.
    void DisableMethod(bool value);
    /// Makes the description read-only or editable. Failures throw.
    void DisableDescription(bool value);
    /// Makes the syringe read-only or editable. Failures throw, with a chained source.
    void DisableSyringe(bool value);

    /// The audit trail document as XML text, "" when it could not be produced.
    [[nodiscard]] std::string AuditTrail() noexcept;

    /// Connects the host's handler of the event.
    void onMethodEditorError(errors::MethodEditorErrorEvent::Handler handler);

    /// The font of grid and sequence list.
    [[nodiscard]] const FontRule& font() const noexcept { return font_; }

    /// All working data and the child controls: for native peers, the scripted host and tests.
    [[nodiscard]] method::EditorState& state() noexcept { return *state_; }
    [[nodiscard]] const method::EditorState& state() const noexcept { return *state_; }

  private:
    void UserControl_Initialize() noexcept;
    void wireControls();
    void wireGrid();

    std::unique_ptr<method::EditorState> state_;
    FontRule font_{};
};

}  // namespace vrn::shell
