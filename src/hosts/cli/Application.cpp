#include "hosts/cli/Application.h"

#include <algorithm>
#include <ostream>

#include "errors/modErr.h"
#include "hosts/cli/Commands.h"

namespace vrn::cli {

namespace {

std::string callAtFault(const CLI::App* tool, const CLI::Error& error) {
    const auto commands = tool->get_subcommands();
    const auto command = commands.empty() ? std::string() : commands.front()->get_name() + " ";
    return "vrnmethod: " + std::string(error.what()) + "\nTo read more: vrnmethod " + command + "--help\n";
}

ExitStatus run(CLI::App& tool, Session& session, const std::vector<std::string>& arguments) {
    try {
        // The library wants what stands behind the name, last argument first.
        tool.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend() - 1));
        return session.status;
    } catch (const CLI::ParseError& error) {
        return tool.exit(error, session.console.out, session.console.err) == 0 ? ExitStatus::Well : ExitStatus::Fault;
    } catch (const std::exception& error) {
        session.console.err << "vrnmethod: " << error.what() << '\n';
        return ExitStatus::Fault;
    }
}

}  // namespace

void describeTool(CLI::App& tool, Session& session) {
    tool.name("vrnmethod");
    tool.description("Keeps methods of laboratory sampling instruments in order, without windows.");
    tool.footer(
        "Exit status: 0 all well, 1 something is wrong with a method, 2 the call or a file was at fault.\n"
        "Help for a command: vrnmethod COMMAND --help");
    tool.set_version_flag("--version", "vrnmethod " + errors::versionText());
    tool.require_subcommand(1);
    tool.failure_message(callAtFault);
    tool.get_formatter()->label("SUBCOMMAND", "COMMAND");
    tool.get_formatter()->label("Positionals", "Arguments");
    tool.get_formatter()->column_width(28);
    const auto group = [&](const char* title, std::initializer_list<void (*)(CLI::App&, Session&)> commands) {
        const auto before = tool.get_subcommands({}).size();
        for (const auto add : commands) {
            add(tool, session);
        }
        const auto all = tool.get_subcommands({});
        std::for_each(all.begin() + static_cast<std::ptrdiff_t>(before), all.end(),
                      [title](CLI::App* command) { command->group(title); });
    };
    group("Commands that look", {addShow, addCheck, addDiff, addCatalogue, addVerify});
    group("Commands that write", {addSign, addEdit, addUpdate, addConvert});
    group("Other commands", {addHost, addKey, addSchema, addCompletion, addMan});
}

ExitStatus runTool(const std::vector<std::string>& arguments, const Console& console) noexcept {
    try {
        Session session{console};
        CLI::App tool;
        describeTool(tool, session);
        const auto status = run(tool, session, arguments);
        console.out.flush();
        if (!console.out) {
            console.err << "vrnmethod: the output cannot be written\n";
            return ExitStatus::Fault;
        }
        return status;
    } catch (...) {
        return ExitStatus::Fault;
    }
}

}  // namespace vrn::cli
