// The commands of the tool: how one is described, the options that several have, and the list of them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/cli/Call.h"
#include "hosts/cli/Engine.h"
#include "hosts/cli/MethodRun.h"
#include "hosts/cli/Rewrite.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace vrn::cli {

/// Runs the tool; the first of the arguments is the program's name. Never throws.
[[nodiscard]] ExitStatus runTool(const std::vector<std::string>& arguments, const Console& console) noexcept;

/// Adds all commands.
void describeTool(CLI::App& tool, Call& call);

void addShow(CLI::App& tool, Call& call);
void addCheck(CLI::App& tool, Call& call);
void addDiff(CLI::App& tool, Call& call);
void addCatalogue(CLI::App& tool, Call& call);
void addVerify(CLI::App& tool, Call& call);
void addSign(CLI::App& tool, Call& call);
void addUpdate(CLI::App& tool, Call& call);
void addConvert(CLI::App& tool, Call& call);
void addEdit(CLI::App& tool, Call& call);
void addSchema(CLI::App& tool, Call& call);
void addCompletion(CLI::App& tool, Call& call);
void addMan(CLI::App& tool, Call& call);
void addHost(CLI::App& tool, Call& call);
void addKey(CLI::App& tool, Call& call);

/// What is said of an option whose value is an empty text.
inline constexpr std::string_view emptyValue = "a value is needed that is not empty";

/// An option, flag or positional that was just added; each function says something more of it.
class Option {
  public:
    explicit Option(CLI::Option& option) : option_(&option) {}

    const Option& required() const;
    /// What help calls the value; "" for nothing.
    const Option& metavar(const std::string& name) const;
    /// The heading under which help lists it.
    const Option& group(const std::string& heading) const;
    const Option& oneOf(const std::vector<std::string>& values) const;
    const Option& within(unsigned least, unsigned most) const;
    /// Help shows the value that the variable has now.
    const Option& showDefault() const;

  private:
    CLI::Option* option_;
};

/// A command as its source describes it: name, options, help and what it does. Command.cpp and Application.cpp alone include the
/// header of the library that reads arguments: it takes longer to compile than most commands do.
class Command {
  public:
    Command(CLI::App& tool, const std::string& name, const std::string& summary);

    /// Names with their dashes, separated by commas; a name without is a positional. The variable must outlive the reading of the call.
    Option option(const std::string& names, std::string& variable, const std::string& description);
    Option option(const std::string& names, std::vector<std::string>& variable, const std::string& description);
    Option option(const std::string& names, unsigned& variable, const std::string& description);
    Option flag(const std::string& names, bool& variable, const std::string& description);
    /// A flag that is answered before the other options are asked for, and ends the call well.
    void answer(const std::string& name, const std::function<void()>& print, const std::string& description);
    void footer(const std::string& text);
    /// What the command does, once its options are read.
    void callback(const std::function<void()>& run);

  private:
    CLI::App* app_;
};

void addSetOptions(Command& command, SetArguments& set);
void addMethodOptions(Command& command, MethodArguments& methods);
void addWriteOptions(Command& command, WriteArguments& write);

}  // namespace vrn::cli
