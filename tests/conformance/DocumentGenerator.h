// Documents full of what readers of namespaces and canonical forms get wrong, from a seed.
#pragma once

#include <cstdint>
#include <string>

namespace vrn::test {

/// A well-formed document, as two texts with the same content.
struct GeneratedDocument {
    std::string text;
    /// Without the white space that the editor takes for layout, and with stand-ins for namespaces that libxml2 refuses to write in
    /// canonical form, because they are no absolute URIs, or writes without escaping them. Its canonical form is that of `text`
    /// once `withNamespaces` has put the namespaces back.
    std::string forPeer;
};

/// The same seed gives the same document on every system. Namespaces are declared, undeclared and redeclared over several levels,
/// prefixes rebound, one namespace has several prefixes; names and prefixes have letters of several scripts; text, CDATA,
/// references, comments and instructions alternate, with line ends of all kinds. In one document of sixteen the root begins
/// close to 32 KB from the start.
[[nodiscard]] GeneratedDocument generatedDocument(std::uint64_t seed);

/// A text with the namespaces in place of their stand-ins.
[[nodiscard]] std::string withNamespaces(std::string text);

}  // namespace vrn::test
