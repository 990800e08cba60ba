#include <ostream>

#include "hosts/cli/Commands.h"
#include "hosts/cli/Json.h"
#include "hosts/cli/Names.h"
#include "hosts/cli/Output.h"
#include "method/SignatureState.h"

namespace vrn::cli {

namespace {

using method::SignatureState;

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

}  // namespace

void addVerify(CLI::App& tool, Session& session) {
    Command command(tool, "verify", "Tell whether methods are as the editor signed them");
    const auto methods = std::make_shared<MethodArguments>();
    addMethodOptions(command, *methods);
    command.footer(
        "The signature alone is looked at, so no document set is needed. It shows that a method was changed\n"
        "outside the editor, not who changed it. Exit status 1 when a method is not intact.\n\n"
        "Examples:\n"
        "  vrnmethod verify methods/\n"
        "  vrnmethod verify --json methods/ | jq -r 'select(.status != \"intact\") | .file'");
    command.callback([methods, &session] {
        const auto& console = session.console;
        session.status = runOverMethods(
            {console, *methods, {}, [&console, &methods] { return verifier(console, methods->json); }, nullptr, {}});
    });
}

}  // namespace vrn::cli
