#include "hosts/cli/HelpModel.h"
#include "hosts/cli/ManText.h"
#include "text/Lists.h"

namespace vrn::cli {

namespace {

std::string bold(const std::string& text) { return "\\fB" + roffText(text) + "\\fR"; }
std::string italic(const std::string& text) { return "\\fI" + roffText(text) + "\\fR"; }

std::string sentence(const std::string& text) { return text.empty() || text.ends_with('.') ? text : text + "."; }

std::string optionEntry(const OptionHelp& option) {
    std::vector<std::string> names;
    for (const auto& name : option.names) {
        names.push_back(option.isPositional ? italic(name) : bold(name));
    }
    std::string entry = ".TP\n" + text::join(names, ", ");
    if (!option.isPositional && !option.metavar.empty()) {
        entry += " " + italic(option.metavar);
    }
    entry += "\n" + roffText(sentence(option.description)) + "\n";
    if (!option.choices.empty()) {
        entry += "One of " + roffText(text::join(option.choices, ", ")) + ".\n";
    }
    return option.defaultValue.empty() ? entry : entry + "[default: " + roffText(option.defaultValue) + "]\n";
}

std::string synopsis(const ToolHelp& tool, const CommandHelp& command) {
    std::string line = ".PP\n" + bold(tool.name + " " + command.name) + " [" + italic("OPTIONS") + "]";
    for (const auto& option : command.options) {
        if (option.isPositional) {
            const auto name = italic(option.names.front()) + (option.isRepeated ? "..." : "");
            line += option.isRequired ? " " + name : " [" + name + "]";
        }
    }
    return line + "\n";
}

}  // namespace

std::string manPage(const ToolHelp& tool, const std::string& version) {
    std::string page = ".TH " + tool.name + R"( 1 "" ")" + tool.name + " " + version + R"(" "User commands")" + "\n";
    page += ".SH NAME\n" + tool.name + " \\- method editor for laboratory sampling instruments, without windows\n";
    page += ".SH SYNOPSIS\n" + bold(tool.name) + " " + italic("COMMAND") + " [" + italic("OPTIONS") + "] ...\n";
    page += ".SH DESCRIPTION\n" + roffParagraphs(tool.summary) + ".PP\n" + roffParagraphs(tool.footer);
    page += ".SH OPTIONS\n";
    for (const auto& option : tool.options) {
        page += optionEntry(option);
    }
    page += ".SH COMMANDS\n";
    for (const auto& command : tool.commands) {
        page += ".SS " + command.name + "\n" + roffText(sentence(command.summary)) + "\n" + synopsis(tool, command);
        for (const auto& option : command.options) {
            page += optionEntry(option);
        }
        page += ".PP\n" + roffParagraphs(command.footer);
    }
    return page;
}

}  // namespace vrn::cli
