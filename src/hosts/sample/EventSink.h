// What the control tells its host: an object with the control's event interface, connected to the control's connection point.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <ocidl.h>

#include <functional>
#include <string>

#include "com/Com.h"

namespace vrn::sample {

/// The arguments of the event, under their names in the type library.
struct MethodEditorError {
    long lngError = 0;
    std::wstring strError;
    std::wstring strApplication;
    std::wstring strModule;
    std::wstring strProcedure;
    short intLineNumber = 0;
};

using ErrorHandler = std::function<void(const MethodEditorError&)>;

/// The event interface is a dispinterface: its events arrive as calls of `Invoke` and nothing else.
class EventSink final : public IDispatch {
  public:
    explicit EventSink(ErrorHandler handler) : handler_(std::move(handler)) {}
    virtual ~EventSink() = default;
    EventSink(const EventSink&) = delete;
    EventSink& operator=(const EventSink&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* argument) override;

  private:
    LONG references_ = 1;
    ErrorHandler handler_;
};

/// A handler's connection with a control, for as long as this object lives.
class EventConnection {
  public:
    EventConnection(IUnknown* control, ErrorHandler handler);
    ~EventConnection();
    EventConnection(const EventConnection&) = delete;
    EventConnection& operator=(const EventConnection&) = delete;

  private:
    com::ComPtr<IConnectionPoint> point_;
    DWORD cookie_ = 0;
};

}  // namespace vrn::sample
