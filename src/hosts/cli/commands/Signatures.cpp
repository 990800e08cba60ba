// The two commands about signatures: verify looks at them, sign makes them.
#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

#include "hosts/cli/Checker.h"
#include "hosts/cli/Commands.h"
#include "method/SignatureState.h"

namespace vrn::cli {

namespace {

using method::MethodVersion;
using method::SignatureState;
using method::format::currentVersion;
using method::format::currentVersionText;

struct Verdict {
    SignatureState state = SignatureState::Unknown;
    std::string message;
    std::string version;
};

Verdict verdictOn(const method::VerificationResult& result, const method::MethodContent& content) {
    Verdict verdict{method::signatureState(result, content), {}, content.version.value_or("")};
    switch (verdict.state) {
        case SignatureState::Intact:
            break;
        case SignatureState::Changed:
            verdict.message = "the file was changed outside the editor";
            break;
        case SignatureState::Unsigned:
            verdict.message = "there is no signature";
            break;
        case SignatureState::Unknown:
            verdict.message = "how version " + result.unsupportedVersion + " is signed is not known";
            break;
    }
    return verdict;
}

std::string textOf(const std::string& file, const Verdict& verdict, const Style& style) {
    const auto status = method::signatureStateName(verdict.state);
    const bool intact = verdict.state == SignatureState::Intact;
    auto line = padded(intact ? style.green(status) : style.red(status), 10) + displayName(file);
    line += verdict.version.empty() ? " (no version)" : " (version " + printable(verdict.version) + ")";
    return line + (verdict.message.empty() ? "" : ": " + printable(verdict.message)) + "\n";
}

Json jsonOf(const std::string& file, const Verdict& verdict) {
    Json json = {{"file", displayName(file)}, {"status", method::signatureStateName(verdict.state)}};
    json["version"] = verdict.version.empty() ? Json() : Json(verdict.version);
    if (!verdict.message.empty()) {
        json["message"] = verdict.message;
    }
    return json;
}

MethodWork verifier(const Console& console, bool json) {
    return [engine = std::make_shared<Engine>(), &console, json](const MethodFile& file) {
        const auto method = readXmlFile(file.path, console, "Method");
        auto& state = engine->state();
        state.domMethod = method.document;
        const auto result = method::VerifyLoadedMethod(state);
        const auto verdict = verdictOn(result, method::contentOf(method.document));
        Outcome outcome;
        outcome.status = verdict.state == SignatureState::Intact ? ExitStatus::Well : ExitStatus::Findings;
        outcome.out =
            json ? jsonLine(jsonOf(file.path, verdict)) : textOf(file.path, verdict, Style(console.outHasColour));
        return outcome;
    };
}

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
            return done(method, "unchanged", "is signed already", std::move(outcome));
        }
        method::MethodSigner(state).sign(method.document);
        writeBack(engine(), method, method.document, arguments_->write, outcome);
        const std::string be = arguments_->write.dryRun ? "would be " : "";
        return before == SignatureState::Changed
                   ? done(method, "signed-anew", "signature did not match; " + be + "signed anew", std::move(outcome))
                   : done(method, "signed", be + "signed", std::move(outcome));
    }

  private:
    Engine& engine() { return checker_ ? checker_->engine() : *unchecked_; }

    // Why the method is not to be signed, the signature apart.
    std::vector<Finding> errorsOf(const XmlFile& method) {
        if (arguments_->force || !checker_) {
            return {};
        }
        auto findings = checker_->check(method).findings;
        std::erase_if(findings,
                      [](const Finding& finding) { return !finding.isError() || finding.concernsSignature(); });
        return findings;
    }

    Outcome refused(const XmlFile& file, const std::string& why, const std::vector<Finding>& findings = {}) const {
        Outcome outcome;
        outcome.status = ExitStatus::Findings;
        if (arguments_->methods.json) {
            auto json = headOf(file, "refused");
            json["message"] = why;
            json["findings"] = findingsJson(findings);
            report(file, outcome, jsonLine(json));
        } else {
            outcome.err = "vrnmethod: " + displayName(file.path) + ": not signed: " + why + "\n" +
                          findingText(file.path, findings, Style(console_->errHasColour));
        }
        return outcome;
    }

    [[nodiscard]] Json headOf(const XmlFile& file, const char* status) const {
        return reportHead(file, status, arguments_->write);
    }

    Outcome done(const XmlFile& file, const char* status, const std::string& words, Outcome outcome) const {
        report(
            file, outcome,
            arguments_->methods.json ? jsonLine(headOf(file, status)) : displayName(file.path) + ": " + words + "\n");
        return outcome;
    }

    const Console* console_;
    const SignArguments* arguments_;
    std::unique_ptr<Checker> checker_;
    std::unique_ptr<Engine> unchecked_;
};

ExitStatus run(const Console& console, const SignArguments& arguments) {
    // With --force no set is needed; one that is named all the same may be at fault.
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

void addVerify(CLI::App& tool, Call& call) {
    Command command(tool, "verify", "Tell whether methods are as the editor signed them");
    const auto methods = std::make_shared<MethodArguments>();
    addMethodOptions(command, *methods);
    command.footer(
        "The signature alone is looked at, so no document set is needed. It shows that a method was changed\n"
        "outside the editor, not who changed it. Exit status 1 when a method is not intact.\n\n"
        "Examples:\n"
        "  vrnmethod verify methods/\n"
        "  vrnmethod verify --json methods/ | jq -r 'select(.status != \"intact\") | .file'");
    command.callback([methods, &call] {
        const auto& console = call.console;
        call.status = runOverMethods(
            {console, *methods, {}, [&console, &methods] { return verifier(console, methods->json); }, nullptr, {}});
    });
}

void addSign(CLI::App& tool, Call& call) {
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
    command.callback([arguments, &call] { call.status = run(call.console, *arguments); });
}

}  // namespace vrn::cli
