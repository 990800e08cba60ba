// Signature components that are COM objects. They work on texts, the engine on documents.
#pragma once

#include "com/Dispatch.h"
#include "services/Signature.h"

namespace vrn::activex {

/// Calls the object by the names of ISignatureV4's members. What the object fails with goes on as `errors::Error`.
class SignatureObjectV4 final : public services::SignatureV4 {
  public:
    explicit SignatureObjectV4(com::Object object) : object_(std::move(object)) {}
    void sign(xml::Document& document, std::string_view key, std::string_view xpath) override;
    bool verify(const xml::Document& document, std::string_view key, std::string_view xpath) override;
    /// What the first element `SignatureValue` of a signed copy holds.
    std::string signatureValue(const xml::Document& document, std::string_view key, std::string_view xpath) override;

  private:
    com::Object object_;
};

/// As above, for ISignatureV23.
class SignatureObjectV23 final : public services::SignatureV23 {
  public:
    explicit SignatureObjectV23(com::Object object) : object_(std::move(object)) {}
    std::string sign(std::string_view text) override;
    std::int32_t verify(const xml::Document& document, std::string_view reserved) override;
    std::string describe(std::int32_t code) override;

  private:
    com::Object object_;
};

}  // namespace vrn::activex
