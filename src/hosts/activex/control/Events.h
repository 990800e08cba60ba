// The control's one event and whoever listens to it.
#pragma once

#include <map>
#include <vector>

#include "errors/Handlers.h"
#include "hosts/activex/control/Control.h"

namespace vrn::activex {

/// The connection point of the event interface. An object of its own to those who ask, with the control's life.
class EventPoint final : public IConnectionPoint {
  public:
    explicit EventPoint(Control& control) : control_(control) {}
    virtual ~EventPoint() = default;
    EventPoint(const EventPoint&) = delete;
    EventPoint& operator=(const EventPoint&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return control_.outer()->AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return control_.outer()->Release(); }
    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

    /// Calls a member of the event interface in every sink; `arguments` stand last to first. A sink that fails, or leaves
    /// or ends the control from within, keeps no other from being called.
    void invoke(DISPID member, std::vector<VARIANT>& arguments) noexcept;
    void disconnectAll() noexcept;

  private:
    Control& control_;
    std::map<DWORD, com::ComPtr<IDispatch>> sinks_;
    DWORD lastCookie_ = 0;
};

class Events final : public Face<IConnectionPointContainer> {
  public:
    explicit Events(Control& control) : Face(control), point_(control) {}

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

    /// Tells all sinks.
    void raise(const errors::MethodEditorErrorArguments& arguments) noexcept;
    /// The container wants no events for now (counted). What would be raised meanwhile is not raised.
    void freeze(bool frozen) noexcept;
    void disconnectAll() noexcept { point_.disconnectAll(); }

  private:
    EventPoint point_;
    int frozen_ = 0;
};

}  // namespace vrn::activex
