// What the container says of the surroundings, with defaults for one that says nothing.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <ocidl.h>

#include <memory>
#include <optional>
#include <string>

#include "com/Com.h"
#include "services/LocaleService.h"

namespace vrn::activex {

/// The ambient properties, read when the container hands its site over and whenever it says that one has changed.
class Ambients {
  public:
    /// `site` is the container's client site, or null when it takes the control back.
    void attach(IUnknown* site);
    /// Reads one property anew, or all of them for DISPID_UNKNOWN.
    void refresh(DISPID property);

    /// Whether the user is working, rather than somebody designing a window.
    [[nodiscard]] bool userMode() const noexcept { return userMode_; }
    /// Whether the control is not to answer to the user for now.
    [[nodiscard]] bool uiDead() const noexcept { return uiDead_; }
    /// The container's locale, if it has one of its own.
    [[nodiscard]] std::optional<LCID> locale() const noexcept { return locale_; }
    /// The container's font; null for none. It lives until the next refresh.
    [[nodiscard]] HFONT font() const noexcept;

  private:
    [[nodiscard]] com::Variant read(DISPID property, VARTYPE type) const;

    com::ComPtr<IDispatch> site_;
    bool userMode_ = true;
    bool uiDead_ = false;
    std::optional<LCID> locale_;
    com::ComPtr<IFont> font_;
};

/// Numbers as the container's locale writes them, or the thread's where the container has none.
class AmbientLocale final : public services::LocaleService {
  public:
    explicit AmbientLocale(const Ambients& ambients);
    std::string decimalSeparator() override;
    std::uint32_t systemDefaultLcid() override;

  private:
    const Ambients& ambients_;
    std::shared_ptr<services::LocaleService> system_;
};

}  // namespace vrn::activex
