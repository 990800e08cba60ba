#include "services/SignatureProfile.h"

#include <algorithm>
#include <array>
#include <string>

namespace vrn::services {

namespace {

constexpr std::string_view signatureNamespace = "http://www.w3.org/2000/09/xmldsig#";
constexpr std::string_view exclusiveCanonicalisation = "http://www.w3.org/2001/10/xml-exc-c14n#";
constexpr std::string_view hmacWithSha256 = "http://www.w3.org/2001/04/xmldsig-more#hmac-sha256";
constexpr std::string_view envelopedSignature = "http://www.w3.org/2000/09/xmldsig#enveloped-signature";
constexpr std::string_view digestSha256 = "http://www.w3.org/2001/04/xmlenc#sha256";
/// Readers look their key up under this name.
constexpr std::string_view keyName = "vrnMethodEditor";

enum class Content { Elements, Digest, Value, KeyName };

/// One element of the profile. Depth and order alone say what stands in what.
struct Row {
    std::size_t depth;
    std::string_view name;
    Content content = Content::Elements;
    std::string_view attribute = {};  ///< its only attribute; none when empty
    std::string_view value = {};
};

constexpr std::array profile{
    Row{0, "Signature"},
    Row{1, "SignedInfo"},
    Row{2, "CanonicalizationMethod", Content::Elements, "Algorithm", exclusiveCanonicalisation},
    Row{2, "SignatureMethod", Content::Elements, "Algorithm", hmacWithSha256},
    Row{2, "Reference", Content::Elements, "URI", ""},
    Row{3, "Transforms"},
    Row{4, "Transform", Content::Elements, "Algorithm", envelopedSignature},
    Row{4, "Transform", Content::Elements, "Algorithm", exclusiveCanonicalisation},
    Row{3, "DigestMethod", Content::Elements, "Algorithm", digestSha256},
    Row{3, "DigestValue", Content::Digest},
    Row{1, "SignatureValue", Content::Value},
    Row{1, "KeyInfo"},
    Row{2, "KeyName", Content::KeyName},
};
constexpr std::size_t maximumDepth = 4;

/// Whether the element has the row's attribute and no other. Declarations of the signature's namespace do not count.
bool hasAttributesOf(const Row& row, const xml::ElementView& element) {
    std::size_t expected = row.attribute.empty() ? 0 : 1;
    for (const xml::AttributeView& attribute : element.attributes) {
        if (attribute.namespaceUri == xml::xmlnsNamespace) {
            if (attribute.value != signatureNamespace) {
                return false;
            }
        } else if (expected == 1 && attribute.qualifiedName == row.attribute && attribute.value == row.value) {
            expected = 0;
        } else {
            return false;
        }
    }
    return expected == 0;
}

/// Holds a signature against the table, row by row, and collects its texts.
class ProfileReader final : public xml::NodeVisitor {
  public:
    bool startElement(const xml::ElementView& element) override {
        valid_ = valid_ && next_ < profile.size() && depth_ == profile[next_].depth &&
                 element.localName == profile[next_].name && element.namespaceUri == signatureNamespace &&
                 hasAttributesOf(profile[next_], element);
        if (valid_) {
            content_ = profile[next_++].content;
            ++depth_;
        }
        return valid_;
    }
    void endElement(const xml::ElementView& /*element*/) override {
        content_ = Content::Elements;
        --depth_;
    }
    void text(std::string_view content) override {
        switch (content_) {
            case Content::Elements:
                valid_ = valid_ && content.find_first_not_of(" \t\r\n") == std::string_view::npos;
                break;
            case Content::Digest:
                digest_ += content;
                break;
            case Content::Value:
                value_ += content;
                break;
            case Content::KeyName:
                keyName_ += content;
                break;
        }
    }
    // Writers of signatures make none of these, and outside `SignedInfo` nothing protects what they hold.
    void cdata(std::string_view /*content*/) override { valid_ = false; }
    void comment(std::string_view /*content*/) override { valid_ = false; }
    void processingInstruction(std::string_view /*target*/, std::string_view /*data*/) override { valid_ = false; }

    [[nodiscard]] bool matches() const { return valid_ && next_ == profile.size() && keyName_ == keyName; }
    [[nodiscard]] std::optional<Sha256> digest() const { return fromBase64(digest_); }
    [[nodiscard]] std::optional<Sha256> signatureValue() const { return fromBase64(value_); }

  private:
    bool valid_ = true;
    std::size_t next_ = 0;   ///< the row that must come next
    std::size_t depth_ = 0;  ///< of open elements
    Content content_ = Content::Elements;
    std::string digest_;
    std::string value_;
    std::string keyName_;
};

bool isSignature(const xml::Node& element) {
    if (element.namespaceUri() != signatureNamespace) {
        return false;
    }
    const auto name = element.name();
    return std::string_view(name).substr(name.find(':') + 1) == profile.front().name;
}

}  // namespace

bool isSignature(const xml::ElementView& element) {
    return element.localName == profile.front().name && element.namespaceUri == signatureNamespace;
}

std::vector<xml::Node> signatureChildren(const xml::Node& element) {
    std::vector<xml::Node> signatures;
    for (auto child = element.firstChild(); child; child = child.nextSibling()) {
        if (child.kind() == xml::NodeKind::Element && isSignature(child)) {
            signatures.push_back(child);
        }
    }
    return signatures;
}

NewSignature createSignature(const xml::Document& document, const Sha256& digest) {
    NewSignature made;
    std::array<xml::Node, maximumDepth + 1> open;
    for (const Row& row : profile) {
        const xml::Node element = document.createElement(row.name, signatureNamespace);
        if (!row.attribute.empty()) {
            element.setAttribute(row.attribute, row.value);
        }
        if (row.content == Content::Digest) {
            element.setText(base64(digest));
        } else if (row.content == Content::KeyName) {
            element.setText(keyName);
        } else if (row.content == Content::Value) {
            made.signatureValue = element;
        } else if (row.name == "SignedInfo") {
            made.signedInfo = element;
        }
        open[row.depth] = row.depth == 0 ? element : open[row.depth - 1].appendChild(element);
    }
    made.signature = open[0];
    return made;
}

std::optional<ClaimedSignature> readSignature(const xml::Node& signature) {
    ProfileReader reader;
    signature.accept(reader);
    if (!reader.matches()) {
        return std::nullopt;
    }
    const std::optional<Sha256> digest = reader.digest();
    const std::optional<Sha256> value = reader.signatureValue();
    if (!digest || !value) {
        return std::nullopt;
    }
    // What matches the profile has one element of this name, and it comes first.
    auto signedInfo = signature.firstChild();
    while (signedInfo.kind() != xml::NodeKind::Element) {
        signedInfo = signedInfo.nextSibling();
    }
    return ClaimedSignature{signedInfo, *digest, *value};
}

}  // namespace vrn::services
