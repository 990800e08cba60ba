// vrnmethod: the method editor without windows.
#include <CLI/CLI.hpp>
#include <iostream>
#include <string>

#include "ProtocolHelp.h"
#include "errors/modErr.h"
#include "hosts/script/ScriptHost.h"
#include "services/EmbeddedSignatures.h"

namespace {

void addHost(CLI::App& app) {
    auto* const host = app.add_subcommand("host", "Hold one editor and answer JSON requests, one a line");
    auto separator = std::make_shared<std::string>(".");
    host->add_option("--decimal-separator", *separator, "Decimal separator of the locale that the editor works in")
        ->capture_default_str();
    host->footer(std::string(vrn::cli::protocolHelp));
    host->callback([separator] {
        auto services = vrn::services::embeddedServices();
        services.locale = std::make_shared<vrn::services::FixedLocaleService>(*separator);
        vrn::script::ScriptHost(std::move(services)).run(std::cin, std::cout);
    });
}

void addKey(CLI::App& app) {
    auto* const key = app.add_subcommand("key", "Print the key of method signatures, as standard verifiers want it");
    key->footer(
        "The key is public: a signature shows that a method was changed outside the editor, not who changed it.\n"
        "Example: vrnmethod key > key.txt && xmlsec1 --verify --hmackey:vrnMethodEditor key.txt METHOD.xml");
    key->callback([] {
        vrn::services::EmbeddedSignatureV4 component;
        std::cout << vrn::services::signatureKeyV4(component) << std::flush;
    });
}

// 0 when all went well, help included; 2 when the call was at fault.
int run(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
        return 0;
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        std::ios::sync_with_stdio(false);
        CLI::App app("Method editor for laboratory sampling instruments, without windows");
        app.set_version_flag("--version", "vrnmethod " + vrn::errors::versionText());
        app.require_subcommand(1);
        addHost(app);
        addKey(app);
        return run(app, argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "vrnmethod: " << error.what() << '\n';
        return 2;
    }
}
