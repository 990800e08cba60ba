// The W3C XML Conformance Test Suite as it lies in a folder.
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

/// The text without its document type declaration; the text itself when it has none.
[[nodiscard]] std::string withoutDoctype(const std::string& text);

}  // namespace vrn::test
