#include "hosts/activex/control/Events.h"

#include <algorithm>

#include "hosts/activex/control/Enumerator.h"
#include "vrnMethodEditor.h"

namespace vrn::activex {

namespace {

constexpr DISPID methodEditorError = 1;

// The connections as they were when the enumeration began.
struct ConnectionSource {
    struct Connection {
        com::ComPtr<IDispatch> sink;
        DWORD cookie;
    };
    std::vector<Connection> connections;

    [[nodiscard]] std::size_t size() const noexcept { return connections.size(); }
    HRESULT copy(std::size_t index, CONNECTDATA& item) const noexcept {
        item.dwCookie = connections[index].cookie;
        item.pUnk = connections[index].sink.Get();
        item.pUnk->AddRef();
        return S_OK;
    }
    static void discard(CONNECTDATA& item) noexcept { std::exchange(item.pUnk, nullptr)->Release(); }
};

VARIANT textArgument(const com::Bstr& text) {
    VARIANT argument;
    VariantInit(&argument);
    argument.vt = VT_BSTR;
    argument.bstrVal = text.get();
    return argument;
}

// Whatever comes of it is the sink's own matter.
void tell(IDispatch& sink, DISPID member, std::vector<VARIANT>& arguments) noexcept {
    DISPPARAMS parameters{};
    parameters.rgvarg = arguments.data();
    parameters.cArgs = static_cast<UINT>(arguments.size());
    EXCEPINFO exception{};
    com::Variant result;
    try {
        sink.Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, result.put(), &exception,
                    nullptr);
    } catch (...) {
        static_cast<void>(0);
    }
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
}

}  // namespace

HRESULT EventPoint::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    *object = iid == IID_IUnknown || iid == IID_IConnectionPoint ? static_cast<IConnectionPoint*>(this) : nullptr;
    if (*object == nullptr) {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

HRESULT EventPoint::GetConnectionInterface(IID* iid) {
    return control_.call(IID_IConnectionPoint, [&] {
        requirePointer(iid, "iid");
        *iid = DIID_DVRN_MethodEditorEvents;
        return S_OK;
    });
}

HRESULT EventPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    return control_.call(IID_IConnectionPoint, [&] {
        requirePointer(container, "container");
        return control_.outer()->QueryInterface(IID_PPV_ARGS(container));
    });
}

HRESULT EventPoint::Advise(IUnknown* sink, DWORD* cookie) {
    return control_.call(IID_IConnectionPoint, [&] {
        requirePointer(cookie, "cookie");
        *cookie = 0;
        requirePointer(sink, "sink");
        com::ComPtr<IDispatch> listener;
        if (FAILED(sink->QueryInterface(DIID_DVRN_MethodEditorEvents, &listener)) &&
            FAILED(sink->QueryInterface(IID_PPV_ARGS(&listener)))) {
            fail(CONNECT_E_CANNOTCONNECT, "The sink does not have the event interface.");
        }
        do {
            ++lastCookie_;
        } while (lastCookie_ == 0 || sinks_.contains(lastCookie_));
        sinks_.emplace(lastCookie_, std::move(listener));
        *cookie = lastCookie_;
        return S_OK;
    });
}

HRESULT EventPoint::Unadvise(DWORD cookie) {
    return control_.call(IID_IConnectionPoint, [&] {
        const auto found = sinks_.find(cookie);
        if (found == sinks_.end()) {
            fail(CONNECT_E_NOCONNECTION, "There is no connection with this cookie.");
        }
        // Out of the list before it is released: the release may call back.
        const auto sink = std::move(found->second);
        sinks_.erase(found);
        return S_OK;
    });
}

HRESULT EventPoint::EnumConnections(IEnumConnections** connections) {
    return control_.call(IID_IConnectionPoint, [&] {
        requirePointer(connections, "connections");
        *connections = nullptr;
        auto source = std::make_shared<ConnectionSource>();
        for (const auto& [cookie, sink] : sinks_) {
            source->connections.push_back({sink, cookie});
        }
        *connections = new Enumerator<IEnumConnections, CONNECTDATA, ConnectionSource>(std::move(source), 0);
        return S_OK;
    });
}

void EventPoint::invoke(DISPID member, std::vector<VARIANT>& arguments) noexcept {
    try {
        const auto sinks = sinks_;
        for (const auto& [cookie, sink] : sinks) {
            // Another sink may have taken it away meanwhile.
            if (sinks_.contains(cookie)) {
                tell(*sink.Get(), member, arguments);
            }
        }
    } catch (...) {
        // No memory for the copy of the list: nobody can be told.
        static_cast<void>(0);
    }
}

void EventPoint::disconnectAll() noexcept {
    // The releases may call back.
    const auto sinks = std::exchange(sinks_, {});
}

HRESULT Events::EnumConnectionPoints(IEnumConnectionPoints** points) {
    return control().call(IID_IConnectionPointContainer, [&] {
        requirePointer(points, "points");
        *points = nullptr;
        auto source = std::make_shared<PointerSource<IConnectionPoint>>();
        source->pointers.emplace_back(&point_);
        *points = new Enumerator<IEnumConnectionPoints, IConnectionPoint*, PointerSource<IConnectionPoint>>(
            std::move(source), 0);
        return S_OK;
    });
}

HRESULT Events::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
    return control().call(IID_IConnectionPointContainer, [&] {
        requirePointer(point, "point");
        *point = nullptr;
        if (iid != DIID_DVRN_MethodEditorEvents) {
            fail(CONNECT_E_NOCONNECTION, "The control has no events of this interface.");
        }
        return com::ComPtr<IConnectionPoint>(&point_).CopyTo(point);
    });
}

void Events::raise(const errors::MethodEditorErrorArguments& arguments) noexcept {
    if (frozen_ > 0) {
        return;
    }
    try {
        const com::Bstr error(arguments.strError);
        const com::Bstr application(arguments.strApplication);
        const com::Bstr module(arguments.strModule);
        const com::Bstr procedure(arguments.strProcedure);
        VARIANT number;
        VariantInit(&number);
        number.vt = VT_I4;
        number.lVal = arguments.lngError;
        VARIANT line;
        VariantInit(&line);
        line.vt = VT_I2;
        line.iVal = arguments.intLineNumber;
        std::vector<VARIANT> reversed{
            line,  textArgument(procedure), textArgument(module), textArgument(application), textArgument(error),
            number};
        point_.invoke(methodEditorError, reversed);
    } catch (...) {
        // No memory for the texts. The member that failed returns normally all the same.
        static_cast<void>(0);
    }
}

void Events::freeze(bool frozen) noexcept { frozen_ = frozen ? frozen_ + 1 : std::max(0, frozen_ - 1); }

}  // namespace vrn::activex
