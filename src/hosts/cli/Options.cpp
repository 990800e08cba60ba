#include "hosts/cli/Options.h"

#include <memory>
#include <ostream>
#include <utility>

#include "hosts/cli/Json.h"

namespace vrn::cli {

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

std::function<void(std::string_view)> textPrinter(Command& command, Session& session, std::string key) {
    const auto json = std::make_shared<bool>(false);
    command.flag("--json", *json, "Print one JSON object");
    return [json, key = std::move(key), &session](std::string_view text) {
        if (*json) {
            session.console.out << jsonLine({{key, text}});
        } else {
            session.console.out << text;
        }
        session.console.out << std::flush;
    };
}

}  // namespace vrn::cli
