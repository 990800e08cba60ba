#include "services/Digest.h"

#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/params.h>

#include <algorithm>
#include <array>
#include <memory>

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

// The library looks an algorithm up anew, under locks that all threads share, for whoever does not keep it.

struct FreeDigest {
    void operator()(EVP_MD* digest) const noexcept { EVP_MD_free(digest); }
};

const EVP_MD* sha256Algorithm() {
    static const std::unique_ptr<EVP_MD, FreeDigest> algorithm(EVP_MD_fetch(nullptr, "SHA256", nullptr));
    return algorithm.get();
}

struct FreeMac {
    void operator()(EVP_MAC_CTX* context) const noexcept { EVP_MAC_CTX_free(context); }
};
using MacContext = std::unique_ptr<EVP_MAC_CTX, FreeMac>;

// A context that knows its algorithm and no key yet; null on failure.
MacContext newHmacContext() {
    static const MacContext prepared = [] {
        EVP_MAC* const algorithm = EVP_MAC_fetch(nullptr, "HMAC", nullptr);
        MacContext context(algorithm == nullptr ? nullptr : EVP_MAC_CTX_new(algorithm));
        EVP_MAC_free(algorithm);
        std::string digest = "SHA256";
        const std::array parameters{OSSL_PARAM_construct_utf8_string(OSSL_MAC_PARAM_DIGEST, digest.data(), 0),
                                    OSSL_PARAM_construct_end()};
        const bool ready = context != nullptr && EVP_MAC_CTX_set_params(context.get(), parameters.data()) == 1;
        return ready ? std::move(context) : MacContext();
    }();
    return MacContext(prepared == nullptr ? nullptr : EVP_MAC_CTX_dup(prepared.get()));
}

}  // namespace

Sha256 sha256(std::string_view data) {
    Sha256 digest{};
    unsigned int length = 0;
    if (EVP_Digest(bytes(data), data.size(), digest.data(), &length, sha256Algorithm(), nullptr) != 1 ||
        length != digest.size()) {
        throwLibraryFailure("SHA-256");
    }
    return digest;
}

Sha256 hmacSha256(std::string_view key, std::string_view data) {
    Sha256 code{};
    std::size_t length = 0;
    const MacContext context = newHmacContext();
    if (context == nullptr || EVP_MAC_init(context.get(), bytes(key), key.size(), nullptr) != 1 ||
        EVP_MAC_update(context.get(), bytes(data), data.size()) != 1 ||
        EVP_MAC_final(context.get(), code.data(), &length, code.size()) != 1 || length != code.size()) {
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
