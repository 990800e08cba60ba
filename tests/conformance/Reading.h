// What the editor makes of a document: a file's text, the verdict on it, and all of it that can be seen as one line.
#pragma once

#include <filesystem>
#include <string>

#include "xml/Dom.h"

namespace vrn::test {

/// Throws `errors::Error`.
[[nodiscard]] std::string bytesOf(const std::filesystem::path& file);
/// The document's text, decoded as the tool decodes a file. Throws `errors::Error`.
[[nodiscard]] std::string textOf(const std::filesystem::path& file);

enum class Verdict { Accepted, HasDoctype, Refused };

/// The document, loaded from this text or refused.
[[nodiscard]] xml::Document documentOf(const std::string& text);
[[nodiscard]] Verdict verdictOf(const xml::Document& document);

/// The document's error with code, place and line; or fingerprints of its tree, with the place of every node, and of its
/// canonical form.
[[nodiscard]] std::string reportOn(const xml::Document& document);

/// A short text in which texts differ.
[[nodiscard]] std::string fingerprint(const std::string& text);

}  // namespace vrn::test
