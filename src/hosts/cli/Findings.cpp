#include "hosts/cli/Findings.h"

#include <algorithm>
#include <array>

#include "hosts/cli/Output.h"
#include "text/Lists.h"

namespace vrn::cli {

namespace {

using method::MethodVersion;
using method::format::currentVersion;
using method::format::currentVersionText;

constexpr std::array kinds{
    FindingKind{"signature-missing", Severity::Error, "The method has no signature: the editor refuses it."},
    FindingKind{"signature-invalid", Severity::Error,
                "The signature does not match: the file was changed outside the editor, which refuses it."},
    FindingKind{"version-old", Severity::Note, "The method is of version 02 or 03, or says none."},
    FindingKind{"version-unsupported", Severity::Error, "The method says a version that the editor does not know."},
    FindingKind{"syringe-unknown", Severity::Error, "The instrument does not have the method's syringe."},
    FindingKind{"sequence-empty", Severity::Warning, "The method has no step."},
    FindingKind{"step-malformed", Severity::Error, "A step is not a cycle with its values in parentheses."},
    FindingKind{"cycle-unknown", Severity::Error,
                "The catalogue does not have a step's cycle: the editor reads no further than there."},
    FindingKind{"value-not-a-number", Severity::Error, "A value is neither a number nor a configured name."},
    FindingKind{"value-out-of-range", Severity::Error, "A number is outside of its parameter's range."},
    FindingKind{"value-not-in-list", Severity::Error, "A value names an object that the instrument does not have."},
    FindingKind{"name-unknown", Severity::Error, "A value refers to a user-defined name that is not defined any more."},
    FindingKind{"value-missing", Severity::Warning, "A step has fewer values than its cycle has parameters."},
    FindingKind{"value-surplus", Severity::Warning, "A step has more values than its cycle has parameters."},
    FindingKind{"cycle-outdated", Severity::Warning, "An embedded cycle is not the catalogue's any more."},
    FindingKind{"cycles-differ", Severity::Warning,
                "The embedded cycles are not those of the steps, in order of their first use."},
    FindingKind{"atoms-differ", Severity::Warning,
                "The atom line is not what the catalogue gives for any of the steps' cycles."},
    FindingKind{"names-differ", Severity::Warning,
                "The user-defined names that the method records are not those that its values use."},
    FindingKind{"catalogue-fault", Severity::Error,
                "A cycle's parameters cannot be used as the catalogue defines them; told once, of the catalogue."},
    FindingKind{"editor-report", Severity::Error, "The editor reported something that no other code stands for."},
};

const FindingKind& kindOf(std::string_view code) {
    return *std::find_if(kinds.begin(), kinds.end(), [code](const FindingKind& kind) { return kind.code == code; });
}

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

    std::vector<Finding> collect(const std::vector<Report>& reports) {
        addSignature();
        addVersion();
        addSyringe();
        if (inspection_->steps.empty()) {
            add("sequence-empty", "has no step", "insert a step with: vrnmethod edit");
        }
        for (std::size_t i = 0; i < inspection_->steps.size(); ++i) {
            addStep(i + 1, inspection_->steps[i]);
        }
        for (const auto& cycle : inspection_->cycles) {
            addCycle(cycle);
        }
        if (inspection_->verification.version == currentVersion) {
            addRecorded();
        }
        for (const auto& fault : inspection_->catalogueFaults) {
            addFault(fault);
        }
        for (const auto& report : reports) {
            add("editor-report", oneLine(report), "");
        }
        adaptFixes();
        return std::move(findings_);
    }

  private:
    Finding& add(std::string_view code, std::string message, std::string fix) {
        Finding finding;
        finding.kind = &kindOf(code);
        finding.message = std::move(message);
        finding.fix = std::move(fix);
        findings_.push_back(std::move(finding));
        return findings_.back();
    }

    Finding& addAt(std::size_t number, const method::InspectedStep& step, std::string_view code, std::string message,
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
            add("signature-invalid", "the signature does not match: the file was changed outside the editor",
                "compare it with a copy you trust: vrnmethod diff; to take it as it is: vrnmethod sign --force");
        } else {
            add("signature-missing", "has no signature", "sign it with: vrnmethod sign");
        }
    }

    void addVersion() {
        const auto& verification = inspection_->verification;
        if (verification.version == MethodVersion::Unsupported) {
            add("version-unsupported", "says version " + verification.unsupportedVersion + ", which is not known",
                "use the editor that wrote it");
        } else if (verification.version != currentVersion) {
            const auto& version = inspection_->content.version;
            add("version-old", version ? "is of version " + *version : "says no version",
                "bring it to version " + std::string(currentVersionText) + " with: vrnmethod convert");
        }
    }

    void addSyringe() {
        if (inspection_->syringeKnown) {
            return;
        }
        const auto& syringe = inspection_->content.syringe;
        add("syringe-unknown", syringe ? "the instrument has no syringe '" + *syringe + "'" : "names no syringe",
            "choose another with vrnmethod edit, one of: " + shortened(state_->cboSyringe.items()))
            .value = syringe.value_or("");
    }

    void addStep(std::size_t number, const method::InspectedStep& step) {
        if (!step.readable) {
            addAt(number, step, "step-malformed",
                  "'" + std::string(step.text) + "' is not a cycle with its values in parentheses", replaceOrDelete);
            return;
        }
        if (!step.known) {
            addAt(number, step, "cycle-unknown", "the catalogue has no cycle '" + std::string(step.macro) + "'",
                  std::string("put the cycle back into the catalogue, or ") + replaceOrDelete);
            return;
        }
        for (const auto& value : step.values) {
            addValue(number, step, value);
        }
        if (!step.missing.empty()) {
            const auto& parameter = *step.missing.front();
            addAt(number, step, "value-missing",
                  "ends before '" + parameter.row.name + "'" +
                      (step.missing.size() > 1 ? " and " + std::to_string(step.missing.size() - 1) + " more" : ""),
                  "set the values that are missing with: vrnmethod edit")
                .parameter = parameter.row.name;
        }
        if (!step.surplus.empty()) {
            addAt(number, step, "value-surplus",
                  "has " + counted(step.surplus.size(), "value") +
                      " that no parameter is for: " + shortened(step.surplus),
                  "drop what is too much with: vrnmethod update")
                .value = step.surplus.front();
        }
    }

