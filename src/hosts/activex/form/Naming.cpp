#include "hosts/activex/form/Naming.h"

#include <oleacc.h>

#include <array>

#include "com/Com.h"

namespace vrn::activex {

namespace {

// Of the accessibility library; its import libraries do not agree on who defines them.
constexpr GUID propServicesClass{0xb5f8350b, 0x0548, 0x48b1, {0xa6, 0xee, 0x88, 0xbd, 0x00, 0xb4, 0xa5, 0xe7}};
constexpr GUID propServicesId{0x6e26e776, 0x04f0, 0x495d, {0x80, 0xe4, 0x33, 0x30, 0x35, 0x2e, 0x31, 0x69}};
constexpr GUID nameProperty{0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};

com::ComPtr<IAccPropServices> properties() noexcept {
    com::ComPtr<IAccPropServices> services;
    CoCreateInstance(propServicesClass, nullptr, CLSCTX_INPROC_SERVER, propServicesId,
                     reinterpret_cast<void**>(services.GetAddressOf()));
    return services;
}

constexpr GUID stateProperty{0xa8d4d5b0, 0x0a21, 0x42d0, {0xa5, 0xc0, 0x51, 0x4e, 0x98, 0x4f, 0x45, 0x7b}};

}  // namespace

void nameForAssistance(HWND window, const std::wstring& name) noexcept {
    if (const auto services = properties()) {
        services->SetHwndPropStr(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, nameProperty, name.c_str());
    }
}

void showStateForAssistance(HWND window, bool readOnly, bool focused) noexcept {
    const auto services = properties();
    if (!services) {
        return;
    }
    if (readOnly) {
        VARIANT state{};
        state.vt = VT_I4;
        state.lVal = STATE_SYSTEM_READONLY | STATE_SYSTEM_FOCUSABLE | (focused ? STATE_SYSTEM_FOCUSED : 0);
        services->SetHwndProp(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, stateProperty, state);
    } else {
        MSAAPROPID property = stateProperty;
        services->ClearHwndProps(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, &property, 1);
    }
}

void forgetName(HWND window) noexcept {
    if (const auto services = properties()) {
        std::array<MSAAPROPID, 2> given{nameProperty, stateProperty};
        services->ClearHwndProps(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, given.data(),
                                 static_cast<int>(given.size()));
    }
}

}  // namespace vrn::activex
