#include "hosts/cli/Checker.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "catalogue/CxmlValuesHandler.h"
#include "method/Format.h"
#include "method/MethodContent.h"
#include "services/Signature.h"
#include "services/SignatureProfile.h"
#include "text/Lists.h"

namespace vrn::cli {

namespace format = method::format;

namespace {

using method::MethodVersion;

// Lists of the instrument can be long; the first few show what is meant.
template <typename Text>
std::string shortened(const std::vector<Text>& items) {
    constexpr std::size_t most = 8;
    std::vector<std::string> first(items.begin(),
                                   items.begin() + static_cast<std::ptrdiff_t>(std::min(items.size(), most)));
    return text::join(first, ", ") + (items.size() > most ? ", …" : "");
}

class Collector {
  public:
    Collector(const method::EditorState& state, const method::Inspection& inspection)
        : state_(&state), inspection_(&inspection) {}

    std::vector<Finding> collect(const std::vector<std::string>& reports) {
        addSignature();
        addVersion();
        addSyringe();
        if (inspection_->steps.empty()) {
            add(FindingCode::SequenceEmpty, "has no step", "insert a step with: vrnmethod edit");
        }
        for (std::size_t i = 0; i < inspection_->steps.size(); ++i) {
            addStep(i + 1, inspection_->steps[i]);
        }
        for (const auto& cycle : inspection_->cycles) {
            addCycle(cycle);
        }
        if (inspection_->verification.version == format::currentVersion) {
            addRecorded();
        }
        for (const auto& fault : inspection_->catalogueFaults) {
            addFault(fault);
        }
        for (const auto& report : reports) {
            add(FindingCode::EditorReport, report, "");
        }
        adaptFixes();
        return std::move(findings_);
    }

  private:
    Finding& add(FindingCode code, std::string message, std::string fix) {
        Finding finding;
        finding.code = code;
        finding.message = std::move(message);
        finding.fix = std::move(fix);
        findings_.push_back(std::move(finding));
        return findings_.back();
    }

    Finding& addAt(std::size_t number, const method::InspectedStep& step, FindingCode code, std::string message,
                   std::string fix) {
        auto& finding = add(code, std::move(message), std::move(fix));
        finding.step = number;
        finding.cycle = step.macro;
        return finding;
    }

    void addSignature() {
        if (inspection_->verification.code == 0) {
            return;
        }
        if (inspection_->content.isSigned) {
            add(FindingCode::SignatureInvalid, "the signature does not match: the file was changed outside the editor",
                "compare it with a copy you trust: vrnmethod diff; to take it as it is: vrnmethod sign --force");
        } else {
            add(FindingCode::SignatureMissing, "has no signature", "sign it with: vrnmethod sign");
        }
    }

    void addVersion() {
        const auto& verification = inspection_->verification;
        if (verification.version == MethodVersion::Unsupported) {
            add(FindingCode::VersionUnsupported,
                "says version " + verification.unsupportedVersion + ", which is not known",
                "use the editor that wrote it");
        } else if (verification.version != format::currentVersion) {
            const auto& version = inspection_->content.version;
            add(FindingCode::VersionOld, version ? "is of version " + *version : "says no version",
                "bring it to version " + std::string(format::currentVersionText) + " with: vrnmethod convert");
        }
    }

    void addSyringe() {
        if (inspection_->syringeKnown) {
            return;
        }
        const auto& syringe = inspection_->content.syringe;
        add(FindingCode::SyringeUnknown,
            syringe ? "the instrument has no syringe '" + *syringe + "'" : "names no syringe",
            "choose another with vrnmethod edit, one of: " + shortened(state_->cboSyringe.items()))
            .value = syringe.value_or("");
    }