    void addValue(std::size_t number, const method::InspectedStep& step, const method::InspectedValue& value) {
        using catalogue::ValueStatus;
        const auto& parameter = *value.parameter;
        std::string_view code;
        std::string fix = "set a value in the range or a configured name with: vrnmethod edit";
        switch (value.status) {
            case ValueStatus::Valid:
            case ValueStatus::NotKnown:
                return;  // what cannot be known has its reason in another finding
            case ValueStatus::NotANumber:
                code = "value-not-a-number";
                break;
            case ValueStatus::OutOfRange:
                code = "value-out-of-range";
                break;
            case ValueStatus::NotInList:
                code = "value-not-in-list";
                fix = parameter.row.items().empty()
                          ? std::string("use a cycle that this instrument can run: ") + replaceOrDelete
                          : "set another with vrnmethod edit, one of: " + shortened(parameter.row.items());
                break;
            case ValueStatus::UnknownName:
                code = "name-unknown";
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
        add("cycle-outdated", std::move(what), writeAnew).cycle = cycle.name;
    }

    // What the editor derives from the steps whenever it writes a method.
    void addRecorded() {
        for (const auto& name : inspection_->cyclesNotEmbedded) {
            add("cycles-differ", "is not embedded, though a step uses it", writeAnew).cycle = name;
        }
        for (const auto& cycle : inspection_->cycles) {
            if (!cycle.isUsed) {
                add("cycles-differ", "is embedded, though no step uses it", writeAnew).cycle = cycle.name;
            }
        }
        if (inspection_->cyclesInOtherOrder) {
            add("cycles-differ", "the embedded cycles are not in the order of the steps", writeAnew);
        }
        if (inspection_->atomsDiffer) {
            add("atoms-differ", "the atom line is not what the catalogue gives", writeAnew);
        }
        if (inspection_->configurationDiffers) {
            add("names-differ", "SLCONFIG does not hold the user-defined names that the values use", writeAnew);
        }
        if (inspection_->argumentsDiffer) {
            add("names-differ", "Arguments does not hold the user-defined names that the values use", writeAnew);
        }
    }

    void addFault(const method::CatalogueFault& fault) {
        auto& finding = add("catalogue-fault", faultText(fault), "mend the catalogue");
        finding.cycle = fault.cycle;
        finding.definition = fault.definition;
    }

    // What mends a method of the current version that is intact may not be possible with this one.
    void adaptFixes() {
        const auto version = inspection_->verification.version;
        const bool isOld = version != currentVersion && version != MethodVersion::Unsupported;
        const bool isIntact = inspection_->verification.code == 0;
        const bool hasOtherErrors = std::any_of(findings_.begin(), findings_.end(), [](const Finding& finding) {
            return finding.kind->severity == Severity::Error && !concernsSignature(finding);
        });
        for (auto& finding : findings_) {
            const auto code = finding.kind->code;
            if (version == MethodVersion::Unsupported && code != "version-unsupported" && code != "catalogue-fault") {
                finding.fix.clear();  // no command writes it
            } else if (isOld && concernsSignature(finding)) {
                finding.fix = "find an intact copy: methods of older versions are not signed any more";
            } else if (isOld && !isIntact) {
                finding.fix = code == "version-old" ? "find an intact copy, then: vrnmethod convert" : "";
            } else if (!inspection_->catalogueFaults.empty() && finding.fix == writeAnew) {
                finding.fix = "mend the catalogue first";
            } else if (isOld && finding.fix == writeAnew) {
                finding.fix = "embed the catalogue's with: vrnmethod convert";
            } else if (code == "signature-missing" && hasOtherErrors) {
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

}  // namespace

std::string_view severityName(Severity severity) noexcept {
    switch (severity) {
        case Severity::Error:
            return "error";
        case Severity::Warning:
            return "warning";
        case Severity::Note:
            break;
    }
    return "note";
}

std::optional<Severity> severityOf(std::string_view name) noexcept {
    for (const auto severity : {Severity::Note, Severity::Warning, Severity::Error}) {
        if (severityName(severity) == name) {
            return severity;
        }
    }
    return std::nullopt;
}

std::span<const FindingKind> findingKinds() noexcept { return kinds; }

std::vector<Finding> findingsOf(const method::EditorState& state, const method::Inspection& inspection,
                                const std::vector<Report>& reports) {
    return Collector(state, inspection).collect(reports);
}

bool concernsSignature(const Finding& finding) noexcept { return finding.kind->code.starts_with("signature-"); }

std::string faultText(const method::CatalogueFault& fault) {
    return "its parameter '" + fault.text + "' cannot be used, so that no step with it can be checked: " + fault.reason;
}

bool concernsCatalogue(const Finding& finding) noexcept { return finding.kind->code == "catalogue-fault"; }

std::string placeOf(const Finding& finding) {
    std::string place = finding.step > 0 ? "step " + std::to_string(finding.step) : "";
    if (!finding.cycle.empty()) {
        place += (place.empty() ? "cycle " : " ") + finding.cycle;
    }
    return finding.parameter.empty() ? place : place + ", " + finding.parameter;
}

}  // namespace vrn::cli
