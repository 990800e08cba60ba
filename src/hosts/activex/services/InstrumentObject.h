// An instrument service that is a COM object.
#pragma once

#include "com/Dispatch.h"
#include "services/InstrumentService.h"

namespace vrn::activex {

/// Calls the object by the names of IInstrumentService's members. What the object fails with goes on as `errors::Error`.
class InstrumentObject final : public services::InstrumentService {
  public:
    explicit InstrumentObject(com::Object object) : object_(std::move(object)) {}
    void UnitInfo(const std::string& unitCode, std::string& unitText, std::int32_t& unitFactor) override;
    void UnitPair(const std::string& code, std::string& first, std::string& second) override;
    std::optional<std::vector<std::string>> ObjectNames(const std::string& key) override;

  private:
    com::Object object_;
};

}  // namespace vrn::activex
