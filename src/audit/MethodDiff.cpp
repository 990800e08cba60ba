#include "audit/MethodDiff.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "method/Format.h"
#include "method/MethodContent.h"
#include "services/Signature.h"
#include "services/SignatureProfile.h"
#include "text/Alignment.h"
#include "text/Lists.h"
#include "xml/ComparedTree.h"

namespace vrn::audit {

namespace format = method::format;

namespace {

struct NamedValue {
    std::string name;
    std::string value;
};

struct Step {
    std::string text;
    std::string cycle;
    std::vector<NamedValue> values;
};

using NamesByCycle = std::unordered_map<std::string, std::vector<std::string>>;

Step stepFrom(const NamesByCycle& cycles, const std::string& text) {
    Step step{text, text, {}};
    method::MethodMacroEntry entry;
    try {
        entry = format::stepOf(text);
    } catch (const errors::Error&) {
        return step;  // no step by its form: reported as it is
    }
    step.cycle = entry.MacroName;
    static const std::vector<std::string> none;
    const auto cycle = cycles.find(entry.MacroName);
    const auto& names = cycle != cycles.end() ? cycle->second : none;
    std::unordered_map<std::string, int> seen;
    const auto values = entry.MacroValues.value_or(std::vector<std::string>());
    for (std::size_t i = 0; i < values.size(); ++i) {
        auto name = i < names.size() ? names[i] : "value " + std::to_string(i + 1);
        // Names that come again are distinguished by a number.
        if (const int occurrence = ++seen[name]; occurrence > 1) {
            name += " (" + std::to_string(occurrence) + ")";
        }
        step.values.push_back({std::move(name), values[i]});
    }
    return step;
}

std::vector<Step> stepsOf(const method::MethodContent& content) {
    NamesByCycle names;
    for (const auto& cycle : content.cycles) {
        names.try_emplace(cycle.name, method::parameterNames(cycle.definitions));
    }
    std::vector<Step> steps;
    for (const auto& text : content.steps) {
        steps.push_back(stepFrom(names, text));
    }
    return steps;
}

std::vector<Difference> valueDifferences(const Step& before, const Step& after) {
    std::unordered_map<std::string_view, const std::string*> now;
    for (const auto& value : after.values) {
        now.emplace(value.name, &value.value);
    }
    std::vector<Difference> differences;
    for (const auto& old : before.values) {
        const auto found = now.find(old.name);
        if (found == now.end()) {
            differences.push_back({old.name, old.value, std::nullopt});
            continue;
        }
        if (*found->second != old.value) {
            differences.push_back({old.name, old.value, *found->second});
        }
        now.erase(found);
    }
    for (const auto& value : after.values) {
        if (now.contains(value.name)) {
            differences.push_back({value.name, std::nullopt, value.value});
        }
    }
    // Equal values in texts that are not: what differs stands outside of the parentheses.
    if (differences.empty()) {
        differences.push_back({"text", before.text, after.text});
    }
    return differences;
}

StepDifference removed(const std::vector<Step>& steps, std::size_t position) {
    StepDifference difference{position + 1, std::nullopt, steps[position].cycle, {}};
    for (const auto& value : steps[position].values) {
        difference.values.push_back({value.name, value.value, std::nullopt});
    }
    return difference;
}

StepDifference added(const std::vector<Step>& steps, std::size_t position) {
    StepDifference difference{std::nullopt, position + 1, steps[position].cycle, {}};
    for (const auto& value : steps[position].values) {
        difference.values.push_back({value.name, std::nullopt, value.value});
    }
    return difference;
}

std::vector<text::Alignable> alignables(const std::vector<Step>& steps, text::Numbering& texts,
                                        text::Numbering& cycles) {
    std::vector<text::Alignable> items;
    items.reserve(steps.size());
    for (const auto& step : steps) {
        items.push_back({texts.of(step.text), cycles.of(step.cycle)});
    }
    return items;
}

std::vector<StepDifference> stepDifferences(const std::vector<Step>& before, const std::vector<Step>& after) {
    text::Numbering texts;
    text::Numbering cycles;
    auto pairs = text::alignment(alignables(before, texts, cycles), alignables(after, texts, cycles));
    pairs.emplace_back(before.size(), after.size());
    std::vector<StepDifference> differences;
    std::size_t i = 0;
    std::size_t j = 0;
    for (const auto& [nextBefore, nextAfter] : pairs) {
        for (; i < nextBefore; ++i) {
            differences.push_back(removed(before, i));
        }
        for (; j < nextAfter; ++j) {
            differences.push_back(added(after, j));
        }
        if (i < before.size() && before[i].text != after[j].text) {
            differences.push_back({i + 1, j + 1, after[j].cycle, valueDifferences(before[i], after[j])});
        }
        ++i;
        ++j;
    }
    return differences;
}

void addIfDifferent(std::vector<Difference>& differences, std::string name, const std::optional<std::string>& before,
                    const std::optional<std::string>& after) {
    if (before != after) {
        differences.push_back({std::move(name), before, after});
    }
}

std::optional<std::string> textOrNone(const std::string& text) {
    return text.empty() ? std::nullopt : std::optional(text);
}

// Cycles by name; of several with one name in a method, by which of them it is.
using CyclesByName = std::map<std::pair<std::string, int>, const method::EmbeddedCycle*>;

CyclesByName byName(const std::vector<method::EmbeddedCycle>& cycles) {
    std::map<std::string, int> seen;
    CyclesByName found;
    for (const auto& cycle : cycles) {
        found.emplace(std::pair(cycle.name, ++seen[cycle.name]), &cycle);
    }
    return found;
}

// The names of those cycles, in order, that the other method has too.
std::string commonOrder(const std::vector<method::EmbeddedCycle>& cycles, const CyclesByName& others) {
    std::map<std::string, int> seen;
    std::vector<std::string> names;
    for (const auto& cycle : cycles) {
        if (others.contains({cycle.name, ++seen[cycle.name]})) {
            names.push_back(cycle.name);
        }
    }
    return text::join(names, ", ");
}

std::string definitionsOf(const method::EmbeddedCycle& cycle) { return text::join(cycle.definitions, "\n"); }

std::vector<Difference> cycleDifferences(const method::MethodContent& before, const method::MethodContent& after) {
    std::vector<Difference> differences;
    const bool sameFirst =
        !before.cycles.empty() && !after.cycles.empty() && before.cycles.front().name == after.cycles.front().name;
    addIfDifferent(differences, sameFirst ? before.cycles.front().name + ": date" : "date",
                   textOrNone(before.timestamp), textOrNone(after.timestamp));
    const auto old = byName(before.cycles);
    const auto now = byName(after.cycles);
    for (const auto& [key, cycle] : old) {
        if (const auto found = now.find(key); found == now.end()) {
            differences.push_back({key.first, definitionsOf(*cycle), std::nullopt});
        } else if (found->second->definitions != cycle->definitions) {
            differences.push_back({key.first + ": parameters", definitionsOf(*cycle), definitionsOf(*found->second)});
        }
    }
    for (const auto& [key, cycle] : now) {
        if (!old.contains(key)) {
            differences.push_back({key.first, std::nullopt, definitionsOf(*cycle)});
        }
    }
    addIfDifferent(differences, "order", commonOrder(before.cycles, now), commonOrder(after.cycles, old));
    return differences;
}

// The description as lines, without those at its end that hold nothing.
std::string plainDescription(const std::string& description) {
    auto text = text::replacedAll(description, text::crlf, "\n");
    text.resize(text.find_last_not_of('\n') + 1);
    return text;
}

// What is left of a method's document when all that is reported by name is taken out. Only what was reported in full goes: a step with an
// attribute, a cycle's name without its brackets, a text with white space at its ends stay.
class Rest {
  public:
    explicit Rest(const xml::Document& method) : tree_(xml::treeOf(method)), root_(tree_.child(format::root.name())) {}

