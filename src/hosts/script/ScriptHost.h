// The scripted host: an editor without windows that is driven by JSON lines. See docs/scripted-host.md.
#pragma once

#include <memory>

#include "hosts/script/Protocol.h"
#include "services/Services.h"

namespace vrn::script {

/// The operations on an editor of their own. The message box of `services` is replaced: boxes become events of the reply.
[[nodiscard]] std::unique_ptr<Operations> makeScriptHost(services::Services services = services::embeddedServices());

}  // namespace vrn::script