    void addStep(std::size_t number, const method::InspectedStep& step) {
        if (!step.readable) {
            addAt(number, step, FindingCode::StepMalformed,
                  "'" + std::string(step.text) + "' is not a cycle with its values in parentheses", replaceOrDelete);
            return;
        }
        if (!step.known) {
            addAt(number, step, FindingCode::CycleUnknown,
                  "the catalogue has no cycle '" + std::string(step.macro) + "'",
                  std::string("put the cycle back into the catalogue, or ") + replaceOrDelete);
            return;
        }
        for (const auto& value : step.values) {
            addValue(number, step, value);
        }
        if (!step.missing.empty()) {
            const auto& parameter = *step.missing.front();
            addAt(number, step, FindingCode::ValueMissing,
                  "ends before '" + parameter.row.name + "'" +
                      (step.missing.size() > 1 ? " and " + std::to_string(step.missing.size() - 1) + " more" : ""),
                  "set the values that are missing with: vrnmethod edit")
                .parameter = parameter.row.name;
        }
        if (!step.surplus.empty()) {
            addAt(number, step, FindingCode::ValueSurplus,
                  "has " + counted(step.surplus.size(), "value") +
                      " that no parameter is for: " + shortened(step.surplus),
                  "drop what is too much with: vrnmethod update")
                .value = step.surplus.front();
        }
    }

    void addValue(std::size_t number, const method::InspectedStep& step, const method::InspectedValue& value) {
        using catalogue::ValueStatus;
        const auto& parameter = *value.parameter;
        auto code = FindingCode::ValueNotANumber;
        std::string fix = "set a value in the range or a configured name with: vrnmethod edit";
        switch (value.status) {
            case ValueStatus::Valid:
            case ValueStatus::NotKnown:
                return;  // what cannot be known has its reason in another finding
            case ValueStatus::NotANumber:
                break;
            case ValueStatus::OutOfRange:
                code = FindingCode::ValueOutOfRange;
                break;
            case ValueStatus::NotInList:
                code = FindingCode::ValueNotInList;
                fix = parameter.row.items().empty()
                          ? std::string("use a cycle that this instrument can run: ") + replaceOrDelete
                          : "set another with vrnmethod edit, one of: " + shortened(parameter.row.items());
                break;
            case ValueStatus::UnknownName:
                code = FindingCode::NameUnknown;
                fix = "define the name in the configuration, or set another value with: vrnmethod edit";
                break;
        }
        auto& finding = addAt(number, step, code,
                              "'" + std::string(value.value) + "' " + catalogue::statusText(parameter, value.status),
                              std::move(fix));
        finding.parameter = parameter.row.name;
        finding.value = value.value;
    }

    void addCycle(const method::CycleComparison& cycle) {
        if (!cycle.isOutdated()) {
            return;
        }
        std::string what = "the embedded cycle is not the catalogue's: ";
        if (!cycle.isNamed) {
            what = "the embedded cycle's name does not stand in brackets, so that the editor cannot tell its date";
        } else {
            what += cycle.definitionsDiffer ? "its parameters have changed" : "its date is another";
        }
        add(FindingCode::CycleOutdated, std::move(what), writeAnew).cycle = cycle.name;
    }

    // What the editor derives from the steps whenever it writes a method.
    void addRecorded() {
        for (const auto& name : inspection_->cyclesNotEmbedded) {
            add(FindingCode::CyclesDiffer, "is not embedded, though a step uses it", writeAnew).cycle = name;
        }
        for (const auto& cycle : inspection_->cycles) {
            if (!cycle.isUsed) {
                add(FindingCode::CyclesDiffer, "is embedded, though no step uses it", writeAnew).cycle = cycle.name;
            }
        }
        if (inspection_->cyclesInOtherOrder) {
            add(FindingCode::CyclesDiffer, "the embedded cycles are not in the order of the steps", writeAnew);
        }
        if (inspection_->atomsDiffer) {
            add(FindingCode::AtomsDiffer, "the atom line is not what the catalogue gives", writeAnew);
        }
        if (inspection_->configurationDiffers) {
            add(FindingCode::NamesDiffer, "SLCONFIG does not hold the user-defined names that the values use",
                writeAnew);
        }
        if (inspection_->argumentsDiffer) {
            add(FindingCode::NamesDiffer, "Arguments does not hold the user-defined names that the values use",
                writeAnew);
        }
    }

    void addFault(const method::CatalogueFault& fault) {
        auto& finding = add(FindingCode::CatalogueFault, faultText(fault), "mend the catalogue");
        finding.cycle = fault.cycle;
        finding.definition = fault.definition;
    }

