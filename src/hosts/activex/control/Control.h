// The control as a COM object. It consists of faces, one per group of interfaces, around one editor and its form.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <ocidl.h>
#include <olectl.h>

#include <memory>
#include <utility>

#include "com/Com.h"
#include "hosts/activex/control/Errors.h"
#include "hosts/activex/form/Form.h"
#include "hosts/activex/server/Module.h"
#include "shell/VRN_MethodEditor.h"

namespace vrn::activex {

class Ambients;
class ClassInformation;
class Events;
class HostServices;
class InPlace;
class Members;
class OleObject;
class Persistence;
class ServiceMembers;
class View;

/// Makes a control and asks it for an interface. With an `outer` unknown the control becomes a part of it; only IUnknown can
/// be asked for then.
[[nodiscard]] HRESULT createControl(IUnknown* outer, REFIID iid, void** object) noexcept;

/// Belongs to the thread that made it.
///
/// Whatever the control does may call the host, by its event, its site, a service, a document, or a message box whose loop
/// dispatches the host's messages, and the host may let go of the control there. So every way in holds the whole control until
/// it is left: `call` for a call through an interface, `enter` and `leave` for a message to one of the form's windows. What runs
/// inside needs no care of its own for that.
class Control final : public FormSite {
  public:
    explicit Control(IUnknown* outer);
    ~Control() override;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    /// The unknown that the outside knows the object by: the outer one of an aggregate, or the control's own.
    [[nodiscard]] IUnknown* outer() const noexcept { return outer_; }
    /// The control's own unknown, which counts its references.
    [[nodiscard]] IUnknown* inner() noexcept { return &inner_; }

    [[nodiscard]] shell::VRN_MethodEditor& editor() noexcept { return *editor_; }
    [[nodiscard]] Form& form() noexcept { return *form_; }
    [[nodiscard]] Ambients& ambients() noexcept { return *ambients_; }
    [[nodiscard]] Events& events() noexcept { return *events_; }
    [[nodiscard]] HostServices& services() noexcept { return *services_; }
    [[nodiscard]] InPlace& inPlace() noexcept { return *inPlace_; }
    [[nodiscard]] View& view() noexcept { return *view_; }
    [[nodiscard]] OleObject& ole() noexcept { return *ole_; }

    /// The body of an interface's method: refused on a foreign thread, guarded against the control being released from
    /// within, its exceptions turned into an HRESULT with error information. `body` answers an HRESULT.
    template <typename Body>
    HRESULT call(REFIID iid, Body&& body) noexcept;

    /// Whether nobody outside holds the control any more: it ends as soon as what is on the stack is left. (Of a part of an
    /// aggregate only the whole knows.)
    [[nodiscard]] bool abandoned() const noexcept { return count_ == holds_; }

    // FormSite
    void enter() noexcept override;
    void leave() noexcept override;
    void focusChanged(bool inForm) noexcept override;
    void userActs() noexcept override;
    [[nodiscard]] bool uiDead() const noexcept override;

  private:
    // The unknown that does not delegate.
    class Inner final : public IUnknown {
      public:
        explicit Inner(Control& control) : control_(control) {}
        virtual ~Inner() = default;
        Inner(const Inner&) = delete;
        Inner& operator=(const Inner&) = delete;
        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
        ULONG STDMETHODCALLTYPE AddRef() override;
        ULONG STDMETHODCALLTYPE Release() override;

      private:
        Control& control_;
    };
    class Call;

    [[nodiscard]] IUnknown* find(REFIID iid) noexcept;

    module::Reference module_;
    LONG count_ = 1;
    LONG holds_ = 0;  // how many of these are the control's own, of those who are inside
    const DWORD thread_ = GetCurrentThreadId();
    Inner inner_{*this};
    IUnknown* outer_;

    // In the order in which they need each other.
    std::unique_ptr<Ambients> ambients_;
    std::unique_ptr<HostServices> services_;
    std::unique_ptr<Events> events_;
    std::unique_ptr<shell::VRN_MethodEditor> editor_;
    std::unique_ptr<Form> form_;
    std::unique_ptr<Members> members_;
    std::unique_ptr<ServiceMembers> serviceMembers_;
    std::unique_ptr<OleObject> ole_;
    std::unique_ptr<InPlace> inPlace_;
    std::unique_ptr<View> view_;
    std::unique_ptr<Persistence> persistence_;
    std::unique_ptr<ClassInformation> classInformation_;
};

/// A method's time on the stack: keeps the whole object alive and knows whether the thread is the right one.
class Control::Call {
  public:
    explicit Call(Control& control) noexcept : control_(control), right_(GetCurrentThreadId() == control.thread_) {
        if (right_) {
            control_.enter();
        }
    }
    ~Call() {
        if (right_) {
            control_.leave();
        }
    }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    /// Fails on a thread that the control does not belong to.
    void requireThread() const {
        if (!right_) {
            fail(RPC_E_WRONG_THREAD, "The control was called on a thread that it does not belong to.");
        }
    }

  private:
    Control& control_;
    const bool right_;
};

template <typename Body>
HRESULT Control::call(REFIID iid, Body&& body) noexcept {
    const Call thisCall(*this);
    SetErrorInfo(0, nullptr);
    try {
        thisCall.requireThread();
        return std::forward<Body>(body)();
    } catch (...) {
        return publishCurrentError(iid);
    }
}

/// What the faces share: their unknown is the whole object's.
template <typename... Interfaces>
class Face : public Interfaces... {
  public:
    explicit Face(Control& control) : control_(control) {}
    virtual ~Face() = default;
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) final {
        return control_.outer()->QueryInterface(iid, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() final { return control_.outer()->AddRef(); }
    ULONG STDMETHODCALLTYPE Release() final { return control_.outer()->Release(); }

  protected:
    [[nodiscard]] Control& control() const noexcept { return control_; }

  private:
    Control& control_;
};

}  // namespace vrn::activex
