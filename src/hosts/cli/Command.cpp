// Commands as the library that reads arguments knows them.
#include <CLI/CLI.hpp>
#include <algorithm>

#include "hosts/cli/Commands.h"
#include "hosts/cli/Help.h"
#include "text/Lists.h"

namespace vrn::cli {

namespace {

// What a script puts in place of a value and finds empty would change what the call means.
CLI::Option& valued(CLI::Option* option) {
    option->check(CLI::Validator(
        [](const std::string& value) { return value.empty() ? std::string(emptyValue) : std::string(); }, ""));
    return *option;
}

// The library keeps the choices of an option in the text that describes its type: "FORMAT:{text,json}".
void splitType(const std::string& type, OptionHelp& help) {
    help.metavar = std::string(text::before(type, ":"));
    const auto open = type.find('{');
    const auto close = type.find('}');
    if (open != std::string::npos && close != std::string::npos && open < close) {
        help.choices = text::split(std::string_view(type).substr(open + 1, close - open - 1), ",");
    }
}

OptionHelp optionHelp(const CLI::Option& option) {
    OptionHelp help;
    help.isPositional = option.get_positional();
    if (help.isPositional) {
        help.names.push_back(option.get_name(true));
    }
    for (const auto& name : option.get_snames()) {
        help.names.push_back("-" + name);
    }
    for (const auto& name : option.get_lnames()) {
        help.names.push_back("--" + name);
    }
    if (option.get_items_expected_max() > 0) {
        splitType(option.get_type_name(), help);
    }
    help.description = option.get_description();
    help.defaultValue = option.get_default_str();
    help.group = option.get_group();
    help.isRequired = option.get_required();
    help.isRepeated = option.get_items_expected_max() > 1;
    return help;
}

std::vector<OptionHelp> optionsOf(const CLI::App& app) {
    std::vector<OptionHelp> options;
    for (const auto* const option : app.get_options()) {
        options.push_back(optionHelp(*option));
    }
    return options;
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

void addSetOptions(Command& command, SetArguments& set) {
    constexpr auto group = "Document set";
    command.option("-s,--set", set.folder, "Folder with macros.xml, objects.xml and config.xml")
        .metavar("FOLDER")
        .group(group);
    command.option("--macros", set.macros, "Macro catalogue, instead of the folder's").metavar("FILE").group(group);
    command.option("--objects", set.objects, "Object list, instead of the folder's").metavar("FILE").group(group);
    command.option("--config", set.config, "Configuration, instead of the folder's").metavar("FILE").group(group);
    command.option("--decimal-separator", set.decimalSeparator, "Decimal separator of the instrument's locale")
        .metavar("TEXT")
        .showDefault()
        .group(group);
}

void addMethodOptions(Command& command, MethodArguments& methods) {
    command
        .option("METHOD", methods.methods,
                "Method files; folders stand for all *.xml files below them, - for standard input")
        .required()
        .metavar("");
    command.option("-j,--jobs", methods.jobs, "Work on so many methods side by side")
        .metavar("N")
        .within(1, 256)
        .showDefault();
    command.flag("--json", methods.json, "Print one JSON object per method, one a line");
}

void addWriteOptions(Command& command, WriteArguments& write) {
    constexpr auto group = "Writing";
    command.flag("-n,--dry-run", write.dryRun, "Say what would be done, write nothing").group(group);
    command.option("-b,--backup", write.backupSuffix, "Keep the old file under its name with this suffix, such as .bak")
        .metavar("SUFFIX")
        .group(group);
}

ToolHelp helpOf(const CLI::App& tool) {
    ToolHelp help{tool.get_name(), tool.get_description(), tool.get_footer(), optionsOf(tool), {}};
    for (const auto* const command :
         tool.get_subcommands([](const CLI::App* app) { return !app->get_group().empty(); })) {
        help.commands.push_back(
            {command->get_name(), command->get_description(), command->get_footer(), optionsOf(*command)});
    }
    return help;
}

}  // namespace vrn::cli
