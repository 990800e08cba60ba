// The two commands that write methods anew with the catalogue's cycles.
#include "hosts/cli/Commands.h"
#include "hosts/cli/Embed.h"

namespace vrn::cli {

namespace {

std::string olderVersions() {
    std::string versions;
    for (const auto& known : method::format::knownVersions) {
        if (known.version != method::format::currentVersion) {
            versions.append(versions.empty() ? "" : ", ").append(known.text);
        }
    }
    return versions;
}

void addEmbedding(CLI::App& tool, Session& session, EmbedPurpose purpose, const char* name, const std::string& summary,
                  const char* footer) {
    Command command(tool, name, summary);
    const auto arguments = std::make_shared<EmbedArguments>();
    addMethodOptions(command, arguments->methods);
    addSetOptions(command, arguments->set);
    addWriteOptions(command, arguments->write);
    command.footer(footer);
    command.callback(
        [arguments, purpose, &session] { session.status = embedMethods(session.console, *arguments, purpose); });
}

}  // namespace

void addUpdate(CLI::App& tool, Session& session) {
    addEmbedding(
        tool, session, EmbedPurpose::Update, "update", "Embed the catalogue's cycles in methods that hold older ones",
        "Values are kept by the names of their parameters; what is new gets its default. What was added or\n"
        "dropped is told, and which values are not valid now. The result is signed. A method is left alone\n"
        "when its cycles are the catalogue's, when it is not intact, and when something of it would be lost.\n\n"
        "Examples:\n"
        "  vrnmethod update --set instrument/ --dry-run methods/\n"
        "  vrnmethod update --set instrument/ --backup .bak --jobs 4 methods/");
}

void addConvert(CLI::App& tool, Session& session) {
    addEmbedding(tool, session, EmbedPurpose::Convert, "convert",
                 "Bring methods of version " + olderVersions() + " or none to version " +
                     std::string(method::format::currentVersionText),
                 "The old signature is verified first. The result holds the catalogue's cycles and is signed.\n\n"
                 "Examples:\n"
                 "  vrnmethod convert --set instrument/ --dry-run archive/\n"
                 "  vrnmethod convert --set instrument/ --backup .v03 archive/");
}

}  // namespace vrn::cli