    [[nodiscard]] const xml::ComparedTree& tree() const { return tree_; }

    // The parts that both methods have keep their place.
    static void takeOutTold(Rest& before, Rest& after, bool isDescriptionTold) {
        if (before.root_ == nullptr || after.root_ == nullptr) {
            return;
        }
        for (auto* const rest : {&before, &after}) {
            rest->takeOutSignature();
            rest->takeOutDate();
            rest->takeOutSteps();
            rest->takeOutCycles();
            if (isDescriptionTold) {
                rest->takeOutDescription();
            }
        }
        takeOutLeaf(before, after, format::version);
        takeOutLeaf(before, after, format::syringeSize);
        takeOutIfEmptied(before, after, format::syringe);
        takeOutIfEmptied(before, after, format::description);
    }

  private:
    [[nodiscard]] xml::ComparedTree* at(const format::Element& element) {
        auto* found = root_;
        text::forEachItem(element.belowRoot(), "/",
                          [&found](std::string_view name) { found = found == nullptr ? nullptr : found->child(name); });
        return found;
    }

    // Of either form.
    static bool isSignature(const xml::ComparedTree& tree) {
        if (tree.namespaceUri.empty()) {
            return tree.name == services::signatureElementV23;
        }
        xml::ElementView view;
        view.localName = std::string_view(tree.name).substr(tree.name.find(':') + 1);
        view.namespaceUri = tree.namespaceUri;
        return services::isSignature(view);
    }
    void takeOutSignature() { std::erase_if(root_->children, isSignature); }
    void takeOutDate() {
        std::erase_if(root_->attributes, [](const xml::TreeAttribute& attribute) {
            return attribute.name == format::timestampAttribute && !attribute.value.empty();
        });
    }
    void takeOutSteps() {
        if (auto* const sequence = at(format::sequence)) {
            std::erase_if(sequence->children, [](const xml::ComparedTree& step) {
                return step.name == format::step.name() && step.isPlainLeaf() && !step.children.empty();
            });
        }
    }
    void takeOutCycles() {
        auto* const data = at(format::cycles);
        if (data == nullptr) {
            return;
        }
        bool isInCycle = false;  // lines before the first name belong to none
        std::erase_if(data->children, [&isInCycle](const xml::ComparedTree& node) {
            if (node.name == format::cycleHeading.name()) {
                isInCycle = true;
                return node.isPlainLeaf() && format::nameInHeading(node.leafText()).has_value();
            }
            return isInCycle && node.name == format::cycleLine.name() && node.isPlainLeaf();
        });
    }
    void takeOutDescription() {
        if (auto* const description = at(format::description)) {
            std::erase_if(description->children, [](const xml::ComparedTree& line) {
                return line.name == format::descriptionLine.name() && line.isPlainLeaf();
            });
        }
    }
    static void takeOutLeaf(Rest& before, Rest& after, const format::Element& element) {
        auto* const old = before.plainLeaf(element);
        auto* const now = after.plainLeaf(element);
        if (old != nullptr && now != nullptr) {
            old->children.clear();
            now->children.clear();
        } else if (old != nullptr && after.at(element) == nullptr) {
            before.erase(element, old);
        } else if (now != nullptr && before.at(element) == nullptr) {
            after.erase(element, now);
        }
    }
    [[nodiscard]] xml::ComparedTree* plainLeaf(const format::Element& element) {
        auto* const leaf = at(element);
        return leaf != nullptr && leaf->isPlainLeaf() && !leaf->children.empty() ? leaf : nullptr;
    }
    void erase(const format::Element& element, const xml::ComparedTree* child) {
        std::erase_if(at(element.parent())->children,
                      [child](const xml::ComparedTree& each) { return &each == child; });
    }
    // An element that one method alone has, with nothing in it but what was reported.
    static void takeOutIfEmptied(Rest& before, Rest& after, const format::Element& element) {
        auto* const old = before.at(element);
        auto* const now = after.at(element);
        if (old != nullptr && now == nullptr && old->children.empty() && old->attributes.empty()) {
            before.erase(element, old);
        } else if (now != nullptr && old == nullptr && now->children.empty() && now->attributes.empty()) {
            after.erase(element, now);
        }
    }

