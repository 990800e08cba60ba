#include "hosts/cli/HelpModel.h"

#include <CLI/CLI.hpp>

#include "text/Lists.h"

namespace vrn::cli {

namespace {

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
