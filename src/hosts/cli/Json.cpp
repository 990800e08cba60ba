#include "hosts/cli/Json.h"

namespace vrn::cli {

std::string jsonText(const Json& value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace); }

std::string jsonLine(const Json& value) { return jsonText(value) + "\n"; }

}  // namespace vrn::cli
