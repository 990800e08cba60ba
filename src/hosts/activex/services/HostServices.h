// The services that an installation or a host supplies as COM objects, in front of the embedded ones.
#pragma once

#include <memory>
#include <optional>

#include "com/Dispatch.h"
#include "services/Services.h"

namespace vrn::activex {

/// What one control uses. For each service: the object that the host has set; else one of the class that is registered under
/// the service's ProgID; else the embedded default.
class HostServices {
  public:
    HostServices();

    /// Null restores what is used without a host's object.
    void setInstrumentService(IDispatch* service);
    void setSignatureV4(IDispatch* component);
    void setSignatureV23(IDispatch* component);

    /// What the engine is made with. It stays in force when other objects are set later.
    [[nodiscard]] services::Services forEngine() const;

  private:
    struct Objects;
    class Instrument;
    // Shared with what was handed to the engine.
    std::shared_ptr<Objects> objects_;
};

}  // namespace vrn::activex
