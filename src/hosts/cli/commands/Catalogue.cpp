#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

#include "catalogue/CxmlValuesHandler.h"
#include "catalogue/Indexes.h"
#include "hosts/cli/Checker.h"
#include "hosts/cli/Commands.h"
#include "text/Lists.h"
#include "text/Unicode.h"

namespace vrn::cli {

namespace {

struct CatalogueArguments {
    SetArguments set;
    std::string what;
    std::string pattern;
    std::string syringe;
    bool json = false;
};

// Whether any of the texts holds the pattern, case ignored.
class Pattern {
  public:
    explicit Pattern(const std::string& pattern) : wanted_(text::upperCase(pattern)) {}
    [[nodiscard]] bool matches(std::initializer_list<std::string_view> texts) const {
        return std::any_of(texts.begin(), texts.end(),
                           [this](std::string_view text) { return text::contains(text::upperCase(text), wanted_); });
    }
    [[nodiscard]] bool matchesExactly(std::string_view text) const { return text::upperCase(text) == wanted_; }

  private:
    std::string wanted_;
};

class Catalogue {
  public:
    Catalogue(const Console& console, const CatalogueArguments& arguments)
        : console_(&console),
          arguments_(&arguments),
          checker_(readSet(arguments.set, console)),
          pattern_(arguments.pattern),
          style_(console.outHasColour) {
        chooseSyringe();
    }

    // How many entries were printed.
    std::size_t print() {
        if (arguments_->what == "macros") {
            return printMacros();
        }
        return arguments_->what == "objects" ? printObjects() : printNames();
    }

  private:
    method::EditorState& state() { return checker_.engine().state(); }

    void chooseSyringe() {
        auto& syringes = state().cboSyringe;
        if (arguments_->syringe.empty()) {
            return;
        }
        const auto index = syringes.indexOf(arguments_->syringe);
        if (index == controls::noSelection) {
            throw Fault("there is no syringe '" + arguments_->syringe +
                        "'; there are: " + text::join(syringes.items(), ", "));
        }
        syringes.setListIndex(index);
    }

    std::vector<std::string> linesOf(int macro) {
        auto lines = text::split(state().cboSelectedMacro.toolTip(macro), text::crlf);
        if (!lines.empty() && lines.back().empty()) {
            lines.pop_back();
        }
        return lines;
    }

    std::size_t printMacros() {
        const auto& names = state().cboSelectedMacro.items();
        std::size_t printed = 0;
        bool isExact = false;
        for (const auto& name : names) {
            isExact = isExact || pattern_.matchesExactly(name);
        }
        for (int i = 0; i < state().cboSelectedMacro.count(); ++i) {
            const auto& name = names[static_cast<std::size_t>(i)];
            // A call that names a macro wants that one, not all that mention it.
            const bool wanted =
                isExact ? pattern_.matchesExactly(name) : pattern_.matches({name, state().cboSelectedMacro.toolTip(i)});
            if (wanted && arguments_->pattern.empty() && !arguments_->json) {
                const auto lines = linesOf(i);
                table_.add({style_.bold(printable(name)), lines.empty() ? "" : printable(lines.front())});
                ++printed;
            } else if (wanted) {
                printMacro(i, name, isExact, printed++ == 0);
            }
        }
        printTable();
        return printed;
    }

    void printMacro(int index, const std::string& name, bool full, bool isFirst) {
        const auto* const parameters = checker_.inspector().parameters(name);
        const auto* const fault = checker_.inspector().faultOf(name);
        const auto node = state().xmlValues->macros(state().domMacros).macroName(name);
        const auto date = node ? node.attribute("LastModifiedTimestamp").value_or("") : std::string();
        if (arguments_->json) {
            Json json = {
                {"macro", name}, {"date", date}, {"description", linesOf(index)}, {"parameters", Json::array()}};
            for (const auto& parameter : *parameters) {
                Json one = {{"name", parameter.row.name}};
                addLimits(one, parameter);
                json["parameters"].push_back(std::move(one));
            }
            if (fault != nullptr) {
                json["problem"] = faultText(*fault);
            }
            console_->out << jsonLine(json);
            return;
        }
        console_->out << (isFirst ? "" : "\n") << style_.bold(printable(name))
                      << (date.empty() ? "" : "  " + style_.dim(printable(date))) << "\n";
        for (const auto& line : linesOf(index)) {
            console_->out << "  " << printable(line) << "\n";
        }
        Table table("    ");
        for (const auto& parameter : *parameters) {
            table.add({printable(parameter.row.name), printable(parameter.unit),
                       style_.dim(printable(limitsText(parameter, full)))});
        }
        console_->out << table.text();
        if (fault != nullptr) {
            console_->out << "    " << style_.red("! " + printable(faultText(*fault))) << "\n";
        }
    }

