#include "hosts/cli/Positions.h"

#include <algorithm>
#include <array>

#include "method/Format.h"
#include "method/MethodContent.h"
#include "services/Signature.h"
#include "services/SignatureProfile.h"

namespace vrn::cli {

namespace format = method::format;

namespace {

// The element of the method that a finding about it as a whole is about; none for one about no part.
xml::Node headElement(const xml::Node& root, std::string_view code) {
    if (code.starts_with("signature-")) {
        const auto signatures = services::signatureChildren(root);
        return signatures.empty() ? root.child(services::signatureElementV23) : signatures.front();
    }
    if (code.starts_with("version-")) {
        return root.child(format::version.name());
    }
    if (code.starts_with("syringe-")) {
        return root.selectSingleNode(format::syringeSize.belowRoot());
    }
    if (code.starts_with("sequence-")) {
        return root.selectSingleNode(format::sequence.belowRoot());
    }
    if (code == "atoms-differ") {
        return root.child(format::atoms.name());
    }
    if (code == "names-differ") {
        return root.child(format::configuration.name());
    }
    return root.selectSingleNode(format::cycles.belowRoot());
}

bool concernsPart(std::string_view code) {
    constexpr std::array<std::string_view, 7> parts{"signature-",   "version-",     "syringe-",     "sequence-",
                                                    "atoms-differ", "names-differ", "cycles-differ"};
    return std::any_of(parts.begin(), parts.end(), [code](std::string_view part) { return code.starts_with(part); });
}

}  // namespace

void locate(std::vector<Finding>& findings, const xml::Document& document) {
    const auto root = document.documentElement();
    if (findings.empty() || !root) {
        return;
    }
    const auto steps = method::stepNodes(document);
    const auto cycles = method::embeddedCycles(document);
    const auto data = root.selectSingleNode(format::cycles.belowRoot());
    const auto cycleNames = data ? data.children(format::cycleHeading.name()) : std::vector<xml::Node>();
    const auto placeOf = [&root](const xml::Node& node) { return (node ? node : root).position(); };
    for (auto& finding : findings) {
        if (!finding.file.empty()) {
            continue;  // it stands elsewhere
        }
        if (finding.step > 0) {
            finding.position = placeOf(steps.at(finding.step - 1));
        } else if (const auto* const cycle = method::findCycle(cycles, finding.cycle)) {
            finding.position = placeOf(cycleNames.at(static_cast<std::size_t>(cycle - cycles.data())));
        } else if (concernsPart(finding.kind->code)) {
            finding.position = placeOf(headElement(root, finding.kind->code));
        }
    }
}

xml::Position definitionPosition(const xml::Node& macro, std::size_t definition) {
    const auto variables = macro ? macro.child("Variables") : xml::Node();
    auto node = variables ? variables.firstChild() : xml::Node();
    for (std::size_t at = 0; node; node = node.nextSibling()) {
        if (node.kind() == xml::NodeKind::Element && at++ == definition) {
            return node.position();
        }
    }
    return macro ? macro.position() : xml::Position();
}

}  // namespace vrn::cli
