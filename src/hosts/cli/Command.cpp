#include "hosts/cli/Command.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace vrn::cli {

namespace {

// What a script puts in place of a value and finds empty would change what the call means.
CLI::Option& valued(CLI::Option* option) {
    option->check(CLI::Validator(
        [](const std::string& value) { return value.empty() ? std::string(emptyValue) : std::string(); }, ""));
    return *option;
}

}  // namespace

const Option& Option::required() const {
    option_->required();
    return *this;
}

const Option& Option::metavar(const std::string& name) const {
    option_->type_name(name);
    return *this;
}

const Option& Option::group(const std::string& heading) const {
    option_->group(heading);
    return *this;
}

const Option& Option::oneOf(const std::vector<std::string>& values) const {
    // The library's description, which help and completion show, with words of our own.
    CLI::Validator known = CLI::IsMember(values);
    known.operation([values](const std::string& value) {
        if (std::find(values.begin(), values.end(), value) != values.end()) {
            return std::string();
        }
        std::string all;
        for (const auto& each : values) {
            all += (all.empty() ? "" : ", ") + each;
        }
        return "'" + value + "' is none of: " + all;
    });
    option_->check(known);
    return *this;
}

const Option& Option::within(unsigned least, unsigned most) const {
    CLI::Validator range = CLI::Range(least, most).description("");
    range.operation([least, most](const std::string& value) {
        unsigned number = 0;
        const bool isNumber = CLI::detail::lexical_cast(value, number);
        return isNumber && number >= least && number <= most
                   ? std::string()
                   : "'" + value + "' is not a whole number from " + std::to_string(least) + " to " +
                         std::to_string(most);
    });
    option_->check(range);
    return *this;
}

const Option& Option::showDefault() const {
    option_->capture_default_str();
    return *this;
}

Command::Command(CLI::App& tool, const std::string& name, const std::string& summary)
    : app_(tool.add_subcommand(name, summary)) {}

Option Command::option(const std::string& names, std::string& variable, const std::string& description) {
    return Option(valued(app_->add_option(names, variable, description)));
}

Option Command::option(const std::string& names, std::vector<std::string>& variable, const std::string& description) {
    return Option(valued(app_->add_option(names, variable, description)));
}

Option Command::option(const std::string& names, unsigned& variable, const std::string& description) {
    return Option(valued(app_->add_option(names, variable, description)));
}

Option Command::flag(const std::string& names, bool& variable, const std::string& description) {
    return Option(*app_->add_flag(names, variable, description));
}

void Command::answer(const std::string& name, const std::function<void()>& print, const std::string& description) {
    app_->add_flag_callback(
        name,
        [print] {
            print();
            throw CLI::Success();
        },
        description);
}

void Command::footer(const std::string& text) { app_->footer(text); }

void Command::callback(const std::function<void()>& run) { app_->callback(run); }

}  // namespace vrn::cli
