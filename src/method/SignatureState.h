// What a method's signature is worth, in the words that all who report it use.
#pragma once

#include <string_view>

#include "method/MethodContent.h"
#include "method/Verification.h"

namespace vrn::method {

enum class SignatureState {
    Intact,    ///< as the editor signed it
    Changed,   ///< the signature does not match
    Unsigned,  ///< there is none
    Unknown,   ///< how a method of its version is signed is not known
};

[[nodiscard]] SignatureState signatureState(const VerificationResult& verification,
                                            const MethodContent& content) noexcept;

/// "intact", "changed", "unsigned" or "unknown".
[[nodiscard]] std::string_view signatureStateName(SignatureState state) noexcept;

}  // namespace vrn::method
