#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

#include "audit/AuditTrail.h"
#include "hosts/cli/Checker.h"
#include "hosts/cli/Commands.h"
#include "hosts/cli/EditScript.h"

namespace vrn::cli {

namespace {

struct EditArguments {
    SetArguments set;
    WriteArguments write;
    std::string method;
    std::string script;
    std::string audit;
    bool force = false;
    bool json = false;
};

class Editing {
  public:
    Editing(const Console& console, const EditArguments& arguments)
        : Editing(console, arguments, readSet(arguments.set, console)) {}

    ExitStatus run() {
        if (arguments_->method == standardInput && arguments_->script == standardInput) {
            throw Fault("standard input cannot be both the method and the script");
        }
        if (arguments_->method == standardInput && auditGoesToOutput()) {
            throw Fault("standard output cannot be both the method and the audit trail");
        }
        requireApart();
        const auto commands = parseEditScript(arguments_->script, readFile(arguments_->script, *console_));
        const auto method = readMethod(arguments_->method, *console_, arguments_->write);
        auto& engine = checker_.engine();
        const auto inspection = editable(method);
        const auto repair = repaired(engine, method, inspection, arguments_->script, commands);
        engine.load(repair ? repair->text : method.text);
        carryOut(engine, arguments_->script, repair ? repair->commands : commands);
        const auto audit = auditTrail(repair ? &method : nullptr);
        const auto auditReports = engine.takeReports();
        const auto built = engine.editor().GetMethodXml();
        if (const auto reports = engine.takeReports(); !built || !reports.empty()) {
            throw Fault(displayName(method.path) +
                        ": nothing was written: " + (reports.empty() ? "the method has no step" : reports.front()));
        }
        const auto findings = checker_.check(*built).findings;
        const bool isAtFault = hasErrors(findings);
        if (isAtFault && !arguments_->force) {
            report(method, "refused", "not written: check would find errors; --force writes all the same", findings);
            return ExitStatus::Findings;
        }
        write(method, *built, audit);
        for (const auto& missing : auditReports) {
            console_->err << "vrnmethod: the audit trail is not complete: " << missing << "\n";
        }
        report(method, "edited",
               (arguments_->write.dryRun ? "would be edited: " : "edited: ") + counted(commands.size(), "edit"),
               findings);
        return isAtFault ? ExitStatus::Findings : ExitStatus::Well;
    }

  private:
    Editing(const Console& console, const EditArguments& arguments, const SetTexts& set)
        : console_(&console), arguments_(&arguments), checker_(set) {
        arguments.write.inUse->add(set.files);
        arguments.write.inUse->add({arguments.method, arguments.script});
    }

    // What the call writes harms nothing that it reads, whatever names these have.
    void requireApart() const {
        const auto& audit = arguments_->audit;
        if (!auditGoesToFile()) {
            return;
        }
        arguments_->write.inUse->requireFree(audit, audit, "the audit trail");
        const auto identity = system::identityOf(audit);
        if (identity == system::identityOfOutput()) {
            throw Fault(displayName(audit) + ": is the standard output already; use --audit -");
        }
        const auto& suffix = arguments_->write.backupSuffix;
        if (!suffix.empty() && arguments_->method != standardInput &&
            identity == system::identityOf(system::backupOf(arguments_->method, suffix))) {
            throw Fault(displayName(audit) + ": cannot be both the audit trail and the backup");
        }
    }

    // What the editor would not show cannot be edited; steps that it cannot read apart.
    method::Inspection editable(const XmlFile& method) {
        auto result = checker_.check(method.document);
        for (const auto& finding : result.findings) {
            if (finding.kind().loss == Loss::Everything) {
                throw Fault(displayName(method.path) + ": cannot be edited: " +
                            (finding.cycle.empty() ? "" : placeOf(finding) + ": ") + finding.message);
            }
        }
        return std::move(result.inspection);
    }

    // Against the method as it was handed over, which is not what the editor has loaded when steps were repaired.
    std::string auditTrail(const XmlFile* original) {
        if (arguments_->audit.empty()) {
            return {};
        }
        auto& engine = checker_.engine();
        return original == nullptr ? engine.editor().AuditTrail()
                                   : audit::AuditTrailAgainst(engine.state(), original->document);
    }

