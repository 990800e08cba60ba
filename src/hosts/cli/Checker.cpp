#include "hosts/cli/Checker.h"

#include "catalogue/CxmlValuesHandler.h"
#include "hosts/cli/Positions.h"

namespace vrn::cli {

Checker::Result Checker::check(const xml::Document& method) {
    // What was said about the method before belongs to that one.
    static_cast<void>(engine_.takeReports());
    Result result{inspector_.inspect(method), {}};
    result.findings = findingsOf(engine_.state(), result.inspection, engine_.takeReports());
    locateInCatalogue(result.findings);
    return result;
}

void Checker::locateInCatalogue(std::vector<Finding>& findings) {
    for (auto& finding : findings) {
        if (concernsCatalogue(finding)) {
            const auto& macros = engine_.state().xmlValues->macros(engine_.state().domMacros);
            const auto macro = macros.position(finding.cycle);
            finding.file = macrosFile_;
            finding.position = definitionPosition(macro ? macros.macros().at(*macro) : xml::Node(), finding.definition);
        }
    }
}

Checker::Result Checker::check(const XmlFile& method) {
    auto result = check(method.document);
    locate(result.findings, method.document);
    return result;
}

}  // namespace vrn::cli
