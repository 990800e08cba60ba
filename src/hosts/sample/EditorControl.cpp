#include "hosts/sample/EditorControl.h"

#include <array>

#include "errors/Error.h"

namespace vrn::sample {

namespace {

constexpr const wchar_t* programId = L"vrnMethodEditor.VRN_MethodEditor";

VARIANT_BOOL toVariantBool(bool value) { return value ? VARIANT_TRUE : VARIANT_FALSE; }

com::ComPtr<IVRN_MethodEditor> createEditor() {
    CLSID id{};
    com::ComPtr<IVRN_MethodEditor> editor;
    HRESULT result = CLSIDFromProgID(programId, &id);
    if (SUCCEEDED(result)) {
        result = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IVRN_MethodEditor, &editor);
    }
    if (FAILED(result)) {
        throw errors::Error(
            result,
            "The method editor cannot be created. Its file vrnMthdA.ocx must be registered, or stand with "
            "vrnMethodEditor.manifest in the folder of this program.");
    }
    return editor;
}

}  // namespace

// snippet: life
EditorControl::EditorControl(Container& container, ErrorHandler onError)
    : container_(container), editor_(createEditor()) {
    com::require(editor_.As(&object_));
    site_.Attach(new Site(container));
    // Some controls want to know their site before anything else, to read the ambient properties; the others do not mind.
    com::require(object_->SetClientSite(site_.Get()));
    com::ComPtr<IPersistStreamInit> state;
    if (SUCCEEDED(editor_.As(&state))) {
        com::require(state->InitNew());
    }
    events_ = std::make_unique<EventConnection>(editor_.Get(), std::move(onError));
}

EditorControl::~EditorControl() {
    // The reverse of the way in: windows, events, site. The control may live on while somebody else holds a reference.
    if (inPlace_ != nullptr) {
        inPlace_->InPlaceDeactivate();
    }
    events_.reset();
    object_->Close(OLECLOSE_NOSAVE);
    object_->SetClientSite(nullptr);
    site_->detach();
}

void EditorControl::show() {
    const RECT place = container_.controlPlace();
    HWND const parent = container_.controlParent();
    require(object_->DoVerb(OLEIVERB_SHOW, nullptr, site_.Get(), 0, parent, &place));
    com::require(editor_.As(&inPlace_));
    moveTo(place);
}

void EditorControl::moveTo(const RECT& place) noexcept {
    if (inPlace_ != nullptr) {
        inPlace_->SetObjectRects(&place, &place);
    }
}
// end of snippet

// snippet: appearance
// The system tells its news to the windows of programs; a control's window inside them hears what its container hands on. The
// font is the container's affair: the control asks for it anew when it learns that it changed.
void EditorControl::appearanceChanged(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_SETTINGCHANGE) {
        com::ComPtr<IOleControl> control;
        site_->renewFont();
        if (SUCCEEDED(editor_.As(&control))) {
            control->OnAmbientPropertyChange(DISPID_AMBIENT_FONT);
        }
    }
    SendMessageW(window(), message, wParam, lParam);
}
// end of snippet

HWND EditorControl::window() const noexcept {
    HWND window = nullptr;
    return inPlace_ != nullptr && SUCCEEDED(inPlace_->GetWindow(&window)) ? window : nullptr;
}

void EditorControl::takeFocus(MSG* message) noexcept {
    const RECT place = container_.controlPlace();
    object_->DoVerb(OLEIVERB_UIACTIVATE, message, site_.Get(), 0, container_.controlParent(), &place);
}

bool EditorControl::pressMnemonic(MSG& message) noexcept {
    com::ComPtr<IOleControl> control;
    CONTROLINFO info{};
    info.cb = sizeof info;
    if (FAILED(editor_.As(&control)) || FAILED(control->GetControlInfo(&info))) {
        return false;
    }
    std::array<ACCEL, 64> keys{};
    const int count = CopyAcceleratorTableW(info.hAccel, keys.data(), static_cast<int>(keys.size()));
    for (int i = 0; i < count; ++i) {
        const auto& key = keys[static_cast<std::size_t>(i)];
        const bool withAlt = (key.fVirt & FALT) != 0 && message.message == WM_SYSKEYDOWN;
        if (withAlt && key.key == message.wParam) {
            return SUCCEEDED(control->OnMnemonic(&message));
        }
    }
    return false;
}

void EditorControl::SetXmlDocuments(IDispatch* macros, IDispatch* latestKex, IDispatch* method, IDispatch* config) {
    require(editor_->SetXmlDocuments(macros, latestKex, method, config));
}

com::ComPtr<IDispatch> EditorControl::GetMethodXml() {
    com::ComPtr<IDispatch> method;
    require(editor_->GetMethodXml(&method));
    return method;
}

bool EditorControl::MethodIsChanged() {
    VARIANT_BOOL changed = VARIANT_FALSE;
    require(editor_->get_MethodIsChanged(&changed));
    return changed != VARIANT_FALSE;
}

void EditorControl::MethodIsChanged(bool changed) { require(editor_->put_MethodIsChanged(toVariantBool(changed))); }
void EditorControl::DisableMethod(bool disable) { require(editor_->put_DisableMethod(toVariantBool(disable))); }
void EditorControl::DisableDescription(bool disable) {
    require(editor_->put_DisableDescription(toVariantBool(disable)));
}
void EditorControl::DisableSyringe(bool disable) { require(editor_->put_DisableSyringe(toVariantBool(disable))); }

com::Bstr EditorControl::AuditTrail() {
    com::Bstr trail;
    require(editor_->get_AuditTrail(trail.put()));
    return trail;
}

void EditorControl::refreshControls() { require(editor_->refreshControls()); }

void EditorControl::require(HRESULT result) const {
    if (FAILED(result)) {
        com::throwFailure(result, editor_.Get(), &IID_IVRN_MethodEditor);
    }
}

}  // namespace vrn::sample
