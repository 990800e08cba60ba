#pragma once

namespace vrn::bench {

/// Registers every operation at every size of every dimension, as "Operation/dimension/size".
void registerOperations();

}  // namespace vrn::bench
