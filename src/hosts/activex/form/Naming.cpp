#include "hosts/activex/form/Naming.h"

#include <oleacc.h>

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

}  // namespace

void nameForAssistance(HWND window, const std::wstring& name) noexcept {
    if (const auto services = properties()) {
        services->SetHwndPropStr(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, nameProperty, name.c_str());
    }
}

void forgetName(HWND window) noexcept {
    if (const auto services = properties()) {
        MSAAPROPID name = nameProperty;
        services->ClearHwndProps(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, &name, 1);
    }
}

}  // namespace vrn::activex
