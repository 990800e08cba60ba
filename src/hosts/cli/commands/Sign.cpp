#include <algorithm>

#include "hosts/cli/Checker.h"
#include "hosts/cli/Commands.h"
#include "hosts/cli/FindingText.h"
#include "hosts/cli/Names.h"
#include "method/SignatureState.h"

namespace vrn::cli {

namespace {

using method::MethodVersion;
using method::SignatureState;
using method::format::currentVersion;
using method::format::currentVersionText;

struct SignArguments {
    SetArguments set;
    MethodArguments methods;
    WriteArguments write;
    bool force = false;
};

class Signer {
  public:
    Signer(const Console& console, const SignArguments& arguments, const SetTexts* set)
        : console_(&console), arguments_(&arguments) {
        if (set != nullptr) {
            checker_ = std::make_unique<Checker>(*set);
        } else {
            unchecked_ = std::make_unique<Engine>();
        }
    }

    Outcome sign(const MethodFile& file) {
        auto method = readMethod(file.path, *console_, arguments_->write);
        auto& state = engine().state();
        state.domMethod = method.document;
        const auto verification = method::VerifyLoadedMethod(state);
        if (verification.version != currentVersion) {
            return refused(method, verification.version == MethodVersion::Unsupported
                                       ? "its version is not known"
                                       : "it is not of version " + std::string(currentVersionText) + ": use convert");
        }
        const auto before = method::signatureState(verification, method::contentOf(method.document));
        if (before == SignatureState::Changed && !arguments_->force) {
            return refused(method,
                           "its signature does not match: look at what was changed with diff; --force signs it anew");
        }
        if (const auto errors = errorsOf(method); !errors.empty()) {
            return refused(method, "check finds errors; --force signs all the same", errors);
        }
        Outcome outcome;
        if (verification.code == 0) {
            passThrough(method, arguments_->write, outcome);
            return told(method, "unchanged", "is signed already", std::move(outcome));
        }
        method::MethodSigner(state).sign(method.document);
        writeBack(engine(), method, method.document, arguments_->write, outcome);
        const std::string be = arguments_->write.dryRun ? "would be " : "";
        return before == SignatureState::Changed
                   ? told(method, "signed-anew", "signature did not match; " + be + "signed anew", std::move(outcome))
                   : told(method, "signed", be + "signed", std::move(outcome));
    }

  private:
    Engine& engine() { return checker_ ? checker_->engine() : *unchecked_; }

    // What stands against signing, the signature apart.
    std::vector<Finding> errorsOf(const XmlFile& method) {
        if (arguments_->force || !checker_) {
            return {};
        }
        auto findings = checker_->check(method).findings;
        std::erase_if(findings, [](const Finding& finding) {
            return finding.kind->severity != Severity::Error || concernsSignature(finding);
        });
        return findings;
    }

    Outcome refused(const XmlFile& file, const std::string& why, const std::vector<Finding>& findings = {}) const {
        Outcome outcome;
        outcome.status = ExitStatus::Findings;
        if (arguments_->methods.json) {
            auto json = headOf(file, "refused");
            json["message"] = why;
            json["findings"] = findingsJson(findings);
            tell(file, outcome, jsonLine(json));
        } else {
            outcome.err = "vrnmethod: " + displayName(file.path) + ": not signed: " + why + "\n" +
                          findingText(file.path, findings, Style(console_->errHasColour));
        }
        return outcome;
    }

    [[nodiscard]] Json headOf(const XmlFile& file, const char* status) const {
        return reportHead(file, status, arguments_->write);
    }

    Outcome told(const XmlFile& file, const char* status, const std::string& words, Outcome outcome) const {
        tell(file, outcome,
             arguments_->methods.json ? jsonLine(headOf(file, status)) : displayName(file.path) + ": " + words + "\n");
        return outcome;
    }

    const Console* console_;
    const SignArguments* arguments_;
    std::unique_ptr<Checker> checker_;
    std::unique_ptr<Engine> unchecked_;
};

ExitStatus run(const Console& console, const SignArguments& arguments) {
    // Who forces has no need of a set; who names one all the same may have made a mistake in it.
    std::unique_ptr<SetTexts> set;
    if (!arguments.force || arguments.set.given()) {
        set = std::make_unique<SetTexts>(readSet(arguments.set, console));
    }
    const auto makeWork = [&]() -> MethodWork {
        return [signer = std::make_shared<Signer>(console, arguments, set.get())](const MethodFile& file) {
            return signer->sign(file);
        };
    };
    return runOverMethods(
        {console, arguments.methods, set ? set->files : std::vector<std::string>(), makeWork, &arguments.write, {}});
}

}  // namespace

void addSign(CLI::App& tool, Session& session) {
    Command command(tool, "sign", "Sign methods as they stand");
    const auto arguments = std::make_shared<SignArguments>();
    addMethodOptions(command, arguments->methods);
    addSetOptions(command, arguments->set);
    addWriteOptions(command, arguments->write);
    command.flag("-f,--force", arguments->force,
                 "Sign whatever check finds, anew where a signature does not match; no document set is needed then");
    command.footer(
        "Methods of version " + std::string(currentVersionText) +
        " without a signature get one, intact ones stay untouched. What check calls an error\n"
        "is not signed, nor is a method whose signature does not match: look at what was changed with diff against\n"
        "a copy that you trust, then use --force. A method from standard input goes to standard output.\n\n"
        "Examples:\n"
        "  vrnmethod sign --set instrument/ edited.xml\n"
        "  vrnmethod sign --set instrument/ --dry-run methods/\n"
        "  vrnmethod sign --force --backup .bak edited.xml");
    command.callback([arguments, &session] { session.status = run(session.console, *arguments); });
}

}  // namespace vrn::cli
