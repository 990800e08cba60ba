#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <string_view>
#include <unordered_map>

#include "hosts/cli/Checker.h"
#include "hosts/cli/Commands.h"
#include "method/SignatureState.h"
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

std::string signatureName(const method::Inspection& inspection) {
    return std::string(method::signatureStateName(method::signatureState(inspection.verification, inspection.content)));
}

// Whether a finding about the method as a whole is shown after its steps; the head shows the others.
bool isRemark(Subject subject) {
    return subject == Subject::Cycles || subject == Subject::Atoms || subject == Subject::Names ||
           subject == Subject::Catalogue;
}

// Steps take much the same room: once some are written, there is room for all. A long text that grows bit by bit is copied again and again.
void reserveForSteps(std::string& out, std::size_t written, std::size_t all) {
    constexpr std::size_t enough = 64;
    if (written == enough && all > enough) {
        out.reserve(out.size() + out.size() / enough * (all - enough) / 10 * 11);
    }
}

// What is printed of a parameter, which many steps have: made once.
template <typename Text>
class PerParameter {
  public:
    explicit PerParameter(Text (*make)(const catalogue::Parameter&)) : make_(make) {}
    const Text& of(const catalogue::Parameter& parameter) {
        const auto found = made_.find(&parameter);
        return found != made_.end() ? found->second : made_.emplace(&parameter, make_(parameter)).first->second;
    }

  private:
    Text (*make_)(const catalogue::Parameter&);
    std::unordered_map<const catalogue::Parameter*, Text> made_;
};

struct ParameterCells {
    std::string name;
    std::string unit;
    std::string limits;
};

ParameterCells cellsOf(const catalogue::Parameter& parameter) {
    return {printable(parameter.row.name), printable(parameter.unit), printable(limitsText(parameter, false))};
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
        head("Version", printable(content.version.value_or("none")));
        head("Signature", signatureName(*inspection_));
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
            reserveForSteps(out_, i + 1, inspection_->steps.size());
        }
        for (const auto* const finding : remarks_) {
            if (isRemark(finding->kind().subject)) {
                const auto place = placeOf(*finding);
                out_ +=
                    "\n  " +
                    style_.yellow("! " + (place.empty() ? "" : printable(place) + ": ") + printable(finding->message)) +
                    "\n";
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
            const auto& texts = cells_.of(*value.parameter);
            std::vector<std::string> cells;
            cells.reserve(4);
            cells.push_back(texts.name);
            cells.push_back(printable(value.value));
            cells.push_back(texts.unit);
            cells.push_back(valid
                                ? style_.dim(texts.limits)
                                : style_.red("! " + printable(catalogue::statusText(*value.parameter, value.status))));
            table.add(std::move(cells));
        }
        for (const auto* const parameter : step.missing) {
            const auto& texts = cells_.of(*parameter);
            table.add({texts.name, "", texts.unit, style_.yellow("! has no value")});
        }
        for (const auto& value : step.unchecked) {
            table.add({"", printable(value), "", style_.red("! cannot be checked: the catalogue's cycle is at fault")});
        }
        for (const auto& value : step.surplus) {
            table.add({"", printable(value), "", style_.yellow("! no parameter is for it")});
        }
        out_ += table.text();
    }

    const method::Inspection* inspection_;
    Style style_;
    std::vector<const Finding*> remarks_;
    PerParameter<ParameterCells> cells_{cellsOf};
    std::string out_;
};

