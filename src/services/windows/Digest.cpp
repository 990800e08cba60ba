// CNG for digests, as far back as Windows 7 has it; the certificate library for base64.
#include "services/Digest.h"

#include <windows.h>
// After windows.h, which they build on.
#include <bcrypt.h>
#include <wincrypt.h>

#include <memory>

#include "errors/Error.h"

namespace vrn::services {

namespace {

void require(NTSTATUS status, const char* operation) {
    if (!BCRYPT_SUCCESS(status)) {
        throw errors::Error(errors::number::internalError,
                            std::string("The cryptographic library failed: ") + operation);
    }
}

PUCHAR bytes(std::string_view text) { return reinterpret_cast<PUCHAR>(const_cast<char*>(text.data())); }

struct CloseProvider {
    void operator()(void* handle) const noexcept { BCryptCloseAlgorithmProvider(handle, 0); }
};
struct DestroyHash {
    void operator()(void* handle) const noexcept { BCryptDestroyHash(handle); }
};

// One digest of one text, keyed when the flags say so.
Sha256 digest(std::string_view key, std::string_view data, ULONG flags) {
    BCRYPT_ALG_HANDLE opened = nullptr;
    require(BCryptOpenAlgorithmProvider(&opened, BCRYPT_SHA256_ALGORITHM, nullptr, flags), "opening SHA-256");
    const std::unique_ptr<void, CloseProvider> provider(opened);
    BCRYPT_HASH_HANDLE created = nullptr;
    // Without a buffer of ours the library brings its own, which Windows 7 and later do.
    require(BCryptCreateHash(opened, &created, nullptr, 0, bytes(key), static_cast<ULONG>(key.size()), 0), "SHA-256");
    const std::unique_ptr<void, DestroyHash> hash(created);
    while (!data.empty()) {
        const auto piece = data.substr(0, 1U << 30);
        require(BCryptHashData(created, bytes(piece), static_cast<ULONG>(piece.size()), 0), "SHA-256");
        data.remove_prefix(piece.size());
    }
    Sha256 value{};
    require(BCryptFinishHash(created, value.data(), static_cast<ULONG>(value.size()), 0), "SHA-256");
    return value;
}

}  // namespace

Sha256 sha256(std::string_view data) { return digest({}, data, 0); }

Sha256 hmacSha256(std::string_view key, std::string_view data) {
    return digest(key, data, BCRYPT_ALG_HANDLE_HMAC_FLAG);
}

std::string base64(const Sha256& value) {
    std::array<char, base64Length + 1> encoded{};
    auto length = static_cast<DWORD>(encoded.size());
    if (CryptBinaryToStringA(value.data(), static_cast<DWORD>(value.size()), CRYPT_STRING_BASE64 | CRYPT_STRING_NOCRLF,
                             encoded.data(), &length) == FALSE) {
        throw errors::Error(errors::number::internalError, "The cryptographic library failed: base64");
    }
    return {encoded.data(), length};
}

bool decodeBase64(std::string_view digits, Sha256& value) {
    auto length = static_cast<DWORD>(value.size());
    return CryptStringToBinaryA(digits.data(), static_cast<DWORD>(digits.size()), CRYPT_STRING_BASE64, value.data(),
                                &length, nullptr, nullptr) != FALSE &&
           length == value.size();
}

}  // namespace vrn::services
