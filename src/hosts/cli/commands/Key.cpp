
#include "hosts/cli/Commands.h"
#include "services/EmbeddedSignatures.h"

namespace vrn::cli {

void addKey(CLI::App& tool, Session& session) {
    Command command(tool, "key", "Print the key of method signatures, as standard verifiers want it");
    command.footer(
        "The key is public: a signature shows that a method was changed outside the editor, not who changed it.\n\n"
        "Example:\n"
        "  vrnmethod key > key.txt && xmlsec1 --verify --hmackey:vrnMethodEditor key.txt METHOD.xml");
    const auto print = textPrinter(command, session, "key");
    command.callback([print] {
        services::EmbeddedSignatureV4 component;
        print(services::signatureKeyV4(component));
    });
}

}  // namespace vrn::cli
