#include "method/Verification.h"

#include <algorithm>
#include <optional>

#include "services/EmbeddedSignatures.h"
#include "text/Lists.h"

namespace vrn::method {

namespace {

constexpr std::string_view methodPath = "/Method";
constexpr std::int32_t notIntact = -4;

// The value of a version text that is a whole number, as plain decimal; any other text stays as it stands.
std::string versionAsShown(const std::string& text) {
    std::string_view digits = text;
    const bool negative = digits.starts_with('-');
    if (negative || digits.starts_with('+')) {
        digits.remove_prefix(1);
    }
    const bool whole =
        !digits.empty() && std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (!whole) {
        return text;
    }
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size() - 1));
    return (negative && digits != "0" ? "-" : "") + std::string(digits);
}

VerificationResult codeResult(services::SignatureV23& component, std::int32_t code) {
    return {code, MethodVersion::None, code == 0 ? std::string() : component.describe(code), {}};
}

}  // namespace

bool VerifyMethod_v4(const EditorState& state, const xml::Document& method, std::string& errorText) noexcept {
    return standardHandler(state, "vrnMethodEditor.VRN_MethodEditor.VerifyMethod_v4 ", [&] {
        const auto component = state.services.createSignatureV4();
        const auto key = services::signatureKeyV4(*component);
        const bool intact = component->verify(method, key, methodPath);
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
        const auto guid = root.appendChild(method.createElement("Guid"));
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
    component->sign(method, key_, methodPath);
}

std::string MethodSigner::fingerprint(const xml::Document& method) {
    const auto component = newComponent();
    return component->signatureValue(method, key_, methodPath);
}

VerificationResult VerifyLoadedMethod(EditorState& state) {
    auto& method = state.domMethod;
    const auto versionNode = method.selectSingleNode("Method/VERSION");
    if (!versionNode) {
        const auto component = state.services.createSignatureV23();
        return codeResult(*component, component->verify(method, ""));
    }
    VerificationResult result;
    const auto version = versionAsShown(versionNode.text());
    if (version == "2" || version == "3") {
        result.version = version == "2" ? MethodVersion::Two : MethodVersion::Three;
        // The check adds to the method. The baseline, which shares the document so far, stays as the host handed it over.
        xml::Document own;
        own.load(method);
        method = std::move(own);
        result.code = Verify_Guid_Signiture(state, method, result.errorText);
    } else if (version == "4") {
        result.version = MethodVersion::Four;
        result.code = VerifyMethod_v4(state, method, result.errorText) ? 0 : notIntact;
    } else {
        result.version = MethodVersion::Unsupported;
        result.unsupportedVersion = version;
    }
    return result;
}

}  // namespace vrn::method
