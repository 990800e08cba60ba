// The method editor as this program uses it: made by its name, put into a window, its members called through their interface.
#pragma once

#include <memory>
#include <string>

#include "hosts/sample/EventSink.h"
#include "hosts/sample/Site.h"
#include "vrnMethodEditor.h"

namespace vrn::sample {

/// One control. A member that fails throws `errors::Error` with the control's own description.
class EditorControl {
  public:
    /// Makes the control, without a window yet. It is found by its ProgID: in the registry, or through the program's manifest
    /// in the file beside the program.
    EditorControl(Container& container, ErrorHandler onError);
    ~EditorControl();
    EditorControl(const EditorControl&) = delete;
    EditorControl& operator=(const EditorControl&) = delete;

    /// Shows the control at the place that the container gives.
    void show();
    /// The place has changed.
    void moveTo(const RECT& place) noexcept;
    /// A message about settings, colours, fonts or themes has come to the program's window.
    void appearanceChanged(UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    /// The control's outermost window, null while it is not shown.
    [[nodiscard]] HWND window() const noexcept;
    /// Gives the control the focus. For a TAB, `message` is the key, which tells the end that the user comes from.
    void takeFocus(MSG* message = nullptr) noexcept;
    /// Offers a key with Alt that was pressed outside of the control: it may be the mnemonic of one of its buttons.
    bool pressMnemonic(MSG& message) noexcept;

    void SetXmlDocuments(IDispatch* macros, IDispatch* latestKex, IDispatch* method, IDispatch* config);
    /// None when the control refuses a value, which it has told the user, or when the sequence is empty.
    [[nodiscard]] com::ComPtr<IDispatch> GetMethodXml();
    [[nodiscard]] bool MethodIsChanged();
    void MethodIsChanged(bool changed);
    void DisableMethod(bool disable);
    void DisableDescription(bool disable);
    void DisableSyringe(bool disable);
    [[nodiscard]] com::Bstr AuditTrail();
    void refreshControls();

  private:
    void require(HRESULT result) const;

    Container& container_;
    com::ComPtr<Site> site_;
    com::ComPtr<IVRN_MethodEditor> editor_;
    com::ComPtr<IOleObject> object_;
    com::ComPtr<IOleInPlaceObject> inPlace_;
    std::unique_ptr<EventConnection> events_;
};

}  // namespace vrn::sample