    std::size_t printObjects() {
        std::size_t printed = 0;
        for (const auto& object :
             catalogue::childrenNamed(state().domlatestKex.selectSingleNode("LATESTKEX/OBJECTS"), "OBJECT")) {
            const auto textOf = [&object](const char* name) {
                const auto node = object.child(name);
                return node ? node.text() : std::string();
            };
            const auto type = textOf("ObjectType");
            const auto name = textOf("ObjectName");
            if (!pattern_.matches({type, name})) {
                continue;
            }
            Json properties = Json::object();
            std::string listed;
            for (const auto& property : catalogue::childrenNamed(object, "Property")) {
                const auto key = property.child("PropertyName");
                const auto value = property.child("PropertyValue");
                if (key && value) {
                    properties[key.text()] = value.text();
                    listed += (listed.empty() ? "" : ", ") + key.text() + "=" + value.text();
                }
            }
            if (arguments_->json) {
                console_->out << jsonLine({{"object", name}, {"type", type}, {"properties", properties}});
            }
            table_.add({style_.bold(printable(name)), printable(type), style_.dim(printable(listed))});
            ++printed;
        }
        printTable();
        return printed;
    }

    std::size_t printNames() {
        std::size_t printed = 0;
        for (const auto& category :
             catalogue::childrenNamed(state().domConfig.selectSingleNode("Config/Arguments"), "OBJECT")) {
            const auto key = category.child("OBJECTNAME") ? category.child("OBJECTNAME").text() : std::string();
            for (const auto& node : catalogue::childrenNamed(category, "UDON")) {
                const auto name = node.text();
                if (!pattern_.matches({key, name})) {
                    continue;
                }
                if (arguments_->json) {
                    console_->out << jsonLine({{"name", name}, {"category", key}});
                }
                table_.add({style_.bold(printable(name)), printable(key)});
                ++printed;
            }
        }
        printTable();
        return printed;
    }

    void printTable() const {
        if (!arguments_->json) {
            console_->out << table_.text();
        }
    }

    const Console* console_;
    const CatalogueArguments* arguments_;
    Checker checker_;
    Pattern pattern_;
    Style style_;
    Table table_;
};

}  // namespace

void addCatalogue(CLI::App& tool, Call& call) {
    Command command(tool, "catalogue", "Look up macros, objects and user-defined names");
    const auto arguments = std::make_shared<CatalogueArguments>();
    command.option("WHAT", arguments->what, "What to list: macros, objects or names")
        .required()
        .metavar("")
        .oneOf({"macros", "objects", "names"});
    command
        .option("TEXT", arguments->pattern,
                "Only what has this text in its name, type or description; case does not matter")
        .metavar("");
    command.option("--syringe", arguments->syringe, "The syringe that ranges are told for; the first one otherwise")
        .metavar("NAME");
    command.flag("--json", arguments->json, "Print one JSON object per entry, one a line");
    addSetOptions(command, arguments->set);
    command.footer(
        "Without a text macros are listed by name and first line, with one by their parameters. A text that is\n"
        "the whole name of a macro shows that macro alone, lists in full. Exit status 1 when nothing is found.\n\n"
        "Examples:\n"
        "  vrnmethod catalogue macros WASH --set instrument/\n"
        "  vrnmethod catalogue macros LIQUID-INJ --syringe 100uL --set instrument/\n"
        "  vrnmethod catalogue names --set instrument/");
    command.callback([arguments, &call] {
        const auto printed = Catalogue(call.console, *arguments).print();
        call.status = printed > 0 ? ExitStatus::Well : ExitStatus::Findings;
        if (printed == 0) {
            call.console.err << "vrnmethod: no " << arguments->what << " with '" << arguments->pattern << "'\n";
        }
    });
}

}  // namespace vrn::cli
