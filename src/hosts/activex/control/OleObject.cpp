#include "hosts/activex/control/OleObject.h"

#include <cwctype>
#include <string_view>
#include <vector>

#include "hosts/activex/control/Ambients.h"
#include "hosts/activex/control/Events.h"
#include "hosts/activex/control/InPlace.h"
#include "hosts/activex/control/Verbs.h"
#include "hosts/activex/control/View.h"
#include "hosts/activex/server/Registration.h"
#include "vrnMethodEditor.h"

namespace vrn::activex {

namespace {

constexpr std::wstring_view userType = L"Method editor control";

// 640 by 480 pixels of a screen with 96 to the inch.
constexpr LONG himetricPerInch = 2540;
constexpr SIZEL defaultExtent{640 * himetricPerInch / 96, 480 * himetricPerInch / 96};

void requireContent(DWORD aspect) {
    if (aspect != DVASPECT_CONTENT) {
        fail(DV_E_DVASPECT, "The control has its content to show and no other aspect.");
    }
}

// One object may be known by several pointers.
bool isSame(IUnknown* one, IUnknown* other) {
    com::ComPtr<IUnknown> first;
    com::ComPtr<IUnknown> second;
    return one != nullptr && other != nullptr && SUCCEEDED(one->QueryInterface(IID_PPV_ARGS(&first))) &&
           SUCCEEDED(other->QueryInterface(IID_PPV_ARGS(&second))) && first == second;
}

LPOLESTR taskText(std::wstring_view text) {
    auto* const copy = static_cast<LPOLESTR>(CoTaskMemAlloc((text.size() + 1) * sizeof(wchar_t)));
    if (copy == nullptr) {
        throw std::bad_alloc();
    }
    copy[text.copy(copy, text.size())] = L'\0';
    return copy;
}

}  // namespace

OleObject::OleObject(Control& control) : Face(control), extent_(defaultExtent) {}

OleObject::~OleObject() {
    if (accelerators_ != nullptr) {
        DestroyAcceleratorTable(accelerators_);
    }
}

HRESULT OleObject::SetClientSite(IOleClientSite* site) {
    return control().call(IID_IOleObject, [&] {
        const com::ComPtr<IOleClientSite> given(site);
        if (given != nullptr && isSame(given.Get(), site_.Get())) {
            return S_OK;
        }
        // A container that takes its site away while the control is active gets its windows back first.
        control().inPlace().deactivate();
        const auto old = std::exchange(site_, given);
        control().ambients().attach(given.Get());
        control().form().setFont(control().ambients().font());
        return S_OK;
    });
}

HRESULT OleObject::GetClientSite(IOleClientSite** site) {
    return control().call(IID_IOleObject, [&] {
        requirePointer(site, "site");
        return site_.CopyTo(site);
    });
}

HRESULT OleObject::SetHostNames(LPCOLESTR /*application*/, LPCOLESTR /*document*/) {
    // For the title of a window of its own, which the control never opens.
    return control().call(IID_IOleObject, [] { return S_OK; });
}

HRESULT OleObject::Close(DWORD /*save*/) {
    return control().call(IID_IOleObject, [&] {
        control().inPlace().deactivate();
        if (const auto advisers = advisers_; advisers != nullptr) {
            advisers->SendOnClose();
        }
        return S_OK;
    });
}

HRESULT OleObject::SetMoniker(DWORD /*which*/, IMoniker* /*moniker*/) { return E_NOTIMPL; }

HRESULT OleObject::GetMoniker(DWORD /*assign*/, DWORD /*which*/, IMoniker** moniker) {
    return control().call(IID_IOleObject, [&] {
        requirePointer(moniker, "moniker");
        *moniker = nullptr;
        return E_NOTIMPL;  // nothing inside a control is linked to
    });
}

HRESULT OleObject::InitFromData(IDataObject* /*data*/, BOOL /*creation*/, DWORD /*reserved*/) { return E_NOTIMPL; }

HRESULT OleObject::GetClipboardData(DWORD /*reserved*/, IDataObject** data) {
    return control().call(IID_IOleObject, [&] {
        requirePointer(data, "data");
        *data = nullptr;
        return E_NOTIMPL;
    });
}

HRESULT OleObject::DoVerb(LONG verb, MSG* message, IOleClientSite* activeSite, LONG index, HWND parent, LPCRECT place) {
    return control().call(IID_IOleObject, [&] {
        if (index != 0 && index != -1) {
            fail(DV_E_LINDEX, "The control has one part only.");
        }
        // Some containers name their site here for the first time.
        const com::ComPtr<IOleClientSite> site(site_ != nullptr ? site_.Get() : activeSite);
        return control().inPlace().doVerb({verb, message, site.Get(), parent, place});
    });
}

HRESULT OleObject::EnumVerbs(IEnumOLEVERB** verbs) {
    return control().call(IID_IOleObject, [&] {
        requirePointer(verbs, "verbs");
        *verbs = enumerateVerbs();
        return S_OK;
    });
}

HRESULT OleObject::Update() {
    return control().call(IID_IOleObject, [] { return S_OK; });
}

HRESULT OleObject::IsUpToDate() {
    return control().call(IID_IOleObject, [] { return S_OK; });
}

HRESULT OleObject::GetUserClassID(CLSID* id) {
    return control().call(IID_IOleObject, [&] {
        requirePointer(id, "id");
        *id = CLSID_VRN_MethodEditor;
        return S_OK;
    });
}

HRESULT OleObject::GetUserType(DWORD /*form*/, LPOLESTR* name) {
    return control().call(IID_IOleObject, [&] {
        requirePointer(name, "name");
        *name = nullptr;
        *name = taskText(userType);
        return S_OK;
    });
}

HRESULT OleObject::SetExtent(DWORD aspect, SIZEL* extent) {
    return control().call(IID_IOleObject, [&] {
        requirePointer(extent, "extent");
        requireContent(aspect);
        if (extent->cx < 0 || extent->cy < 0) {
            fail(E_INVALIDARG, "A size cannot be negative.");
        }
        if (extent->cx != extent_.cx || extent->cy != extent_.cy) {
            extent_ = *extent;
            control().view().changed();
        }
        return S_OK;
    });
}

HRESULT OleObject::GetExtent(DWORD aspect, SIZEL* extent) {
    return control().call(IID_IOleObject, [&] {
        requirePointer(extent, "extent");
        requireContent(aspect);
        *extent = extent_;
        return S_OK;
    });
}

IOleAdviseHolder* OleObject::advisers() {
    if (advisers_ == nullptr) {
        com::require(CreateOleAdviseHolder(&advisers_));
    }
    return advisers_.Get();
}

HRESULT OleObject::Advise(IAdviseSink* sink, DWORD* cookie) {
    return control().call(IID_IOleObject, [&] {
        requirePointer(cookie, "cookie");
        *cookie = 0;
        requirePointer(sink, "sink");
        return advisers()->Advise(sink, cookie);
    });
}

HRESULT OleObject::Unadvise(DWORD cookie) {
    return control().call(IID_IOleObject, [&] {
        if (FAILED(advisers()->Unadvise(cookie))) {
            fail(OLE_E_NOCONNECTION, "There is no connection with this cookie.");
        }
        return S_OK;
    });
}

HRESULT OleObject::EnumAdvise(IEnumSTATDATA** connections) {
    return control().call(IID_IOleObject, [&] {
        requirePointer(connections, "connections");
        *connections = nullptr;
        return advisers()->EnumAdvise(connections);
    });
}

HRESULT OleObject::GetMiscStatus(DWORD aspect, DWORD* status) {
    return control().call(IID_IOleObject, [&] {
        requirePointer(status, "status");
        *status = aspect == DVASPECT_CONTENT ? miscStatus : 0;
        return S_OK;
    });
}

HRESULT OleObject::SetColorScheme(LOGPALETTE* /*palette*/) { return E_NOTIMPL; }

HRESULT OleObject::GetControlInfo(CONTROLINFO* info) {
    return control().call(IID_IOleControl, [&] {
        requirePointer(info, "info");
        std::vector<ACCEL> keys;
        for (const wchar_t key : control().form().mnemonics()) {
            keys.push_back({FALT | FVIRTKEY, static_cast<WORD>(key), 0});
        }
        HACCEL const old = accelerators_;
        accelerators_ = keys.empty() ? nullptr : CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
        if (old != nullptr) {
            DestroyAcceleratorTable(old);
        }
        info->hAccel = accelerators_;
        info->cAccel = accelerators_ == nullptr ? WORD{0} : static_cast<WORD>(keys.size());
        info->dwFlags = CTRLINFO_EATS_RETURN;  // Enter ends the entry of a value; no default button may take it
        return S_OK;
    });
}

HRESULT OleObject::OnMnemonic(MSG* message) {
    return control().call(IID_IOleControl, [&] {
        requirePointer(message, "message");
        if (!control().uiDead()) {
            control().inPlace().pressMnemonic(
                static_cast<wchar_t>(std::towupper(static_cast<wint_t>(message->wParam))));
        }
        return S_OK;
    });
}

HRESULT OleObject::OnAmbientPropertyChange(DISPID property) {
    return control().call(IID_IOleControl, [&] {
        control().ambients().refresh(property);
        if (property == DISPID_AMBIENT_FONT || property == DISPID_UNKNOWN) {
            control().form().setFont(control().ambients().font());
            control().view().changed();
        }
        control().inPlace().followUserMode();
        return S_OK;
    });
}

HRESULT OleObject::FreezeEvents(BOOL freeze) {
    return control().call(IID_IOleControl, [&] {
        control().events().freeze(freeze != FALSE);
        return S_OK;
    });
}

}  // namespace vrn::activex
