#include "ProtocolHelp.h"
#include "hosts/cli/Commands.h"
#include "hosts/script/ScriptHost.h"

namespace vrn::cli {

void addHost(CLI::App& tool, Session& session) {
    Command command(tool, "host", "Hold one editor and answer JSON requests, one a line");
    auto separator = std::make_shared<std::string>(".");
    command.option("--decimal-separator", *separator, "Decimal separator of the locale that the editor works in")
        .metavar("TEXT")
        .showDefault();
    command.footer(std::string(protocolHelp));
    command.callback([separator, &session] {
        auto services = services::embeddedServices();
        services.locale = std::make_shared<services::FixedLocaleService>(*separator);
        script::ScriptHost(std::move(services)).run(session.console.in, session.console.out);
    });
}

}  // namespace vrn::cli