// A method as JSON text, step by step: as one value in memory it would take many times the room of the file.
class JsonPage {
  public:
    std::string text(const std::string& file, const Checker::Result& result) {
        const auto& content = result.inspection.content;
        Json head = {{"file", displayName(file)}};
        head["version"] = content.version ? Json(*content.version) : Json();
        head["signature"] = signatureName(result.inspection);
        head["description"] = descriptionLines(content);
        head["syringe"] = content.syringe ? Json(*content.syringe) : Json();
        out_ = jsonText(head);
        out_.pop_back();
        out_ += ",\"steps\":[";
        for (std::size_t i = 0; i < result.inspection.steps.size(); ++i) {
            out_ += i == 0 ? "" : ",";
            addStep(i + 1, result.inspection.steps[i]);
            reserveForSteps(out_, i + 1, result.inspection.steps.size());
        }
        out_ += "],\"findings\":" + jsonText(findingsJson(result.findings)) + "}\n";
        return std::move(out_);
    }

  private:
    // What is around a parameter's value.
    struct Frame {
        std::string before;
        std::string after;
    };
    static Frame frameOf(const catalogue::Parameter& parameter) {
        Json limits = Json::object();
        addLimits(limits, parameter);
        auto after = jsonText(limits);
        after.pop_back();
        after[0] = ',';
        return {R"({"name":)" + jsonText(parameter.row.name) + R"(,"value":)", after.size() > 1 ? after : ""};
    }

    void addStep(std::size_t number, const method::InspectedStep& step) {
        out_ += R"({"step":)" + std::to_string(number);
        if (!step.readable) {
            out_ += R"(,"text":)" + jsonText(step.text) + "}";
            return;
        }
        out_ += R"(,"cycle":)";
        addText(step.macro);
        out_ += step.known ? R"(,"known":true,"parameters":[)" : R"(,"known":false,"parameters":[)";
        bool isFirst = true;
        const auto begin = [&](const catalogue::Parameter& parameter) -> const Frame& {
            const auto& frame = frames_.of(parameter);
            out_ += isFirst ? "" : ",";
            out_ += frame.before;
            isFirst = false;
            return frame;
        };
        for (const auto& value : step.values) {
            const auto& frame = begin(*value.parameter);
            const bool isValid = value.status == catalogue::ValueStatus::Valid;
            addText(value.value);
            out_ += frame.after;
            if (isValid) {
                out_ += R"(,"valid":true})";
                continue;
            }
            out_ += R"(,"valid":false,"problem":)";
            addText(catalogue::statusText(*value.parameter, value.status));
            out_ += "}";
        }
        for (const auto* const parameter : step.missing) {
            const auto& frame = begin(*parameter);
            out_ += "null" + frame.after + "}";
        }
        out_ += "]";
        addTexts("unchecked", step.unchecked);
        addTexts("surplus", step.surplus);
        out_ += "}";
    }

    // Nearly all texts need nothing but quotes.
    void addText(std::string_view text) {
        const bool isPlain = std::all_of(text.begin(), text.end(),
                                         [](char c) { return c >= 0x20 && c < 0x7F && c != '"' && c != '\\'; });
        if (isPlain) {
            out_ += '"';
            out_ += text;
            out_ += '"';
        } else {
            out_ += jsonText(text);
        }
    }

    void addTexts(const char* key, const std::vector<std::string_view>& texts) {
        if (!texts.empty()) {
            out_ += ",\"" + std::string(key) + "\":" + jsonText(texts);
        }
    }

    PerParameter<Frame> frames_{frameOf};
    std::string out_;
};

ExitStatus run(const Console& console, const ShowArguments& arguments) {
    const auto set = readSet(arguments.set, console);
    const auto makeWork = [&]() -> MethodWork {
        return [&, checker = std::make_shared<Checker>(set)](const MethodFile& file) {
            const auto method = readXmlFile(file.path, console, "Method");
            const auto result = checker->check(method);
            Outcome outcome;
            outcome.out = arguments.methods.json ? JsonPage().text(file.path, result)
                                                 : Page(result, Style(console.outHasColour)).text(file.path);
            return outcome;
        };
    };
    // Between pages is an empty line.
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

void addShow(CLI::App& tool, Call& call) {
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
    command.callback([arguments, &call] { call.status = run(call.console, *arguments); });
}

}  // namespace vrn::cli
