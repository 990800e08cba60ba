// The tool as a function: arguments in, exit status out; and what it answers to a call that it does not understand.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <new>
#include <nlohmann/json.hpp>
#include <numeric>
#include <ostream>
#include <utility>

#include "errors/modErr.h"
#include "hosts/cli/Commands.h"
#include "hosts/cli/Output.h"
#include "hosts/cli/System.h"

namespace vrn::cli {

namespace {

// How many letters have to be put in, taken out, replaced or swapped with their neighbour to make one word of the other.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> twoBack;
    std::vector<std::size_t> last(b.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::vector<std::size_t> row{i};
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row.push_back(std::min({replaced, last[j] + 1, row[j - 1] + 1}));
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], twoBack[j - 2] + 1);
            }
        }
        twoBack = std::exchange(last, std::move(row));
    }
    return last.back();
}

// The word among `known` that this one looks like a slip of; empty when none is near.
std::string nearest(std::string_view word, const std::vector<std::string>& known) {
    constexpr std::size_t longestWord = 40;
    std::string found;
    if (word.size() > longestWord) {
        return found;
    }
    auto least = word.size() / 3 + 1;
    for (const auto& candidate : known) {
        if (const auto steps = distance(word, candidate); steps < least) {
            least = steps;
            found = candidate;
        }
    }
    return found;
}

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

// The word that the tool does not know, in place of the library's message, which does not name it.
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

// What the library says of a call, in words for the user.
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
void reportFault(const CLI::App& tool, Call& call, const std::string& what) {
    call.console.err << "vrnmethod: " << what << '\n';
    if (wantsJson(tool)) {
        Json json = Json::object();
        for (const auto& [key, value] : call.about) {
            json[key] = value;
        }
        json["error"] = what;
        (call.outputIsTaken ? call.console.err : call.console.out) << jsonLine(json);
    }
}

ExitStatus run(CLI::App& tool, Call& call, const std::vector<std::string>& arguments) {
    try {
        // The library wants what follows the name, last argument first.
        std::vector<std::string> words(arguments.rbegin(), arguments.rend() - 1);
        requireValues(arguments);
        if (!words.empty() && words.back() == "help") {
            words.pop_back();
            // An unknown command is reported as one.
            const auto commands = known(tool, false);
            if (words.empty() || std::find(commands.begin(), commands.end(), words.back()) != commands.end()) {
                words.insert(words.begin(), "--help");
            }
        }
        tool.parse(std::move(words));
        return call.status;
    } catch (const CLI::ParseError& error) {
        return tool.exit(error, call.console.out, call.console.err) == 0 ? ExitStatus::Well : ExitStatus::Fault;
    } catch (const system::Interrupted&) {
        call.console.err << "vrnmethod: interrupted\n";
        return ExitStatus::Interrupted;
    } catch (const std::bad_alloc&) {
        call.console.err << "vrnmethod: " << notEnoughMemory << '\n';
        return ExitStatus::Fault;
    } catch (const std::exception& error) {
        reportFault(tool, call, error.what());
        return ExitStatus::Fault;
    }
}

}  // namespace

void describeTool(CLI::App& tool, Call& call) {
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
    const auto group = [&](const char* title, std::initializer_list<void (*)(CLI::App&, Call&)> commands) {
        const auto before = tool.get_subcommands({}).size();
        for (const auto add : commands) {
            add(tool, call);
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
        Call call{console};
        CLI::App tool;
        describeTool(tool, call);
        const auto status = run(tool, call, arguments);
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
