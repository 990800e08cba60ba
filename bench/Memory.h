// Peak memory of a loaded editor beside the bare documents.
#pragma once

#include <functional>

namespace vrn::bench {

/// How far the resident memory of a child process of its own rises while it does this work, in KiB.
[[nodiscard]] long peakMemoryOf(const std::function<void()>& work);

/// Prints the ratio for every dimension at its largest size.
void printMemory();

}  // namespace vrn::bench
