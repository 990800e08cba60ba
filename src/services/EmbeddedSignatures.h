// The signature components that the editor brings along.
#pragma once

#include "services/Signature.h"

namespace vrn::services {

/// W3C XML Signature: `Signature` as last child of the selected root element, one reference to the whole document (`URI=""`)
/// with the enveloped-signature transform and exclusive canonicalisation, SHA-256, HMAC-SHA256 with the bytes of the key text
/// as key, `KeyInfo/KeyName` "vrnMethodEditor". Verification accepts exactly this profile.
class EmbeddedSignatureV4 final : public SignatureV4 {
  public:
    void sign(xml::Document& document, std::string_view key, std::string_view xpath) override;
    bool verify(const xml::Document& document, std::string_view key, std::string_view xpath) override;
    std::string signatureValue(const xml::Document& document, std::string_view key, std::string_view xpath) override;
};

/// Base64 HMAC-SHA256 in the root's child `Signature` (no namespace). The key is the text of the root's last child `Guid`, or
/// what `sign` gives for the signature element text when there is none; signed is the canonical form of the root without
/// its children `Signature` and `Guid`.
class EmbeddedSignatureV23 final : public SignatureV23 {
  public:
    std::string sign(std::string_view text) override;
    std::int32_t verify(const xml::Document& document, std::string_view reserved) override;
    std::string describe(std::int32_t code) override;
    /// What must stand in `Signature` for the method to verify: for tools that make methods of old versions.
    std::string signatureFor(const xml::Document& document);
};

/// The signature element text of methods of versions 2 and 3.
[[nodiscard]] std::string signatureElementTextV23();
/// The signature element text of methods of version 4.
[[nodiscard]] std::string signatureElementTextV4();

/// The key of version 4: the signed `GUID` element as text, without XML declaration and line end.
[[nodiscard]] std::string signatureKeyV4(SignatureV4& component);

}  // namespace vrn::services
