#include "services/Digest.h"

#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <algorithm>
#include <array>
#include <limits>

#include "errors/Error.h"

namespace vrn::services {

namespace {

[[noreturn]] void throwLibraryFailure(const char* operation) {
    throw errors::Error(errors::number::internalError, std::string("The cryptographic library failed: ") + operation);
}

const unsigned char* bytes(std::string_view text) {
    // An empty view may have no address at all, which the library would take as "no key".
    return reinterpret_cast<const unsigned char*>(text.empty() ? "" : text.data());
}

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

bool decodeBase64(std::string_view digits, Sha256& value) {
    std::array<unsigned char, base64Length / 4 * 3> decoded{};
    const int length = EVP_DecodeBlock(decoded.data(), bytes(digits), static_cast<int>(digits.size()));
    std::copy_n(decoded.begin(), value.size(), value.begin());
    return length == static_cast<int>(decoded.size());
}

}  // namespace vrn::services
