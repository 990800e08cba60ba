// The cryptographic port: Nettle on POSIX systems, CNG on Windows, chosen at link time.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vrn::services {

using Sha256 = std::array<std::uint8_t, 32>;

[[nodiscard]] Sha256 sha256(std::string_view data);
[[nodiscard]] Sha256 hmacSha256(std::string_view key, std::string_view data);
[[nodiscard]] std::string base64(const Sha256& value);
/// The 32 bytes of a base64 text, white space ignored; nothing when it is not exactly that.
[[nodiscard]] std::optional<Sha256> fromBase64(std::string_view text);
/// Whether both are equal, in time that does not depend on where they differ.
[[nodiscard]] bool equalInConstantTime(const Sha256& a, const Sha256& b);

/// Length of 32 bytes as base64: 43 digits and one "=".
inline constexpr std::size_t base64Length = 44;
/// What the library makes of `base64Length` digits; it may take more texts than one for the same bytes. For `fromBase64`.
[[nodiscard]] bool decodeBase64(std::string_view digits, Sha256& value);

}  // namespace vrn::services
