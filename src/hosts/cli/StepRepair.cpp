// Edits of steps that the editor cannot read, in the document itself.
#include <algorithm>
#include <cstddef>
#include <utility>

#include "hosts/cli/EditScript.h"
#include "hosts/cli/Output.h"
#include "method/Format.h"
#include "method/MethodContent.h"
#include "method/Verification.h"
#include "services/Signature.h"

namespace vrn::cli {

namespace {

using Verb = EditCommand::Verb;

bool canBeRead(const method::InspectedStep& step) { return step.readable && step.known; }

class Repair {
  public:
    Repair(Engine& engine, const XmlFile& method, const method::Inspection& inspection, const std::string& script)
        : engine_(&engine), script_(&script), file_(&method.path), steps_(inspection.steps) {
        document_.load(method.document);
        nodes_ = method::stepNodes(document_);
    }

    RepairedMethod carryOut(const std::vector<EditCommand>& commands) {
        for (const auto& command : commands) {
            if (isWhole() || command.verb == Verb::Syringe || command.verb == Verb::Description) {
                kept_.push_back(command);
            } else {
                repair(command);
            }
        }
        if (!isWhole()) {
            throw Fault(displayName(*file_) + ": cannot be edited: " + unreadStep() + ": delete or replace it");
        }
        return {loadable(), std::move(kept_)};
    }

  private:
    [[nodiscard]] bool isWhole() const { return std::all_of(steps_.begin(), steps_.end(), canBeRead); }

    [[nodiscard]] std::string unreadStep() const {
        const auto found = std::find_if_not(steps_.begin(), steps_.end(), canBeRead);
        return "step " + std::to_string(found - steps_.begin() + 1) +
               (found->readable ? ": the catalogue has no cycle '" + std::string(found->macro) + "'"
                                : ": '" + std::string(found->text) + "' is not a cycle with its values in parentheses");
    }

    [[noreturn]] void fail(const EditCommand& command, const std::string& what) const {
        throw Fault(displayName(*script_) + ":" + std::to_string(command.line) + ": " + what);
    }

    void repair(const EditCommand& command) {
        const bool concernsStep = command.verb == Verb::Delete || command.verb == Verb::Replace;
        if (concernsStep && command.step > steps_.size()) {
            fail(command, "there is no step " + std::to_string(command.step) + "; the method has " +
                              std::to_string(steps_.size()));
        }
        if (command.verb == Verb::Delete) {
            remove(command.step);
        } else if (command.verb == Verb::Replace && !canBeRead(steps_[command.step - 1])) {
            replace(command);
        } else {
            fail(command, "before this, delete or replace what the editor cannot read: " + unreadStep());
        }
    }

    // A step without an element of its own goes on up to the next element.
    static void removeRest(const xml::Node& step) {
        const bool isBare = step.kind() != xml::NodeKind::Element;
        for (auto next = step.nextSibling(); isBare && next && next.kind() != xml::NodeKind::Element;
             next = step.nextSibling()) {
            step.parentNode().removeChild(next);
        }
    }

    void remove(std::size_t step) {
        const auto at = static_cast<std::ptrdiff_t>(step) - 1;
        removeRest(nodes_[step - 1]);
        nodes_[step - 1].parentNode().removeChild(nodes_[step - 1]);
        nodes_.erase(nodes_.begin() + at);
        steps_.erase(steps_.begin() + at);
        // What is still to be replaced moves up, or is gone.
        std::erase_if(kept_, [step](const EditCommand& kept) { return kept.step == step; });
        for (auto& kept : kept_) {
            kept.step -= kept.step > step ? 1 : 0;
        }
    }

    // Any cycle that the editor knows holds the place until the editor replaces it.
    void replace(const EditCommand& command) {
        const auto& known = engine_->state().cboSelectedMacro.items();
        if (known.empty()) {
            fail(command, "the catalogue has no macro '" + command.text + "'");
        }
        removeRest(nodes_[command.step - 1]);
        std::string text;
        method::format::appendStep(text, {known.front(), {}});
        nodes_[command.step - 1].setText(text);
        steps_[command.step - 1] = {};
        kept_.push_back(command);
    }

    // In the form that every load takes: its own signature would not match any more. What is written in the end is built anew.
    [[nodiscard]] std::string loadable() {
        const auto root = document_.documentElement();
        for (const auto& node : root.childNodes()) {
            const auto name = node.name();
            if (name.substr(name.find(':') + 1) == services::signatureElementV23 || name == services::keyElementV23) {
                root.removeChild(node);
            }
        }
        auto version = root.child(method::format::version.name());
        if (!version) {
            version = root.appendChild(document_.createElement(method::format::version.name()));
        }
        version.setText(method::format::currentVersionText);
        method::MethodSigner(engine_->state()).sign(document_);
        return document_.xml();
    }

    Engine* engine_;
    const std::string* script_;
    const std::string* file_;
    xml::Document document_;
    std::vector<xml::Node> nodes_;
    std::vector<method::InspectedStep> steps_;
    std::vector<EditCommand> kept_;
};

}  // namespace

std::optional<RepairedMethod> repaired(Engine& engine, const XmlFile& method, const method::Inspection& inspection,
                                       const std::string& script, const std::vector<EditCommand>& commands) {
    if (std::all_of(inspection.steps.begin(), inspection.steps.end(), canBeRead)) {
        return std::nullopt;
    }
    return Repair(engine, method, inspection, script).carryOut(commands);
}

}  // namespace vrn::cli
