// A command as its source describes it: name, options, help and what it does. The library that reads arguments stays behind these
// declarations, since its header takes longer to compile than a command.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace vrn::cli {

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
    /// Help tells the value that the variable has now.
    const Option& showDefault() const;

  private:
    CLI::Option* option_;
};

class Command {
  public:
    Command(CLI::App& tool, const std::string& name, const std::string& summary);

    /// Names with their dashes, parted by commas; a name without is a positional. The variable must outlive the call's reading.
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

}  // namespace vrn::cli
