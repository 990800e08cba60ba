// Whether a method would be accepted when it is opened again.
#pragma once

#include <vector>

#include "hosts/sample/Documents.h"
#include "hosts/sample/EventSink.h"

namespace vrn::sample {

/// Loads the method into a second control that is never shown. What it reports: nothing for a method that it accepts.
[[nodiscard]] std::vector<MethodEditorError> errorsWhenLoaded(const DocumentSet& set, IDispatch* method);

}  // namespace vrn::sample
