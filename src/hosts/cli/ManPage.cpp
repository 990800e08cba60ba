#include <array>
#include <cstdio>
#include <string_view>

#include "hosts/cli/HelpModel.h"
#include "text/Lists.h"
#include "text/Unicode.h"

namespace vrn::cli {

namespace {

// Text as roff takes it for text: no requests at line starts, dashes that can be copied, other characters than ASCII by number.
std::string escaped(std::string_view text) {
    std::string out(text.starts_with('.') ? "\\&" : "");
    while (!text.empty()) {
        const char32_t c = text::takeCodePoint(text);
        if (c == U'\\') {
            out += "\\e";
        } else if (c == U'-') {
            out += "\\-";
        } else if (c == U'\'') {
            out += "\\(aq";
        } else if (c < 0x80) {
            out += static_cast<char>(c);
        } else {
            std::array<char, 16> number{};
            (void)std::snprintf(number.data(), number.size(), "\\[u%04X]", static_cast<unsigned>(c));
            out += number.data();
        }
    }
    return out;
}

// Lines that begin with a blank or are rows of a table stand as they are; others are filled.
bool isVerbatim(const std::string& line) { return line.starts_with(' ') || line.starts_with('|'); }

std::string paragraphs(const std::string& text) {
    std::string out;
    bool verbatim = false;
    for (const auto& line : text::split(text, "\n")) {
        if (isVerbatim(line) != verbatim) {
            verbatim = !verbatim;
            out += verbatim ? ".nf\n" : ".fi\n";
        }
        out += line.empty() ? ".PP\n" : escaped(line) + "\n";
    }
    return out + (verbatim ? ".fi\n" : "");
}

std::string bold(const std::string& text) { return "\\fB" + escaped(text) + "\\fR"; }
std::string italic(const std::string& text) { return "\\fI" + escaped(text) + "\\fR"; }

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
    entry += "\n" + escaped(sentence(option.description)) + "\n";
    if (!option.choices.empty()) {
        entry += "One of " + escaped(text::join(option.choices, ", ")) + ".\n";
    }
    return option.defaultValue.empty() ? entry : entry + "[default: " + escaped(option.defaultValue) + "]\n";
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
    page += ".SH DESCRIPTION\n" + paragraphs(tool.summary) + ".PP\n" + paragraphs(tool.footer);
    page += ".SH OPTIONS\n";
    for (const auto& option : tool.options) {
        page += optionEntry(option);
    }
    page += ".SH COMMANDS\n";
    for (const auto& command : tool.commands) {
        page += ".SS " + command.name + "\n" + escaped(sentence(command.summary)) + "\n" + synopsis(tool, command);
        for (const auto& option : command.options) {
            page += optionEntry(option);
        }
        page += ".PP\n" + paragraphs(command.footer);
    }
    return page;
}

}  // namespace vrn::cli
