// The commands that concern no method in a file: the scripted host, and texts that the program holds or makes of itself.
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <utility>

#include "Texts.h"
#include "errors/modErr.h"
#include "hosts/cli/Commands.h"
#include "hosts/cli/Help.h"
#include "hosts/script/ScriptHost.h"
#include "services/EmbeddedSignatures.h"

namespace vrn::cli {

namespace {

// For a command that prints one text: adds `--json`, and gives what prints the text as it is or, with that option, as an object that
// has it under `key`.
std::function<void(std::string_view)> textPrinter(Command& command, Call& call, std::string key) {
    const auto json = std::make_shared<bool>(false);
    command.flag("--json", *json, "Print one JSON object");
    return [json, key = std::move(key), &call](std::string_view text) {
        if (*json) {
            call.console.out << jsonLine({{key, text}});
        } else {
            call.console.out << text;
        }
        call.console.out << std::flush;
    };
}

}  // namespace

void addHost(CLI::App& tool, Call& call) {
    Command command(tool, "host", "Hold one editor and answer JSON requests, one a line");
    auto separator = std::make_shared<std::string>(".");
    command.option("--decimal-separator", *separator, "Decimal separator of the locale that the editor works in")
        .metavar("TEXT")
        .showDefault();
    command.footer(std::string(protocolHelp));
    command.callback([separator, &call] {
        auto services = services::embeddedServices();
        services.locale = std::make_shared<services::FixedLocaleService>(*separator);
        const auto host = script::makeScriptHost(std::move(services));
        script::answerLines(*host, call.console.in, call.console.out);
    });
}

void addKey(CLI::App& tool, Call& call) {
    Command command(tool, "key", "Print the key of method signatures, as standard verifiers want it");
    command.footer(
        "The key is public: a signature shows that a method was changed outside the editor, not who changed it.\n\n"
        "Example:\n"
        "  vrnmethod key > key.txt && xmlsec1 --verify --hmackey:vrnMethodEditor key.txt METHOD.xml");
    const auto print = textPrinter(command, call, "key");
    command.callback([print] {
        services::EmbeddedSignatureV4 component;
        print(services::signatureKeyV4(component));
    });
}

void addSchema(CLI::App& tool, Call& call) {
    Command command(tool, "schema", "Print an XML Schema of a kind of document");
    const auto kind = std::make_shared<std::string>();
    command.option("DOCUMENT", *kind, "The kind: macros, objects, config, method or audit")
        .required()
        .metavar("")
        .oneOf({"macros", "objects", "config", "method", "audit"});
    command.footer(
        "A schema tells the form of a document; what its values are worth on an instrument, check tells.\n\n"
        "Examples:\n"
        "  vrnmethod schema method > method.xsd\n"
        "  xmllint --noout --schema method.xsd methods/*.xml");
    const auto print = textPrinter(command, call, "schema");
    command.callback([kind, print] {
        static const std::map<std::string, std::string_view> schemas{{"macros", macrosSchema},
                                                                     {"objects", objectsSchema},
                                                                     {"config", configSchema},
                                                                     {"method", methodSchema},
                                                                     {"audit", auditSchema}};
        print(schemas.at(*kind));
    });
}

void addCompletion(CLI::App& tool, Call& call) {
    Command command(tool, "completion", "Print a completion script for a shell");
    const auto shell = std::make_shared<std::string>();
    command.option("SHELL", *shell, "The shell: bash, zsh or fish")
        .required()
        .metavar("")
        .oneOf({"bash", "zsh", "fish"});
    command.footer(
        "Examples:\n"
        "  vrnmethod completion bash > /etc/bash_completion.d/vrnmethod\n"
        "  vrnmethod completion zsh > ~/.zfunc/_vrnmethod\n"
        "  vrnmethod completion fish > ~/.config/fish/completions/vrnmethod.fish");
    const auto print = textPrinter(command, call, "completion");
    command.callback([shell, print, &tool] {
        const auto help = helpOf(tool);
        print(*shell == "bash" ? bashCompletion(help) : *shell == "zsh" ? zshCompletion(help) : fishCompletion(help));
    });
}

void addMan(CLI::App& tool, Call& call) {
    Command command(tool, "man", "Print the manual page");
    command.footer(
        "It is made from the same descriptions as --help.\n\n"
        "Examples:\n"
        "  vrnmethod man | man -l -\n"
        "  vrnmethod man > /usr/local/share/man/man1/vrnmethod.1");
    const auto print = textPrinter(command, call, "man");
    command.callback([print, &tool] { print(manPage(helpOf(tool), errors::versionText())); });
}

}  // namespace vrn::cli
