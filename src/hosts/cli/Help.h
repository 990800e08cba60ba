// The tool's commands and options as data, and what is made of them: completion scripts and the manual page.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vrn::cli {

struct OptionHelp {
    std::vector<std::string> names;  ///< with their dashes; the one name of a positional without
    std::string metavar;             ///< empty for a flag
    std::string description;
    std::string defaultValue;
    std::string group;
    std::vector<std::string> choices;
    bool isPositional = false;
    bool isRequired = false;
    bool isRepeated = false;
};

struct CommandHelp {
    std::string name;
    std::string summary;
    std::string footer;
    std::vector<OptionHelp> options;
};

struct ToolHelp {
    std::string name;
    std::string summary;
    std::string footer;
    std::vector<OptionHelp> options;
    std::vector<CommandHelp> commands;
};

/// What help says of the tool, without hidden commands.
[[nodiscard]] ToolHelp helpOf(const CLI::App& tool);

/// Completion scripts for the shells.
[[nodiscard]] std::string bashCompletion(const ToolHelp& tool);
[[nodiscard]] std::string zshCompletion(const ToolHelp& tool);
[[nodiscard]] std::string fishCompletion(const ToolHelp& tool);

/// The manual page, in the language of man(7).
[[nodiscard]] std::string manPage(const ToolHelp& tool, const std::string& version);

/// Text of the documentation in that language: paragraphs, lines that begin with a blank as they are, and of Markdown headings, lists,
/// tables, blocks of code, marks within lines.
[[nodiscard]] std::string roffParagraphs(const std::string& text);

}  // namespace vrn::cli
