#include "scenarios/Recorded.h"

#include "scenarios/KnownDifferences.h"

namespace vrn::test {

std::string recordedPart(const std::string& reply) { return withoutLineNumbers(nlohmann::json::parse(reply)).dump(); }

}  // namespace vrn::test
