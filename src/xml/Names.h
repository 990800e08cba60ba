// What must be refused before a node is made: names and contents that XML text cannot hold. Each function fails
// with error 5.
#pragma once

#include <string>
#include <string_view>

namespace vrn::xml {

/// Whether the text is an XML name without a colon.
[[nodiscard]] bool isPlainName(std::string_view name) noexcept;

/// A name without a prefix.
void requirePlainName(std::string_view name);
/// As above, and not "xmlns", which would declare a namespace.
void requireAttributeName(std::string_view name);
/// The target of an instruction: "xml" is the declaration, other spellings of it are reserved.
void requireTarget(std::string_view target);
/// A namespace that an element may declare: not one of the two that XML itself has.
void requireNamespaceUri(std::string_view uri);
/// Characters that XML can hold.
void requireText(std::string_view text);

// Contents that cannot be escaped come back as a parse of their written form gives them: line ends as LF.
[[nodiscard]] std::string instructionContent(std::string_view data);
[[nodiscard]] std::string commentContent(std::string_view text);
[[nodiscard]] std::string cdataContent(std::string_view text);
/// The text with every line end, CR LF or CR, as LF.
[[nodiscard]] std::string withLineFeeds(std::string_view text);

}  // namespace vrn::xml