    // What mends an intact method of the current version may not be possible with this one.
    void adaptFixes() {
        const auto version = inspection_->verification.version;
        const bool isOld = version != format::currentVersion && version != MethodVersion::Unsupported;
        const bool isIntact = inspection_->verification.code == 0;
        const bool hasOtherErrors = std::any_of(findings_.begin(), findings_.end(), [](const Finding& finding) {
            return finding.isError() && !finding.concernsSignature();
        });
        for (auto& finding : findings_) {
            const auto code = finding.code;
            if (version == MethodVersion::Unsupported && code != FindingCode::VersionUnsupported &&
                code != FindingCode::CatalogueFault) {
                finding.fix.clear();  // no command writes it
            } else if (isOld && finding.concernsSignature()) {
                finding.fix = "find an intact copy: methods of older versions are not signed any more";
            } else if (isOld && !isIntact) {
                finding.fix = code == FindingCode::VersionOld ? "find an intact copy, then: vrnmethod convert" : "";
            } else if (!inspection_->catalogueFaults.empty() && finding.fix == writeAnew) {
                finding.fix = "mend the catalogue first";
            } else if (isOld && finding.fix == writeAnew) {
                finding.fix = "embed the catalogue's with: vrnmethod convert";
            } else if (code == FindingCode::SignatureMissing && hasOtherErrors) {
                finding.fix = "sign it with: vrnmethod sign --force; then mend what else is found";
            }
        }
    }

    static constexpr const char* replaceOrDelete = "replace or delete the step with: vrnmethod edit";
    static constexpr const char* writeAnew = "embed the catalogue's with: vrnmethod update";

    const method::EditorState* state_;
    const method::Inspection* inspection_;
    std::vector<Finding> findings_;
};

// The element of the method that a finding about it as a whole is about, null where it is missing; nothing for one about no part.
std::optional<xml::Node> partOf(const xml::Node& root, Subject subject) {
    switch (subject) {
        case Subject::Signature: {
            const auto signatures = services::signatureChildren(root);
            return signatures.empty() ? root.child(services::signatureElementV23) : signatures.front();
        }
        case Subject::Version:
            return root.child(format::version.name());
        case Subject::Syringe:
            return root.selectSingleNode(format::syringeSize.belowRoot());
        case Subject::Sequence:
            return root.selectSingleNode(format::sequence.belowRoot());
        case Subject::Cycles:
            return root.selectSingleNode(format::cycles.belowRoot());
        case Subject::Atoms:
            return root.child(format::atoms.name());
        case Subject::Names:
            return root.child(format::configuration.name());
        case Subject::Step:
        case Subject::Catalogue:
        case Subject::Editor:
            break;
    }
    return std::nullopt;
}

// Gives every finding about a part of the method the position of that part, or of what should have it. Takes time linear to the
// text that the document was parsed from, as long as findings come in the order of the steps.
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
            continue;  // the catalogue's
        }
        if (finding.step > 0) {
            finding.position = placeOf(steps.at(finding.step - 1));
        } else if (const auto* const cycle = method::findCycle(cycles, finding.cycle)) {
            finding.position = placeOf(cycleNames.at(static_cast<std::size_t>(cycle - cycles.data())));
        } else if (const auto part = partOf(root, finding.kind().subject)) {
            finding.position = placeOf(*part);
        }
    }
}

// The place of a parameter definition of a cycle, from 0. That of the cycle when it has no such definition.
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

}  // namespace

std::string faultText(const method::CatalogueFault& fault) {
    return "its parameter '" + fault.text + "' cannot be used, so that no step with it can be checked: " + fault.reason;
}

Checker::Result Checker::check(const xml::Document& method) {
    // What was reported before concerns another method.
    static_cast<void>(engine_.takeReports());
    Result result{inspector_.inspect(method), {}};
    result.findings = Collector(engine_.state(), result.inspection).collect(engine_.takeReports());
    locateInCatalogue(result.findings);
    return result;
}

Checker::Result Checker::check(const XmlFile& method) {
    auto result = check(method.document);
    locate(result.findings, method.document);
    return result;
}

// The catalogue's own faults are reported where they are.
void Checker::locateInCatalogue(std::vector<Finding>& findings) {
    for (auto& finding : findings) {
        if (finding.concernsCatalogue()) {
            const auto& macros = engine_.state().xmlValues->macros(engine_.state().domMacros);
            const auto macro = macros.position(finding.cycle);
            finding.file = macrosFile_;
            finding.position = definitionPosition(macro ? macros.macros().at(*macro) : xml::Node(), finding.definition);
        }
    }
}

}  // namespace vrn::cli
