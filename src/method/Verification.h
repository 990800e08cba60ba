// Signing of built methods and verification of loaded ones.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "method/EditorState.h"
#include "method/Format.h"

namespace vrn::method {

/// Whether a version-4 method is intact; the error text says that it is not.
[[nodiscard]] bool VerifyMethod_v4(const EditorState& state, const xml::Document& method,
                                   std::string& errorText) noexcept;

/// The verification code of a method of version 2 or 3, 0 when it is intact, with its error text. Leaves an element `Guid` as last
/// child of the method's root.
[[nodiscard]] std::int32_t Verify_Guid_Signiture(const EditorState& state, const xml::Document& method,
                                                 std::string& errorText) noexcept;

/// Signs one built method. The key is made once and kept: it costs as much as signing a small method.
class MethodSigner {
  public:
    /// `state` must outlive the signer.
    explicit MethodSigner(const EditorState& state) : state_(&state) {}
    void sign(xml::Document& method);
    /// The signature value that the method would get: a fingerprint of its content.
    [[nodiscard]] std::string fingerprint(const xml::Document& method);

  private:
    [[nodiscard]] std::unique_ptr<services::SignatureV4> newComponent();

    const EditorState* state_;
    std::string key_;
};

/// What a load has to say about a method.
struct VerificationResult {
    std::int32_t code = 0;  ///< 0 verified or not to be verified
    MethodVersion version = MethodVersion::None;
    std::string errorText;
    std::string unsupportedVersion;  ///< the version as it is shown when it is not supported
};

/// Verifies `domMethod` by its version. -4 is the code of a version-4 method that is not intact.
[[nodiscard]] VerificationResult VerifyLoadedMethod(EditorState& state);

}  // namespace vrn::method
