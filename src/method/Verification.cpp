#include "method/Verification.h"

#include "services/EmbeddedSignatures.h"

namespace vrn::method {

namespace {

constexpr std::int32_t notIntact = -4;

VerificationResult codeResult(services::SignatureV23& component, std::int32_t code) {
    return {code, MethodVersion::None, code == 0 ? std::string() : component.describe(code), {}};
}

}  // namespace

bool VerifyMethod_v4(const EditorState& state, const xml::Document& method, std::string& errorText) noexcept {
    return standardHandler(state, "vrnMethodEditor.VRN_MethodEditor.VerifyMethod_v4 ", [&] {
        const auto component = state.services.createSignatureV4();
        const auto key = services::signatureKeyV4(*component);
        const bool intact = component->verify(method, key, format::root.path);
        if (!intact) {
            errorText = "Method failed verification.";
        }
        return intact;
    });
}

std::int32_t Verify_Guid_Signiture(const EditorState& state, const xml::Document& method,
                                   std::string& errorText) noexcept {
    return standardHandler(state, "vrnMethodEditor.VRN_MethodEditor.Verify_Guid_Signiture ", [&] {
        const auto root = method.documentElement();
        if (!root) {
            return 0;
        }
        const auto guid = root.appendChild(method.createElement(services::keyElementV23));
        guid.setText(state.services.createSignatureV23()->sign(services::signatureElementTextV23()));
        const auto component = state.services.createSignatureV23();
        const auto code = component->verify(method, "");
        if (code != 0) {
            errorText = component->describe(code);
        }
        return code;
    });
}

std::unique_ptr<services::SignatureV4> MethodSigner::newComponent() {
    auto component = state_->services.createSignatureV4();
    if (key_.empty()) {
        key_ = services::signatureKeyV4(*component);
    }
    return component;
}

void MethodSigner::sign(xml::Document& method) {
    const auto component = newComponent();
    component->sign(method, key_, format::root.path);
}

std::string MethodSigner::fingerprint(const xml::Document& method) {
    const auto component = newComponent();
    return component->signatureValue(method, key_, format::root.path);
}

VerificationResult VerifyLoadedMethod(EditorState& state) {
    auto& method = state.domMethod;
    const auto version = format::textOf(method, format::version);
    if (!version) {
        const auto component = state.services.createSignatureV23();
        return codeResult(*component, component->verify(method, ""));
    }
    VerificationResult result;
    const auto* const known = format::knownVersion(*version);
    if (known == nullptr) {
        result.version = MethodVersion::Unsupported;
        result.unsupportedVersion = format::versionAsShown(*version);
        return result;
    }
    result.version = known->version;
    if (known->form == format::SignatureForm::Own) {
        // The check adds to the method. The baseline, which shares the document so far, stays as the host handed it over.
        xml::Document own;
        own.load(method);
        method = std::move(own);
        result.code = Verify_Guid_Signiture(state, method, result.errorText);
    } else {
        result.code = VerifyMethod_v4(state, method, result.errorText) ? 0 : notIntact;
    }
    return result;
}

}  // namespace vrn::method
