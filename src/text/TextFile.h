// XML files as bytes against XML text in memory, which is always UTF-8.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vrn::text {

/// No document of an instrument comes near this size: whoever reads files refuses what does.
inline constexpr std::size_t largestFile = std::size_t{64} << 20U;
inline constexpr std::string_view tooLarge = "is larger than 64 MB: that is no document of an instrument";

/// The text of a file's bytes as UTF-8: by its byte order mark, else by the declared encoding, else as UTF-8. Bytes that the encoding
/// does not have, and a file in another encoding than it declares, fail with error 5 and a text that names what is wrong.
[[nodiscard]] std::string decodeXmlFile(std::string_view bytes);

/// The bytes of a file for this text in the encoding that its declaration names: UTF-16 as little-endian with byte order
/// mark, others through the system's converters, UTF-8 when none is declared. Characters that the encoding does not have are
/// written as character references where text allows it. Fails with error 5 for an unknown encoding.
[[nodiscard]] std::string encodeXmlFile(std::string_view text);

/// The data of the XML declaration (what stands between "<?xml" and "?>", trimmed), or nothing when there is none.
[[nodiscard]] std::optional<std::string_view> declarationData(std::string_view text);

/// The encoding name in the declaration at the start of an XML text; empty when there is none.
[[nodiscard]] std::string declaredEncoding(std::string_view text);

}  // namespace vrn::text
