#include "hosts/activex/control/Ambients.h"

#include <olectl.h>

#include <array>
#include <utility>

#include "services/windows/SystemServices.h"
#include "text/windows/Wide.h"

namespace vrn::activex {

void Ambients::attach(IUnknown* site) {
    com::ComPtr<IDispatch> given;
    if (site != nullptr) {
        site->QueryInterface(IID_PPV_ARGS(&given));
    }
    // The old one goes last: its release may call back.
    const auto old = std::exchange(site_, given);
    refresh(DISPID_UNKNOWN);
}

void Ambients::refresh(DISPID property) {
    const auto concerns = [property](DISPID one) { return property == one || property == DISPID_UNKNOWN; };
    if (concerns(DISPID_AMBIENT_USERMODE)) {
        const auto value = read(DISPID_AMBIENT_USERMODE, VT_BOOL);
        userMode_ = value.get().vt != VT_BOOL || value.get().boolVal != VARIANT_FALSE;
    }
    if (concerns(DISPID_AMBIENT_UIDEAD)) {
        const auto value = read(DISPID_AMBIENT_UIDEAD, VT_BOOL);
        uiDead_ = value.get().vt == VT_BOOL && value.get().boolVal != VARIANT_FALSE;
    }
    if (concerns(DISPID_AMBIENT_LOCALEID)) {
        const auto value = read(DISPID_AMBIENT_LOCALEID, VT_I4);
        locale_.reset();
        if (value.get().vt == VT_I4 && value.get().lVal != 0) {
            locale_ = static_cast<LCID>(value.get().lVal);
        }
    }
    if (concerns(DISPID_AMBIENT_FONT)) {
        const auto value = read(DISPID_AMBIENT_FONT, VT_DISPATCH);
        com::ComPtr<IFont> given;
        if (value.get().vt == VT_DISPATCH && value.get().pdispVal != nullptr) {
            value.get().pdispVal->QueryInterface(IID_PPV_ARGS(&given));
        }
        const auto old = std::exchange(font_, given);
    }
}

HFONT Ambients::font() const noexcept {
    HFONT font = nullptr;
    const auto given = font_;
    return given != nullptr && SUCCEEDED(given->get_hFont(&font)) ? font : nullptr;
}

// Empty when the container does not have the property, or has it with a value that does not fit.
com::Variant Ambients::read(DISPID property, VARTYPE type) const {
    com::Variant value;
    com::Variant fitting;
    if (const auto site = site_; site != nullptr) {
        DISPPARAMS none{};
        if (SUCCEEDED(site->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value.put(),
                                   nullptr, nullptr))) {
            VariantChangeType(fitting.put(), &value.ref(), 0, type);
        }
    }
    return fitting;
}

AmbientLocale::AmbientLocale(const Ambients& ambients) : ambients_(ambients), system_(services::systemLocale()) {}

std::string AmbientLocale::decimalSeparator() {
    std::array<wchar_t, 8> separator{};
    if (const auto locale = ambients_.locale();
        locale && GetLocaleInfoW(*locale, LOCALE_SDECIMAL, separator.data(), static_cast<int>(separator.size())) > 1) {
        return text::fromWide(separator.data());
    }
    return system_->decimalSeparator();
}

std::uint32_t AmbientLocale::systemDefaultLcid() { return system_->systemDefaultLcid(); }

}  // namespace vrn::activex