    [[nodiscard]] bool auditGoesToOutput() const {
        return arguments_->audit == standardInput || system::isOutput(arguments_->audit);
    }
    [[nodiscard]] bool auditGoesToFile() const {
        return !arguments_->audit.empty() && !auditGoesToOutput() && !system::isStream(arguments_->audit);
    }

    // The audit trail first: a method is not to change without one.
    void write(const MethodToWrite& method, const xml::Document& built, const std::string& audit) {
        if (arguments_->write.dryRun) {
            writeMethod(method, built);
            return;
        }
        const system::InterruptGuard guard;
        requireWritable(method, arguments_->write);
        if (auditGoesToFile()) {
            writeWithAuditFile(method, built, audit + "\n");
            return;
        }
        if (auditGoesToOutput()) {
            console_->out << audit << '\n' << std::flush;
            if (!console_->out) {
                throw Fault("the output cannot be written");
            }
        } else if (!arguments_->audit.empty()) {
            system::writeStream(arguments_->audit, audit + "\n");
        }
        writeMethod(method, built);
    }

    // The audit trail is as it was before when the method cannot be written.
    void writeWithAuditFile(const MethodToWrite& method, const xml::Document& built, const std::string& audit) {
        const auto& path = arguments_->audit;
        std::error_code error;
        const bool existed = std::filesystem::exists(path, error);
        const auto before = existed ? readFile(path, *console_) : std::string();
        system::replaceFile(path, audit, "");
        try {
            writeMethod(method, built);
        } catch (...) {
            if (existed) {
                system::replaceFile(path, before, "");
            } else {
                std::filesystem::remove(path, error);
            }
            throw;
        }
    }

    void writeMethod(const MethodToWrite& method, const xml::Document& built) {
        Outcome outcome;
        writeBack(checker_.engine(), method, built, arguments_->write, outcome);
        console_->out << outcome.method;
    }

    void report(const XmlFile& method, const char* status, const std::string& words,
                const std::vector<Finding>& findings) const {
        auto& out = method.path == standardInput || auditGoesToOutput() ? console_->err : console_->out;
        if (arguments_->json) {
            auto json = reportHead(method, status, arguments_->write);
            json["findings"] = findingsJson(findings);
            out << jsonLine(json);
            return;
        }
        out << displayName(method.path) << ": " << words << "\n"
            << findingList(findings, Style(console_->outHasColour));
    }

    const Console* console_;
    const EditArguments* arguments_;
    Checker checker_;
};

}  // namespace

void addEdit(CLI::App& tool, Call& call) {
    Command command(tool, "edit", "Change a method by a script");
    const auto arguments = std::make_shared<EditArguments>();
    command.option("METHOD", arguments->method, "Method file, or - for standard input").required().metavar("");
    command.option("--script", arguments->script, "File with the edits, or - for standard input")
        .required()
        .metavar("FILE");
    command
        .option("--audit", arguments->audit,
                "Write the audit trail document of the changes to this file, - for standard output")
        .metavar("FILE");
    command.flag("-f,--force", arguments->force, "Write even what check would call an error");
    command.flag("--json", arguments->json, "Print one JSON object");
    addSetOptions(command, arguments->set);
    addWriteOptions(command, arguments->write);
    command.footer(
        std::string(editScriptHelp) +
        "\n\nA step that the editor cannot read can be deleted or replaced; a script does that first. Every edit passes\n"
        "the checks of the editor's window. The file is written when all of them went through,\n"
        "and stays as it is otherwise.\n\n"
        "Examples:\n"
        "  vrnmethod edit method.xml --script changes.txt --set instrument/ --audit audit.xml\n"
        "  echo 'set 2 Volume=5' | vrnmethod edit method.xml --script - --set instrument/");
    command.callback([arguments, &call] {
        call.about = {{"file", displayName(arguments->method)}};
        call.outputIsTaken = arguments->method == standardInput || arguments->audit == standardInput;
        call.status = Editing(call.console, *arguments).run();
    });
}

}  // namespace vrn::cli
