// Completion scripts for the shells.
#include "hosts/cli/Help.h"
#include "text/Lists.h"

namespace vrn::cli {

namespace {

std::string namesOf(const std::vector<OptionHelp>& options) {
    std::vector<std::string> names;
    for (const auto& option : options) {
        if (!option.isPositional) {
            names.insert(names.end(), option.names.begin(), option.names.end());
        }
    }
    return text::join(names, " ");
}

// Inside single quotes a shell takes all but the quote as it is.
std::string shellQuoted(const std::string& text) { return "'" + text::replacedAll(text, "'", R"('\'')") + "'"; }

std::string named(std::string script, const std::string& name) {
    text::replaceAll(script, "%TOOL%", name);
    return script;
}

bool isFolder(const OptionHelp& option) { return option.metavar == "FOLDER"; }
bool isFile(const OptionHelp& option) { return option.metavar == "FILE"; }

// What may follow an option, as the body of a branch of bash's "case".
std::string bashValues(const OptionHelp& option) {
    if (!option.choices.empty()) {
        return "mapfile -t COMPREPLY < <(compgen -W '" + text::join(option.choices, " ") + "' -- \"$current\")";
    }
    if (isFolder(option)) {
        return "compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- \"$current\")";
    }
    return isFile(option) ? "compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -- \"$current\")"
                          : "COMPREPLY=()";
}

std::string bashBranches(const CommandHelp& command) {
    std::string branches;
    for (const auto& option : command.options) {
        if (option.isPositional || option.metavar.empty()) {
            continue;
        }
        std::vector<std::string> patterns;
        for (const auto& name : option.names) {
            patterns.push_back(command.name + ":" + name);
        }
        branches += "        " + text::join(patterns, "|") + ") " + bashValues(option) + "; return ;;\n";
    }
    return branches;
}

const OptionHelp* choicePositional(const CommandHelp& command) {
    for (const auto& option : command.options) {
        if (option.isPositional && !option.choices.empty()) {
            return &option;
        }
    }
    return nullptr;
}

// Inside the brackets of zsh's _arguments these have a meaning.
std::string zshText(std::string text) {
    for (const auto* const mark : {"\\", "[", "]", ":"}) {
        text::replaceAll(text, mark, std::string("\\") + mark);
    }
    return text;
}

std::string zshValues(const OptionHelp& option) {
    if (option.metavar.empty() && !option.isPositional) {
        return {};
    }
    const auto label = ":" + zshText(option.metavar.empty() ? option.names.front() : option.metavar) + ":";
    if (!option.choices.empty()) {
        return label + "(" + text::join(option.choices, " ") + ")";
    }
    if (isFolder(option)) {
        return label + "_files -/";
    }
    return isFile(option) || option.isPositional ? label + "_files" : label;
}

std::string zshArgument(const OptionHelp& option) {
    if (option.isPositional) {
        return shellQuoted((option.isRepeated ? "*" : "") + zshValues(option));
    }
    const auto body = "[" + zshText(option.description) + "]" + zshValues(option);
    if (option.names.size() == 1) {
        return shellQuoted(option.names.front() + body);
    }
    return shellQuoted("(" + text::join(option.names, " ") + ")") + "{" + text::join(option.names, ",") + "}" +
           shellQuoted(body);
}

std::string fishOption(const std::string& tool, const std::string& command, const OptionHelp& option) {
    std::string line = "complete -c " + tool + " -n '__fish_seen_subcommand_from " + command + "'";
    for (const auto& name : option.names) {
        line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    line += " -d " + shellQuoted(option.description);
    if (!option.choices.empty()) {
        line += " -x -a " + shellQuoted(text::join(option.choices, " "));
    } else if (isFolder(option)) {
        line += " -x -a '(__fish_complete_directories)'";
    } else if (isFile(option)) {
        line += " -r -F";
    } else if (!option.metavar.empty()) {
        line += " -x";
    }
    return line + "\n";
}

}  // namespace

std::string bashCompletion(const ToolHelp& tool) {
    std::vector<std::string> commands;
    std::string branches;
    std::string words;
    std::string choices;
    for (const auto& command : tool.commands) {
        commands.push_back(command.name);
        branches += bashBranches(command);
        words += "            " + command.name + ") words='" + namesOf(command.options) + "' ;;\n";
        if (const auto* const positional = choicePositional(command)) {
            choices += "    if [[ $command == " + command.name + " && $previous == \"$command\" ]]; then\n        " +
                       bashValues(*positional) + "; return\n    fi\n";
        }
    }
    return named(
        "# bash completion for %TOOL%: source this file, or put it into the folder of completions.\n"
        "_%TOOL%() {\n"
        "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command= words= word\n"
        "    COMPREPLY=()\n"
        "    # --option=value comes as three words.\n"
        "    if [[ $current == '=' ]]; then\n"
        "        current=\n"
        "    elif [[ $previous == '=' ]]; then\n"
        "        previous=${COMP_WORDS[COMP_CWORD - 2]}\n"
        "    fi\n"
        "    for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
        "        case $word in " +
            text::join(commands, "|") +
            ") command=$word; break ;; esac\n"
            "    done\n"
            "    case $command:$previous in\n" +
            branches + "    esac\n" + choices +
            "    if [[ -z $command ]]; then\n"
            "        words='" +
            text::join(commands, " ") + " " + namesOf(tool.options) +
            "'\n"
            "    elif [[ $current == -* ]]; then\n"
            "        case $command in\n" +
            words +
            "        esac\n"
            "    else\n"
            "        compopt -o filenames\n"
            "        mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
            "        return\n"
            "    fi\n"
            "    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
            "}\n"
            "complete -F _%TOOL% %TOOL%\n",
        tool.name);
}

std::string zshCompletion(const ToolHelp& tool) {
    std::string commands;
    std::string branches;
    for (const auto& command : tool.commands) {
        commands +=
            "        " + shellQuoted(command.name + ":" + text::replacedAll(command.summary, ":", "\\:")) + "\n";
        branches += "            " + command.name + ") _arguments -s";
        for (const auto& option : command.options) {
            branches += " \\\n                " + zshArgument(option);
        }
        branches += " ;;\n";
    }
    return named(
        "#compdef %TOOL%\n"
        "# zsh completion for %TOOL%: put this file as _%TOOL% into a folder of $fpath.\n"
        "_%TOOL%() {\n"
        "    local curcontext=$curcontext state line\n"
        "    local -a commands\n"
        "    commands=(\n" +
            commands +
            "    )\n"
            "    _arguments -C '(- *)'{-h,--help}'[Print help]' '(- *)--version[Print the version]' \\\n"
            "        '1: :->command' '*:: :->arguments'\n"
            "    case $state in\n"
            "        command) _describe -t commands command commands ;;\n"
            "        arguments) case $words[1] in\n" +
            branches +
            "        esac ;;\n"
            "    esac\n"
            "}\n"
            "if [[ $funcstack[1] == _%TOOL% ]]; then\n"
            "    _%TOOL% \"$@\"\n"
            "else\n"
            "    compdef _%TOOL% %TOOL%\n"
            "fi\n",
        tool.name);
}

std::string fishCompletion(const ToolHelp& tool) {
    std::string script = "# fish completion for " + tool.name + "\n";
    for (const auto& command : tool.commands) {
        script += "complete -c " + tool.name + " -f -n __fish_use_subcommand -a " + command.name + " -d " +
                  shellQuoted(command.summary) + "\n";
    }
    for (const auto& command : tool.commands) {
        for (const auto& option : command.options) {
            if (!option.isPositional) {
                script += fishOption(tool.name, command.name, option);
            } else if (!option.choices.empty()) {
                script += "complete -c " + tool.name + " -n '__fish_seen_subcommand_from " + command.name + "' -f -a " +
                          shellQuoted(text::join(option.choices, " ")) + "\n";
            }
        }
    }
    return script;
}

}  // namespace vrn::cli
