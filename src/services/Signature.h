// The two signature components: interfaces that a host's installation may fill, and the texts shared with them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "xml/Dom.h"

namespace vrn::services {

/// The constant that every method's signature starts from. It is published: a signature shows that a file was changed
/// outside the editor, not who changed it.
inline constexpr std::string_view signatureConstant = "{5C1D0E7A-93F4-4B2E-8A61-2F7D94C0B3E8}";

/// Signature and key of versions 2 and 3: children of the method's root, in no namespace.
inline constexpr std::string_view signatureElementV23 = "Signature";
inline constexpr std::string_view keyElementV23 = "Guid";

/// Signs methods of version 4. Documents are handed over as documents; a component that works on text takes their `xml()`.
class SignatureV4 {
  public:
    virtual ~SignatureV4() = default;
    /// Signs the element that `xpath` selects, in place. Fails with error 91 when nothing is selected.
    virtual void sign(xml::Document& document, std::string_view key, std::string_view xpath) = 0;
    /// Whether the signature of the element that `xpath` selects matches the key. False, never an error, for anything
    /// malformed.
    virtual bool verify(const xml::Document& document, std::string_view key, std::string_view xpath) = 0;
    /// The value that `sign` would write for this document, without writing it.
    virtual std::string signatureValue(const xml::Document& document, std::string_view key, std::string_view xpath) = 0;
};

/// Verifies methods of versions 2 and 3 and those without a version.
class SignatureV23 {
  public:
    virtual ~SignatureV23() = default;
    /// The signature text of a text.
    virtual std::string sign(std::string_view text) = 0;
    /// 0 when the method is intact, else a code for `describe`. `reserved` is always empty.
    virtual std::int32_t verify(const xml::Document& document, std::string_view reserved) = 0;
    virtual std::string describe(std::int32_t code) = 0;
};

}  // namespace vrn::services
