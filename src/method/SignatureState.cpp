#include "method/SignatureState.h"

namespace vrn::method {

SignatureState signatureState(const VerificationResult& verification, const MethodContent& content) noexcept {
    if (verification.version == MethodVersion::Unsupported) {
        return SignatureState::Unknown;
    }
    if (verification.code == 0) {
        return SignatureState::Intact;
    }
    return content.isSigned ? SignatureState::Changed : SignatureState::Unsigned;
}

std::string_view signatureStateName(SignatureState state) noexcept {
    switch (state) {
        case SignatureState::Intact:
            return "intact";
        case SignatureState::Changed:
            return "changed";
        case SignatureState::Unsigned:
            return "unsigned";
        case SignatureState::Unknown:
            break;
    }
    return "unknown";
}

}  // namespace vrn::method
