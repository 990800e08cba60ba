#include "hosts/cli/Options.h"

#include <memory>
#include <ostream>
#include <utility>

#include "hosts/cli/Json.h"

namespace vrn::cli {

void addSetOptions(CLI::App& command, SetArguments& set) {
    constexpr auto group = "Document set";
    command.add_option("-s,--set", set.folder, "Folder with macros.xml, objects.xml and config.xml")
        ->type_name("FOLDER")
        ->group(group);
    command.add_option("--macros", set.macros, "Macro catalogue, instead of the folder's")
        ->type_name("FILE")
        ->group(group);
    command.add_option("--objects", set.objects, "Object list, instead of the folder's")
        ->type_name("FILE")
        ->group(group);
    command.add_option("--config", set.config, "Configuration, instead of the folder's")
        ->type_name("FILE")
        ->group(group);
    command.add_option("--decimal-separator", set.decimalSeparator, "Decimal separator of the instrument's locale")
        ->type_name("TEXT")
        ->capture_default_str()
        ->group(group);
}

void addMethodOptions(CLI::App& command, MethodArguments& methods) {
    command
        .add_option("METHOD", methods.methods,
                    "Method files; folders stand for all *.xml files below them, - for standard input")
        ->required()
        ->type_name("");
    command.add_option("-j,--jobs", methods.jobs, "Work on so many methods side by side")
        ->type_name("N")
        ->check(CLI::Range(1U, 256U).description(""))
        ->capture_default_str();
    command.add_flag("--json", methods.json, "Print one JSON object per method, one a line");
}

void addWriteOptions(CLI::App& command, WriteArguments& write) {
    constexpr auto group = "Writing";
    command.add_flag("-n,--dry-run", write.dryRun, "Say what would be done, write nothing")->group(group);
    command
        .add_option("-b,--backup", write.backupSuffix,
                    "Keep the old file under its name with this suffix, such as .bak")
        ->type_name("SUFFIX")
        ->group(group);
}

std::function<void(std::string_view)> textPrinter(CLI::App& command, Session& session, std::string key) {
    const auto json = std::make_shared<bool>(false);
    command.add_flag("--json", *json, "Print one JSON object");
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
