// The three documents of an installation and the draft of a method, as XML text.
#pragma once

#include <string>

#include "Installation.h"

namespace vrn::samples {

[[nodiscard]] std::string macrosText(const Installation& installation);
[[nodiscard]] std::string objectsText(const Installation& installation);
[[nodiscard]] std::string configurationText(const Installation& installation);

/// What the editor needs to read the method: no embedded cycles, no timestamps, no signature. The editor adds them.
[[nodiscard]] std::string draftText(const MethodDraft& draft);

}  // namespace vrn::samples
