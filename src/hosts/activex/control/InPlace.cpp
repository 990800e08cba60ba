#include "hosts/activex/control/InPlace.h"

#include "hosts/activex/control/Ambients.h"
#include "hosts/activex/control/OleObject.h"
#include "hosts/activex/control/View.h"

namespace vrn::activex {

namespace {

bool isPressed(int key) { return GetKeyState(key) < 0; }

// Where the focus goes when the container activates the control: by TAB at the end from which the user comes.
Form::FocusTarget targetOf(const MSG* message) {
    const bool byTab = message != nullptr && message->message == WM_KEYDOWN && message->wParam == VK_TAB;
    if (!byTab) {
        return Form::FocusTarget::Previous;
    }
    return isPressed(VK_SHIFT) ? Form::FocusTarget::Last : Form::FocusTarget::First;
}

DWORD modifiersOf(const MSG& message) {
    constexpr DWORD shift = 1;
    constexpr DWORD control = 2;
    constexpr DWORD alt = 4;
    const bool withAlt = message.message == WM_SYSKEYDOWN || message.message == WM_SYSKEYUP;
    return (isPressed(VK_SHIFT) ? shift : 0U) | (isPressed(VK_CONTROL) ? control : 0U) | (withAlt ? alt : 0U);
}

// What a site that does not implement a notification answers is no refusal.
void requireNotRefused(HRESULT result) {
    if (result != E_NOTIMPL) {
        com::require(result);
    }
}

bool isKey(const MSG& message) { return message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST; }

}  // namespace

HRESULT InPlace::doVerb(const Request& request) {
    switch (request.verb) {
        case OLEIVERB_PRIMARY:
        case OLEIVERB_UIACTIVATE: {
            const HRESULT result = activate(request);
            return SUCCEEDED(result) ? activateUI(targetOf(request.message)) : result;
        }
        case OLEIVERB_SHOW:
        case OLEIVERB_OPEN:  // a window of its own is nothing that the control has
        case OLEIVERB_INPLACEACTIVATE:
            return activate(request);
        case OLEIVERB_HIDE:
            deactivateUI();
            control().form().show(false);
            return S_OK;
        case OLEIVERB_DISCARDUNDOSTATE:
            return S_OK;  // there is no undo across activations
        default:
            // An unknown verb of an object is its primary one; an unknown one of the system's cannot be guessed.
            if (request.verb < 0) {
                return E_NOTIMPL;
            }
            auto primary = request;
            primary.verb = OLEIVERB_PRIMARY;
            const HRESULT result = doVerb(primary);
            return SUCCEEDED(result) ? OLEOBJ_S_INVALIDVERB : result;
    }
}

// Whether the container has ended the activation that is under way, from within one of the calls that belong to it. One that has
// let go of the control altogether gets the calls that end it, while its site still expects them.
bool InPlace::isOver() {
    if (control().abandoned()) {
        deactivate();
    }
    return state_ == State::Inactive;
}

HRESULT InPlace::activate(const Request& request) {
    if (state_ != State::Inactive && control().form().window() == nullptr) {
        // The container has destroyed the window that they were in, without a word.
        deactivate();
    }
    if (state_ != State::Inactive) {
        control().form().show(true);
        return S_OK;
    }
    const com::ComPtr<IOleClientSite> clientSite(request.site);
    com::ComPtr<IOleInPlaceSite> inPlaceSite;
    if (clientSite == nullptr || FAILED(clientSite.As(&inPlaceSite))) {
        fail(E_FAIL, "The container has no place for windows.");
    }
    if (inPlaceSite->CanInPlaceActivate() != S_OK) {
        fail(E_FAIL, "The container does not let the control activate in place.");
    }
    com::ComPtr<IOleInPlaceSiteEx> extended;
    inPlaceSite.As(&extended);
    if (control().abandoned()) {
        fail(E_ABORT, "The container has let go of the control while it was asked.");
    }
    if (state_ != State::Inactive) {
        return S_OK;  // the container has asked for it again in its answer, and got it
    }
    // Set before the container hears of it: what it does in answer may come back here.
    site_ = inPlaceSite;
    state_ = State::Active;
    try {
        BOOL noRedraw = FALSE;
        requireNotRefused(extended != nullptr ? extended->OnInPlaceActivateEx(&noRedraw, 0)
                                              : inPlaceSite->OnInPlaceActivate());
        if (!isOver()) {
            createWindows(request);
        }
    } catch (...) {
        if (state_ != State::Inactive) {
            forget();
            inPlaceSite->OnInPlaceDeactivate();
        }
        throw;
    }
    if (!isOver()) {
        clientSite->ShowObject();
    }
    static_cast<void>(isOver());
    return S_OK;
}

void InPlace::createWindows(const Request& request) {
    const auto site = site_;
    HWND parent = nullptr;
    RECT place{};
    RECT clip{};
    OLEINPLACEFRAMEINFO frameInfo{};
    frameInfo.cb = sizeof(frameInfo);
    com::ComPtr<IOleInPlaceFrame> frame;
    com::ComPtr<IOleInPlaceUIWindow> document;
    // A site that does not know them leaves them to the request.
    if (const HRESULT result = site->GetWindow(&parent); FAILED(result) || parent == nullptr) {
        parent = request.parent;
        if (parent == nullptr) {
            fail(FAILED(result) ? result : E_FAIL, "The container has no window for the control.");
        }
    }
    if (isOver()) {
        return;
    }
    if (const HRESULT result = site->GetWindowContext(&frame, &document, &place, &clip, &frameInfo); FAILED(result)) {
        if (request.place == nullptr) {
            fail(result, "The container has no place for the control.");
        }
        frame.Reset();
        document.Reset();
        place = clip = *request.place;
    }
    if (isOver()) {
        return;
    }
    frame_ = frame;
    document_ = document;
    auto& form = control().form();
    form.create(parent, place);
    form.moveTo(place, clip);
    form.show(true);
}

HRESULT InPlace::activateUI(Form::FocusTarget target) {
    if (state_ == State::Inactive) {
        return OLE_E_NOT_INPLACEACTIVE;
    }
    if (state_ == State::UIActive || !control().ambients().userMode()) {
        if (state_ == State::UIActive && (target != Form::FocusTarget::Previous || !control().form().hasFocus())) {
            control().form().takeFocus(target);
        }
        return S_OK;
    }
    const auto site = site_;
    com::ComPtr<IOleInPlaceSiteEx> extended;
    if (SUCCEEDED(site.As(&extended)) && extended->RequestUIActivate() == S_FALSE) {
        // Refused. The container has undone what it began for the activation and wants no call for its end.
        return S_OK;
    }
    if (isOver() || state_ != State::Active) {
        return S_OK;
    }
    state_ = State::UIActive;
    const HRESULT result = site->OnUIActivate();
    if (FAILED(result) && result != E_NOTIMPL) {
        if (state_ == State::UIActive) {
            state_ = State::Active;
        }
        return result;
    }
    if (!isOver() && state_ == State::UIActive &&
        (target != Form::FocusTarget::Previous || !control().form().hasFocus())) {
        control().form().takeFocus(target);
    }
    if (!isOver() && state_ == State::UIActive) {
        offerToFrame();
    }
    static_cast<void>(isOver());
    return S_OK;
}

// Frame and document send keys and messages to the active object, and know that it brings no tool bars.
void InPlace::offerToFrame() {
    const auto frame = frame_;
    const auto document = document_;
    if (frame != nullptr) {
        frame->SetActiveObject(this, nullptr);
        frame->SetBorderSpace(nullptr);
    }
    if (document != nullptr) {
        document->SetActiveObject(this, nullptr);
        document->SetBorderSpace(nullptr);
    }
}

void InPlace::deactivateUI() {
    if (state_ != State::UIActive) {
        return;
    }
    state_ = State::Active;
    const auto site = site_;
    const auto frame = frame_;
    const auto document = document_;
    if (document != nullptr) {
        document->SetActiveObject(nullptr, nullptr);
    }
    if (frame != nullptr) {
        frame->SetActiveObject(nullptr, nullptr);
    }
    site->OnUIDeactivate(FALSE);
    static_cast<void>(isOver());
}

void InPlace::deactivate() {
    deactivateUI();
    if (state_ == State::Inactive) {
        return;
    }
    const auto site = site_;
    forget();
    site->OnInPlaceDeactivate();
    control().view().changed();
}

void InPlace::forget() noexcept {
    state_ = State::Inactive;
    control().form().destroy();
    site_.Reset();
    frame_.Reset();
    document_.Reset();
}

void InPlace::focusChanged(bool inForm) noexcept {
    if (state_ == State::Inactive) {
        return;
    }
    if (inForm && control().ambients().userMode()) {
        (void)control().call(IID_IOleInPlaceObject, [&] { return activateUI(Form::FocusTarget::Previous); });
    }
    if (const auto site = control().ole().siteAs<IOleControlSite>(); site != nullptr) {
        site->OnFocus(inForm ? TRUE : FALSE);
    }
}

void InPlace::userActs() noexcept {
    const bool shown = IsWindowVisible(control().form().window()) != FALSE;
    if (state_ == State::Active && shown && !control().uiDead()) {
        (void)control().call(IID_IOleInPlaceObject, [&] { return activateUI(Form::FocusTarget::Previous); });
    }
}

void InPlace::pressMnemonic(wchar_t key) {
    if (state_ == State::Inactive) {
        return;
    }
    (void)activateUI(Form::FocusTarget::Previous);
    if (state_ != State::Inactive) {
        control().form().pressMnemonic(key);
    }
}

void InPlace::followUserMode() {
    if (!control().ambients().userMode()) {
        deactivateUI();
    }
}

HRESULT InPlace::GetWindow(HWND* window) {
    return control().call(IID_IOleWindow, [&] {
        requirePointer(window, "window");
        *window = control().form().window();
        if (*window == nullptr) {
            fail(E_FAIL, "The control has no window while it is not active.");
        }
        return S_OK;
    });
}

HRESULT InPlace::ContextSensitiveHelp(BOOL /*enter*/) { return E_NOTIMPL; }

HRESULT InPlace::InPlaceDeactivate() {
    return control().call(IID_IOleInPlaceObject, [&] {
        deactivate();
        return S_OK;
    });
}

HRESULT InPlace::UIDeactivate() {
    return control().call(IID_IOleInPlaceObject, [&] {
        deactivateUI();
        return S_OK;
    });
}

HRESULT InPlace::SetObjectRects(LPCRECT place, LPCRECT clip) {
    return control().call(IID_IOleInPlaceObject, [&] {
        requirePointer(place, "place");
        control().form().moveTo(*place, clip != nullptr ? *clip : *place);
        return S_OK;
    });
}

HRESULT InPlace::ReactivateAndUndo() { return INPLACE_E_NOTUNDOABLE; }

HRESULT InPlace::TranslateAccelerator(MSG* message) {
    return control().call(IID_IOleInPlaceActiveObject, [&] {
        requirePointer(message, "message");
        if (!isKey(*message)) {
            return S_FALSE;
        }
        if (state_ != State::Inactive && !control().uiDead() && control().form().translateKey(*message)) {
            return S_OK;
        }
        const auto site = control().ole().siteAs<IOleControlSite>();
        return site != nullptr && site->TranslateAccelerator(message, modifiersOf(*message)) == S_OK ? S_OK : S_FALSE;
    });
}

HRESULT InPlace::OnFrameWindowActivate(BOOL /*active*/) {
    return control().call(IID_IOleInPlaceActiveObject, [] { return S_OK; });
}

HRESULT InPlace::OnDocWindowActivate(BOOL /*active*/) {
    return control().call(IID_IOleInPlaceActiveObject, [] { return S_OK; });
}

HRESULT InPlace::ResizeBorder(LPCRECT /*border*/, IOleInPlaceUIWindow* /*window*/, BOOL /*isFrame*/) {
    return control().call(IID_IOleInPlaceActiveObject, [] { return S_OK; });
}

HRESULT InPlace::EnableModeless(BOOL /*enable*/) {
    // The control's own dialogs are all modal.
    return control().call(IID_IOleInPlaceActiveObject, [] { return S_OK; });
}

}  // namespace vrn::activex
