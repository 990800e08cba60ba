// What the system's locale decides: how numbers are typed and which font shows them.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace vrn::services {

class LocaleService {
  public:
    virtual ~LocaleService() = default;
    /// The decimal separator of the thread's locale.
    virtual std::string decimalSeparator() = 0;
    /// The system's default locale as a Windows locale identifier.
    virtual std::uint32_t systemDefaultLcid() = 0;
};

/// One locale, whatever the machine's: the same method reads the same everywhere.
class FixedLocaleService final : public LocaleService {
  public:
    explicit FixedLocaleService(std::string decimalSeparator = ".", std::uint32_t lcid = 1033)
        : decimalSeparator_(std::move(decimalSeparator)), lcid_(lcid) {}
    std::string decimalSeparator() override { return decimalSeparator_; }
    std::uint32_t systemDefaultLcid() override { return lcid_; }

  private:
    std::string decimalSeparator_;
    std::uint32_t lcid_;
};

}  // namespace vrn::services
