// Findings as text for a reader and as JSON.
#pragma once

#include <string>
#include <vector>

#include "hosts/cli/Findings.h"
#include "hosts/cli/Json.h"
#include "hosts/cli/Output.h"

namespace vrn::cli {

/// The file's name and below it the findings, aligned; empty without findings.
[[nodiscard]] std::string findingText(const std::string& file, const std::vector<Finding>& findings,
                                      const Style& style);

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
