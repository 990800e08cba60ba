#include "hosts/cli/Application.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <new>
#include <ostream>

#include "errors/modErr.h"
#include "hosts/cli/Commands.h"
#include "hosts/cli/Json.h"
#include "hosts/cli/Suggestion.h"
#include "hosts/cli/System.h"

namespace vrn::cli {

namespace {

// Commands or long options, whichever the word is to be.
std::vector<std::string> known(const CLI::App& app, bool options) {
    std::vector<std::string> names;
    for (const auto* const option : app.get_options([options](const CLI::Option*) { return options; })) {
        for (const auto& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    for (const auto* const command : app.get_subcommands([options](const CLI::App*) { return !options; })) {
        names.push_back(command->get_name());
    }
    return names;
}

// What nobody knows what to do with, in place of the library's words that name no cause.
std::string unknownWord(const CLI::App& app) {
    const auto rest = app.remaining();
    if (rest.empty()) {
        return "a command is expected";
    }
    const bool isOption = rest.front().starts_with('-');
    const auto meant = nearest(rest.front(), known(app, isOption));
    return (isOption ? "there is no option '" : "there is no command '") + rest.front() + "'" +
           (meant.empty() ? "" : "; did you mean '" + meant + "'?");
}

// What the library says of a call, in words for whoever made it.
std::string plainly(const CLI::Error& error, const std::vector<std::string>& rest) {
    std::string words = error.what();
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr && !rest.empty()) {
        return "'" + rest.front() + "' is one argument too many";
    }
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
        const auto name = words.substr(0, words.find(':'));
        return name + (words.find("At Most") == std::string::npos ? " needs a value" : " can be given only once");
    }
    return words;
}

std::string callAtFault(const CLI::App* tool, const CLI::Error& error) {
    const auto commands = tool->get_subcommands();
    const auto command = commands.empty() ? std::string() : commands.front()->get_name() + " ";
    const CLI::App& spoken = commands.empty() ? *tool : *commands.front();
    const auto rest = spoken.remaining();
    const bool unknownOption = !rest.empty() && rest.front().starts_with('-');
    const auto what = commands.empty() || unknownOption ? unknownWord(spoken) : plainly(error, rest);
    return "vrnmethod: " + what + "\nTo read more: vrnmethod " + command + "--help\n";
}

// The library would take the next word for the value of "--backup=".
void requireValues(const std::vector<std::string>& words) {
    for (const auto& word : words) {
        if (word == "--") {
            return;
        }
        if (word.starts_with("--") && word.ends_with('=')) {
            throw Fault(word.substr(0, word.size() - 1) + ": " + std::string(emptyValue));
        }
    }
}

// Whether the call, as far as it was read, wants JSON.
bool wantsJson(const CLI::App& tool) {
    const auto commands = tool.get_subcommands();
    const auto isGiven = [&](const char* name, const char* value) {
        const auto* const option = commands.front()->get_option_no_throw(name);
        return option != nullptr && !option->empty() && (*value == '\0' || option->results().front() == value);
    };
    return !commands.empty() && (isGiven("--json", "") || isGiven("--format", "json"));
}

// What ended the call, for the user and for a program that reads the output.
void tellFault(const CLI::App& tool, Session& session, const std::string& what) {
    session.console.err << "vrnmethod: " << what << '\n';
    if (wantsJson(tool)) {
        Json json = Json::object();
        for (const auto& [key, value] : session.about) {
            json[key] = value;
        }
        json["error"] = what;
        (session.outputIsTaken ? session.console.err : session.console.out) << jsonLine(json);
    }
}

ExitStatus run(CLI::App& tool, Session& session, const std::vector<std::string>& arguments) {
    try {
        // The library wants what stands behind the name, last argument first.
        std::vector<std::string> words(arguments.rbegin(), arguments.rend() - 1);
        requireValues(arguments);
        if (!words.empty() && words.back() == "help") {
            words.pop_back();
            // An unknown command is said to be one.
            const auto commands = known(tool, false);
            if (words.empty() || std::find(commands.begin(), commands.end(), words.back()) != commands.end()) {
                words.insert(words.begin(), "--help");
            }
        }
        tool.parse(std::move(words));
        return session.status;
    } catch (const CLI::ParseError& error) {
        return tool.exit(error, session.console.out, session.console.err) == 0 ? ExitStatus::Well : ExitStatus::Fault;
    } catch (const system::Interrupted&) {
        session.console.err << "vrnmethod: interrupted\n";
        return ExitStatus::Interrupted;
    } catch (const std::bad_alloc&) {
        session.console.err << "vrnmethod: " << notEnoughMemory << '\n';
        return ExitStatus::Fault;
    } catch (const std::exception& error) {
        tellFault(tool, session, error.what());
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
    // What begins with "/" is a path on every system.
    tool.allow_windows_style_options(false);
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
        console.err << "vrnmethod: " << notEnoughMemory << '\n';  // nothing else can fail before the call is read
        return ExitStatus::Fault;
    }
}

}  // namespace vrn::cli
