#include "hosts/sample/Verification.h"

#include "hosts/sample/EditorControl.h"

namespace vrn::sample {

namespace {

// A control does all its work without a window; its site then has nothing to offer.
class NoWindow final : public Container {
  public:
    [[nodiscard]] HWND frameWindow() const noexcept override { return nullptr; }
    [[nodiscard]] HWND controlParent() const noexcept override { return nullptr; }
    [[nodiscard]] RECT controlPlace() const noexcept override { return {}; }
    void activeObjectChanged(IOleInPlaceActiveObject* /*object*/) noexcept override {}
    void controlFocusChanged(bool /*inControl*/) noexcept override {}
    bool unusedKey(const MSG& /*message*/) noexcept override { return false; }
    void enableModeless(bool /*enable*/) noexcept override {}
    void showStatus(const wchar_t* /*text*/) noexcept override {}
};

}  // namespace

std::vector<MethodEditorError> errorsWhenLoaded(const DocumentSet& set, IDispatch* method) {
    std::vector<MethodEditorError> errors;
    NoWindow container;
    EditorControl control(container, [&errors](const MethodEditorError& error) { errors.push_back(error); });
    control.SetXmlDocuments(set.macros.Get(), set.objects.Get(), method, set.config.Get());
    return errors;
}

}  // namespace vrn::sample
