#include "hosts/cli/Json.h"

namespace vrn::cli {

std::string jsonLine(const Json& value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n"; }

}  // namespace vrn::cli
