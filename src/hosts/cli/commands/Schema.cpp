#include <map>

#include "Schemas.h"
#include "hosts/cli/Commands.h"

namespace vrn::cli {

void addSchema(CLI::App& tool, Session& session) {
    Command command(tool, "schema", "Print an XML Schema of a kind of document");
    const auto kind = std::make_shared<std::string>();
    command.option("DOCUMENT", *kind, "The kind: macros, objects, config, method or audit")
        .required()
        .metavar("")
        .oneOf({"macros", "objects", "config", "method", "audit"});
    command.footer(
        "A schema tells the form of a document; what its values are worth on an instrument, check tells.\n\n"
        "Examples:\n"
        "  vrnmethod schema method > method.xsd\n"
        "  xmllint --noout --schema method.xsd methods/*.xml");
    const auto print = textPrinter(command, session, "schema");
    command.callback([kind, print] {
        static const std::map<std::string, std::string_view> schemas{{"macros", macrosSchema},
                                                                     {"objects", objectsSchema},
                                                                     {"config", configSchema},
                                                                     {"method", methodSchema},
                                                                     {"audit", auditSchema}};
        print(schemas.at(*kind));
    });
}

}  // namespace vrn::cli
