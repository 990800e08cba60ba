#include "hosts/activex/control/Control.h"

#include <array>

#include "hosts/activex/control/Ambients.h"
#include "hosts/activex/control/ClassInformation.h"
#include "hosts/activex/control/Events.h"
#include "hosts/activex/control/InPlace.h"
#include "hosts/activex/control/Members.h"
#include "hosts/activex/control/MessageBox.h"
#include "hosts/activex/control/OleObject.h"
#include "hosts/activex/control/Persistence.h"
#include "hosts/activex/control/View.h"
#include "hosts/activex/services/HostServices.h"

namespace vrn::activex {

HRESULT createControl(IUnknown* outer, REFIID iid, void** object) noexcept {
    if (object == nullptr) {
        return E_POINTER;
    }
    *object = nullptr;
    if (outer != nullptr && iid != IID_IUnknown) {
        return CLASS_E_NOAGGREGATION;
    }
    try {
        auto* const control = new Control(outer);
        const HRESULT result = control->inner()->QueryInterface(iid, object);
        control->inner()->Release();
        return result;
    } catch (...) {
        return publishCurrentError(IID_IClassFactory);
    }
}

Control::Control(IUnknown* outer) : outer_(outer != nullptr ? outer : &inner_) {
    ambients_ = std::make_unique<Ambients>();
    services_ = std::make_unique<HostServices>();
    events_ = std::make_unique<Events>(*this);
    auto services = services_->forEngine();
    services.messageBox = std::make_shared<MessageBox>(*this);
    services.locale = std::make_shared<AmbientLocale>(*ambients_);
    editor_ = std::make_unique<shell::VRN_MethodEditor>(std::move(services));
    editor_->onMethodEditorError(
        [this](const errors::MethodEditorErrorArguments& arguments) { events_->raise(arguments); });
    form_ = std::make_unique<Form>(*editor_, *this, module::instance());
    members_ = std::make_unique<Members>(*this);
    serviceMembers_ = std::make_unique<ServiceMembers>(*this);
    ole_ = std::make_unique<OleObject>(*this);
    inPlace_ = std::make_unique<InPlace>(*this);
    view_ = std::make_unique<View>(*this);
    persistence_ = std::make_unique<Persistence>(*this);
    classInformation_ = std::make_unique<ClassInformation>(*this);
}

Control::~Control() {
    // The outer object of an aggregate is no more.
    outer_ = &inner_;
    // Whoever still listens has let go of the control and is not to hear of its end; windows that a container forgot
    // to deactivate go without a word to it, and a value being entered without one to the user.
    events_->disconnectAll();
    editor_->state().grdMacro.discardEdit();
    form_->destroy();
    form_.reset();
    editor_.reset();
}

IUnknown* Control::find(REFIID iid) noexcept {
    const std::array<std::pair<const IID*, IUnknown*>, 17> interfaces{{
        {&IID_IVRN_MethodEditor, members_.get()},
        {&IID_IDispatch, members_.get()},
        {&IID_IMethodEditorServices, serviceMembers_.get()},
        {&IID_IOleObject, static_cast<IOleObject*>(ole_.get())},
        {&IID_IOleControl, static_cast<IOleControl*>(ole_.get())},
        {&IID_IOleInPlaceObject, static_cast<IOleInPlaceObject*>(inPlace_.get())},
        {&IID_IOleInPlaceActiveObject, static_cast<IOleInPlaceActiveObject*>(inPlace_.get())},
        {&IID_IOleWindow, static_cast<IOleInPlaceObject*>(inPlace_.get())},
        {&IID_IViewObject, view_.get()},
        {&IID_IViewObject2, view_.get()},
        {&IID_IPersistStreamInit, static_cast<IPersistStreamInit*>(persistence_.get())},
        {&IID_IPersistPropertyBag, static_cast<IPersistPropertyBag*>(persistence_.get())},
        {&IID_IPersist, static_cast<IPersistStreamInit*>(persistence_.get())},
        {&IID_IProvideClassInfo, static_cast<IProvideClassInfo2*>(classInformation_.get())},
        {&IID_IProvideClassInfo2, static_cast<IProvideClassInfo2*>(classInformation_.get())},
        {&IID_ISupportErrorInfo, static_cast<ISupportErrorInfo*>(classInformation_.get())},
        {&IID_IConnectionPointContainer, events_.get()},
    }};
    for (const auto& [id, object] : interfaces) {
        if (*id == iid) {
            return object;
        }
    }
    return nullptr;
}

void Control::enter() noexcept {
    // Both: the outer object of an aggregate may end before its part does.
    outer_->AddRef();
    inner_.AddRef();
    ++holds_;
    if (outer_ == &inner_) {
        ++holds_;
    }
}

void Control::leave() noexcept {
    --holds_;
    if (outer_ == &inner_) {
        --holds_;
    }
    outer_->Release();
    inner_.Release();  // perhaps the last one: nothing of the control is touched after this
}

void Control::focusChanged(bool inForm) noexcept { inPlace_->focusChanged(inForm); }

void Control::userActs() noexcept { inPlace_->userActs(); }

bool Control::uiDead() const noexcept { return ambients_->uiDead() || !ambients_->userMode(); }

HRESULT Control::Inner::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    IUnknown* const found = iid == IID_IUnknown ? this : control_.find(iid);
    *object = found;
    if (found == nullptr) {
        return E_NOINTERFACE;
    }
    found->AddRef();  // of the interface's own unknown: the outer one, but for this one
    return S_OK;
}

ULONG Control::Inner::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&control_.count_)); }

ULONG Control::Inner::Release() {
    const auto left = InterlockedDecrement(&control_.count_);
    if (left == 0) {
        // What the destructor calls may take and release references; that must not end the object again.
        control_.count_ = 1;
        delete &control_;
    }
    return static_cast<ULONG>(left);
}

}  // namespace vrn::activex
