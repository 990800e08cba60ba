// What belongs to the shell and the system rather than to methods: completion, the manual page.

#include "errors/modErr.h"
#include "hosts/cli/Commands.h"
#include "hosts/cli/HelpModel.h"

namespace vrn::cli {

void addCompletion(CLI::App& tool, Session& session) {
    Command command(tool, "completion", "Print a completion script for a shell");
    const auto shell = std::make_shared<std::string>();
    command.option("SHELL", *shell, "The shell: bash, zsh or fish")
        .required()
        .metavar("")
        .oneOf({"bash", "zsh", "fish"});
    command.footer(
        "Examples:\n"
        "  vrnmethod completion bash > /etc/bash_completion.d/vrnmethod\n"
        "  vrnmethod completion zsh > ~/.zfunc/_vrnmethod\n"
        "  vrnmethod completion fish > ~/.config/fish/completions/vrnmethod.fish");
    const auto print = textPrinter(command, session, "completion");
    command.callback([shell, print, &tool] {
        const auto help = helpOf(tool);
        print(*shell == "bash" ? bashCompletion(help) : *shell == "zsh" ? zshCompletion(help) : fishCompletion(help));
    });
}

void addMan(CLI::App& tool, Session& session) {
    Command command(tool, "man", "Print the manual page");
    command.footer(
        "It is made from the same descriptions as --help.\n\n"
        "Examples:\n"
        "  vrnmethod man | man -l -\n"
        "  vrnmethod man > /usr/local/share/man/man1/vrnmethod.1");
    const auto print = textPrinter(command, session, "man");
    command.callback([print, &tool] { print(manPage(helpOf(tool), errors::versionText())); });
}

}  // namespace vrn::cli
