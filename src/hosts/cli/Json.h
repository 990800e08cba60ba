// JSON as the tool writes it: keys in the order in which they are documented, texts as UTF-8.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace vrn::cli {

using Json = nlohmann::ordered_json;

/// The value as text, for what is put together from pieces.
[[nodiscard]] std::string jsonText(const Json& value);

/// The value on one line, with line end.
[[nodiscard]] std::string jsonLine(const Json& value);

}  // namespace vrn::cli
