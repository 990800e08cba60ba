// Nettle for all of it: contexts on the stack, and nothing that threads share or that has to be set up first.
#include "services/Digest.h"

#include <nettle/base64.h>
#include <nettle/hmac.h>
#include <nettle/sha2.h>

#include <algorithm>
#include <array>
#include <tuple>

namespace vrn::services {

namespace {

const std::uint8_t* bytes(std::string_view text) { return reinterpret_cast<const std::uint8_t*>(text.data()); }

}  // namespace

Sha256 sha256(std::string_view data) {
    sha256_ctx context{};
    sha256_init(&context);
    sha256_update(&context, data.size(), bytes(data));
    Sha256 digest{};
    sha256_digest(&context, digest.size(), digest.data());
    return digest;
}

Sha256 hmacSha256(std::string_view key, std::string_view data) {
    hmac_sha256_ctx context{};
    hmac_sha256_set_key(&context, key.size(), bytes(key));
    hmac_sha256_update(&context, data.size(), bytes(data));
    Sha256 code{};
    hmac_sha256_digest(&context, code.size(), code.data());
    return code;
}

std::string base64(const Sha256& value) {
    std::array<char, BASE64_ENCODE_RAW_LENGTH(std::tuple_size_v<Sha256>)> digits{};
    static_assert(digits.size() == base64Length);
    base64_encode_raw(digits.data(), value.size(), value.data());
    return {digits.begin(), digits.end()};
}

bool decodeBase64(std::string_view digits, Sha256& value) {
    base64_decode_ctx context{};
    base64_decode_init(&context);
    std::array<std::uint8_t, BASE64_DECODE_LENGTH(base64Length)> decoded{};
    auto length = decoded.size();
    if (digits.size() != base64Length ||
        base64_decode_update(&context, &length, decoded.data(), digits.size(), digits.data()) == 0 ||
        base64_decode_final(&context) == 0 || length != value.size()) {
        return false;
    }
    std::copy_n(decoded.begin(), value.size(), value.begin());
    return true;
}

}  // namespace vrn::services