    xml::ComparedTree tree_;
    xml::ComparedTree* root_;
};

std::vector<Difference> restDifferences(const xml::Document& before, const xml::Document& after,
                                        bool isDescriptionTold) {
    Rest old(before);
    Rest now(after);
    Rest::takeOutTold(old, now, isDescriptionTold);
    std::vector<Difference> differences;
    for (auto& each : xml::treeDifferences(old.tree(), now.tree())) {
        differences.push_back({std::move(each.path), std::move(each.before), std::move(each.after)});
    }
    return differences;
}

}  // namespace

MethodDiff differenceOf(const xml::Document& before, const xml::Document& after) {
    const auto old = method::contentOf(before);
    const auto now = method::contentOf(after);
    MethodDiff diff;
    addIfDifferent(diff.head, "Version", old.version, now.version);
    addIfDifferent(diff.head, "Syringe", old.syringe, now.syringe);
    const auto told = diff.head.size();
    addIfDifferent(diff.head, "Description", plainDescription(old.description), plainDescription(now.description));
    diff.steps = stepDifferences(stepsOf(old), stepsOf(now));
    diff.cycles = cycleDifferences(old, now);
    diff.rest = restDifferences(before, after, diff.head.size() > told);
    return diff;
}

}  // namespace vrn::audit
