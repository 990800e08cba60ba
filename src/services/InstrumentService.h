// What the host's installation knows about the instrument: units and names of its own.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vrn::services {

class InstrumentService {
  public:
    virtual ~InstrumentService() = default;
    /// The text shown for a unit code and the factor of the unit. Both come with their defaults ("" and 1) and keep them
    /// when the service leaves them alone.
    virtual void UnitInfo(const std::string& unitCode, std::string& unitText, std::int32_t& unitFactor) = 0;
    /// Two texts for a code; the first of code "E" is the instrument's standard unit.
    virtual void UnitPair(const std::string& code, std::string& first, std::string& second) = 0;
    /// The names that the installation itself defines for a category key, or nothing.
    virtual std::optional<std::vector<std::string>> ObjectNames(const std::string& key) = 0;
};

/// Knows no unit and no name, so that the editor works without a host's service.
class EmbeddedInstrumentService final : public InstrumentService {
  public:
    void UnitInfo(const std::string& /*unitCode*/, std::string& unitText, std::int32_t& unitFactor) override {
        unitText.clear();
        unitFactor = 1;
    }
    void UnitPair(const std::string& /*code*/, std::string& first, std::string& second) override {
        first.clear();
        second.clear();
    }
    std::optional<std::vector<std::string>> ObjectNames(const std::string& /*key*/) override { return std::nullopt; }
};

}  // namespace vrn::services
