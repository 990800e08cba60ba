// Findings as text for a reader and as JSON.
#pragma once

#include <string>
#include <vector>

#include "hosts/cli/Findings.h"
#include "hosts/cli/Json.h"
#include "hosts/cli/Output.h"

namespace vrn::cli {

/// The findings of a file with its name and their positions in it, as compilers write them: editors find their way from there.
[[nodiscard]] std::string findingText(const std::string& file, const std::vector<Finding>& findings,
                                      const Style& style);
/// Findings of what is in no file yet, to stand aligned below a line about it.
[[nodiscard]] std::string findingList(const std::vector<Finding>& findings, const Style& style);

/// One finding as an object: code, severity and message always, the rest where there is any.
[[nodiscard]] Json findingJson(const Finding& finding);
[[nodiscard]] Json findingsJson(const std::vector<Finding>& findings);

/// One result of a SARIF run, as JSON text.
[[nodiscard]] std::string sarifResult(const std::string& path, const Finding& finding);
/// The result of a file that could not be read.
[[nodiscard]] std::string sarifFault(const std::string& path, const std::string& what);
/// A whole SARIF 2.1.0 document around results that are separated by ",".
[[nodiscard]] std::string sarifDocument(const std::string& results);

}  // namespace vrn::cli
