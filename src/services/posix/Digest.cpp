#include "services/Digest.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <algorithm>
#include <limits>

#include "errors/Error.h"

namespace vrn::services {

namespace {

/// Length of 32 bytes as base64: 43 digits and one "=".
constexpr std::size_t base64Length = 44;

[[noreturn]] void throwLibraryFailure(const char* operation) {
    throw errors::Error(errors::number::internalError, std::string("The cryptographic library failed: ") + operation);
}

const unsigned char* bytes(std::string_view text) {
    // An empty view may have no address at all, which the library would take as "no key".
    return reinterpret_cast<const unsigned char*>(text.empty() ? "" : text.data());
}

bool isWhiteSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

}  // namespace

Sha256 sha256(std::string_view data) {
    Sha256 digest{};
    unsigned int length = 0;
    if (EVP_Digest(bytes(data), data.size(), digest.data(), &length, EVP_sha256(), nullptr) != 1 ||
        length != digest.size()) {
        throwLibraryFailure("SHA-256");
    }
    return digest;
}

Sha256 hmacSha256(std::string_view key, std::string_view data) {
    Sha256 code{};
    unsigned int length = 0;
    if (key.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()) ||
        HMAC(EVP_sha256(), bytes(key), static_cast<int>(key.size()), bytes(data), data.size(), code.data(), &length) ==
            nullptr ||
        length != code.size()) {
        throwLibraryFailure("HMAC-SHA-256");
    }
    return code;
}

std::string base64(const Sha256& value) {
    std::array<unsigned char, base64Length + 1> encoded{};  // the library ends it with a zero
    const int length = EVP_EncodeBlock(encoded.data(), value.data(), static_cast<int>(value.size()));
    return {encoded.begin(), encoded.begin() + length};
}

std::optional<Sha256> fromBase64(std::string_view text) {
    std::string digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits), [](char c) { return !isWhiteSpace(c); });
    if (digits.size() != base64Length) {
        return std::nullopt;
    }
    std::array<unsigned char, base64Length / 4 * 3> decoded{};
    if (EVP_DecodeBlock(decoded.data(), bytes(digits), static_cast<int>(digits.size())) !=
        static_cast<int>(decoded.size())) {
        return std::nullopt;
    }
    Sha256 value{};
    std::copy_n(decoded.begin(), value.size(), value.begin());
    // The library takes "=" anywhere as zero bits and drops what a last digit holds too much; only the one text that
    // encoding gives is a valid one.
    return base64(value) == digits ? std::optional(value) : std::nullopt;
}

bool equalInConstantTime(const Sha256& a, const Sha256& b) { return CRYPTO_memcmp(a.data(), b.data(), a.size()) == 0; }

}  // namespace vrn::services
