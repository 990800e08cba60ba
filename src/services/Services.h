// All that a host's installation may put in place of what the editor brings along.
#pragma once

#include <functional>
#include <memory>

#include "errors/modMsgBox.h"
#include "services/InstrumentService.h"
#include "services/LocaleService.h"
#include "services/Signature.h"

namespace vrn::services {

struct Services {
    std::shared_ptr<InstrumentService> instrument;
    std::shared_ptr<errors::MessageBoxService> messageBox;
    std::shared_ptr<LocaleService> locale;
    /// The signature components are made new for every check and let go after it.
    std::function<std::unique_ptr<SignatureV4>()> createSignatureV4;
    std::function<std::unique_ptr<SignatureV23>()> createSignatureV23;
};

/// The embedded defaults. Their message box shows nothing and answers OK: an editor without windows has nobody to ask.
[[nodiscard]] Services embeddedServices();

/// The services with the embedded default in every place that is empty.
[[nodiscard]] Services withEmbeddedDefaults(Services services);

}  // namespace vrn::services
