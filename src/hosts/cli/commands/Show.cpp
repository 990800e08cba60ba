#include <algorithm>

#include "hosts/cli/Checker.h"
#include "hosts/cli/Commands.h"
#include "hosts/cli/FindingText.h"
#include "hosts/cli/Names.h"
#include "hosts/cli/Output.h"
#include "hosts/cli/ParameterText.h"
#include "text/Lists.h"

namespace vrn::cli {

namespace {

struct ShowArguments {
    SetArguments set;
    MethodArguments methods;
};

std::vector<std::string> descriptionLines(const method::MethodContent& content) {
    auto lines = text::split(content.description, text::crlf);
    while (!lines.empty() && lines.back().empty()) {
        lines.pop_back();
    }
    return lines;
}

std::string signatureWords(const method::Inspection& inspection) {
    if (inspection.verification.version == method::MethodVersion::Unsupported) {
        return "signature not known";
    }
    if (inspection.verification.code == 0) {
        return "signature intact";
    }
    return inspection.content.isSigned ? "signature does not match" : "not signed";
}

// One method as text: a head of key and value, then the numbered steps with a table of parameters each.
class Page {
  public:
    Page(const Checker::Result& result, const Style& style) : inspection_(&result.inspection), style_(style) {
        for (const auto& finding : result.findings) {
            if (finding.step == 0) {
                remarks_.push_back(&finding);
            }
        }
    }

    std::string text(const std::string& file) {
        out_ = style_.bold(displayName(file)) + "\n";
        const auto& content = inspection_->content;
        head("Version", printable(content.version.value_or("none")) + ", " + signatureWords(*inspection_));
        std::string label = "Description";
        for (const auto& line : descriptionLines(content)) {
            head(label, printable(line));
            label.clear();
        }
        head("Syringe", printable(content.syringe.value_or("none")) +
                            (inspection_->syringeKnown ? "" : "  " + style_.red("! not on this instrument")));
        head("Sequence", counted(inspection_->steps.size(), "step"));
        for (std::size_t i = 0; i < inspection_->steps.size(); ++i) {
            addStep(i + 1, inspection_->steps[i]);
        }
        for (const auto* const finding : remarks_) {
            if (finding->kind->code == "cycle-outdated") {
                out_ += "\n  " + style_.yellow("! " + placeOf(*finding) + ": " + printable(finding->message)) + "\n";
            }
        }
        return out_;
    }

  private:
    void head(const std::string& label, const std::string& value) {
        out_ += "  " + style_.dim(padded(label, 13)) + value + "\n";
    }

    void addStep(std::size_t number, const method::InspectedStep& step) {
        out_ +=
            "\n  " + padded(std::to_string(number), 4) + style_.bold(printable(step.readable ? step.macro : step.text));
        if (!step.readable) {
            out_ += "  " + style_.red("! is no step");
        } else if (!step.known) {
            out_ += "  " + style_.red("! not in the catalogue");
        }
        out_ += "\n";
        Table table("      ");
        for (const auto& value : step.values) {
            const bool valid = value.status == catalogue::ValueStatus::Valid;
            table.add({printable(value.parameter->row.name), printable(value.value), printable(value.parameter->unit),
                       valid ? style_.dim(printable(limitsText(*value.parameter, false)))
                             : style_.red("! " + printable(catalogue::statusText(*value.parameter, value.status)))});
        }
        for (const auto* const parameter : step.missing) {
            table.add(
                {printable(parameter->row.name), "", printable(parameter->unit), style_.yellow("! has no value")});
        }
        for (const auto& value : step.surplus) {
            table.add({"", printable(value), "", style_.yellow("! no parameter is for it")});
        }
        out_ += table.text();
    }

    const method::Inspection* inspection_;
    Style style_;
    std::vector<const Finding*> remarks_;
    std::string out_;
};

Json valueJson(const method::InspectedValue& value) {
    Json json = {{"name", value.parameter->row.name}, {"value", value.value}};
    addLimits(json, *value.parameter);
    json["valid"] = value.status == catalogue::ValueStatus::Valid;
    if (value.status != catalogue::ValueStatus::Valid) {
        json["problem"] = catalogue::statusText(*value.parameter, value.status);
    }
    return json;
}

Json stepJson(std::size_t number, const method::InspectedStep& step) {
    Json json = {{"step", number}};
    if (!step.readable) {
        json["text"] = step.text;
        return json;
    }
    json["cycle"] = step.macro;
    json["known"] = step.known;
    json["parameters"] = Json::array();
    for (const auto& value : step.values) {
        json["parameters"].push_back(valueJson(value));
    }
    for (const auto* const parameter : step.missing) {
        Json missing = {{"name", parameter->row.name}, {"value", nullptr}};
        addLimits(missing, *parameter);
        json["parameters"].push_back(std::move(missing));
    }
    if (!step.surplus.empty()) {
        json["surplus"] = step.surplus;
    }
    return json;
}

Json methodJson(const std::string& file, const Checker::Result& result) {
    const auto& content = result.inspection.content;
    Json json = {{"file", displayName(file)}};
    json["version"] = content.version ? Json(*content.version) : Json();
    json["signature"] = signatureWords(result.inspection);
    json["description"] = descriptionLines(content);
    json["syringe"] = content.syringe ? Json(*content.syringe) : Json();
    json["steps"] = Json::array();
    for (std::size_t i = 0; i < result.inspection.steps.size(); ++i) {
        json["steps"].push_back(stepJson(i + 1, result.inspection.steps[i]));
    }
    json["findings"] = findingsJson(result.findings);
    return json;
}

ExitStatus run(const Console& console, const ShowArguments& arguments) {
    const auto set = readSet(arguments.set, console);
    const auto makeWork = [&]() -> MethodWork {
        return [&, checker = std::make_shared<Checker>(set)](const MethodFile& file) {
            const auto method = readXmlFile(file.path, console, "Method");
            const auto result = checker->check(method);
            Outcome outcome;
            outcome.out = arguments.methods.json ? jsonLine(methodJson(file.path, result))
                                                 : Page(result, Style(console.outHasColour)).text(file.path);
            return outcome;
        };
    };
    // Pages stand apart by an empty line.
    bool isFirst = true;
    const auto separate = [&](Outcome& outcome) {
        if (!arguments.methods.json && !outcome.out.empty()) {
            outcome.out.insert(0, isFirst ? "" : "\n");
            isFirst = false;
        }
    };
    return runOverMethods({console, arguments.methods, set.files, makeWork, nullptr, separate});
}

}  // namespace

void addShow(CLI::App& tool, Session& session) {
    Command command(tool, "show", "Show what methods do: steps, values, ranges");
    const auto arguments = std::make_shared<ShowArguments>();
    addMethodOptions(command, arguments->methods);
    addSetOptions(command, arguments->set);
    command.footer(
        "Every parameter stands with its value, its unit, and its range or list on the instrument of the\n"
        "document set; \"!\" marks what is not valid there today. Exit status 0 all the same: check judges.\n\n"
        "Examples:\n"
        "  vrnmethod show --set instrument/ method.xml\n"
        "  vrnmethod show --set instrument/ --json methods/ | jq -r '.file + \": \" + .syringe'");
    command.callback([arguments, &session] { session.status = run(session.console, *arguments); });
}

}  // namespace vrn::cli
