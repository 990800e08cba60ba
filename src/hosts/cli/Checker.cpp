#include "hosts/cli/Checker.h"

#include "hosts/cli/Positions.h"

namespace vrn::cli {

Checker::Result Checker::check(const xml::Document& method) {
    // What was said about the method before belongs to that one.
    static_cast<void>(engine_.takeReports());
    Result result{inspector_.inspect(method), {}};
    result.findings = findingsOf(engine_.state(), result.inspection, engine_.takeReports());
    return result;
}

Checker::Result Checker::check(const XmlFile& method) {
    auto result = check(method.document);
    locate(result.findings, method.text, method.document);
    return result;
}

}  // namespace vrn::cli
