// The W3C XML Conformance Test Suite as it lies in a folder, and what the editor's parser makes of its documents.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vrn::test {

/// One document of the suite and what a processor is to make of it.
struct ConformanceCase {
    std::string id;
    std::string type;     ///< "valid", "invalid", "not-wf" or "error"
    std::string version;  ///< of XML, "1.0" unless said otherwise
    std::string edition;  ///< of XML 1.0 that it holds for; empty for all
    bool namespaces = true;
    std::filesystem::path file;
};

/// All cases, in the order of the suite. `folder` is the package's, with `cleaned/` and `xmlconf/` in it.
[[nodiscard]] std::vector<ConformanceCase> conformanceCases(const std::filesystem::path& folder);

/// The document's text, decoded as the tool decodes a file. Throws `errors::Error`.
[[nodiscard]] std::string textOf(const std::filesystem::path& file);

/// The text without its document type declaration; the text itself when it has none.
[[nodiscard]] std::string withoutDoctype(const std::string& text);

enum class Verdict { Accepted, HasDoctype, Refused };

struct Reading {
    Verdict verdict = Verdict::Refused;
    std::string canonical;  ///< exclusive canonical form of what was accepted
    std::string reason;
};

/// What the editor's parser says of a text.
[[nodiscard]] Reading readingOf(const std::string& text);

}  // namespace vrn::test
