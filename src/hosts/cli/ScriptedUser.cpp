// Edits as a user at the window makes them.
#include <algorithm>

#include "hosts/cli/EditScript.h"
#include "hosts/cli/Output.h"
#include "text/Lists.h"

namespace vrn::cli {

namespace {

constexpr int menuPosition = 200;  // where a press of the mouse opens the menu of values

std::string quoted(const std::string& text) { return "'" + text + "'"; }

class ScriptedUser {
  public:
    ScriptedUser(Engine& engine, const std::string& script) : engine_(&engine), script_(&script) {}

    void carryOut(const std::vector<EditCommand>& commands) {
        for (const auto& command : commands) {
            carryOut(command);
        }
        // The method's timestamp and atoms are those of the cycle that is shown: the first one's.
        if (engine_->state().lstMethodMacroList.count() > 0) {
            (void)engine_->state().lstMethodMacroList.userSelect(0);
        }
        static_cast<void>(engine_->takeReports());
    }

  private:
    void carryOut(const EditCommand& command) {
        using Verb = EditCommand::Verb;
        auto& state = engine_->state();
        line_ = command.line;
        switch (command.verb) {
            case Verb::Description:
                (void)state.txtMethodDescription.userType(command.text);
                break;
            case Verb::Syringe: {
                const auto index = state.cboSyringe.indexOf(command.text);
                if (index == controls::noSelection) {
                    fail("there is no syringe " + quoted(command.text) +
                         "; there are: " + text::join(state.cboSyringe.items(), ", "));
                }
                (void)state.cboSyringe.userSelect(index);
                break;
            }
            case Verb::Insert:
                insert(command);
                break;
            case Verb::Replace:
                replace(command);
                break;
            case Verb::Delete:
                chooseStep(command.step);
                press(state.cmdDelete);
                break;
            case Verb::Set:
                set(command);
                break;
        }
    }

    void insert(const EditCommand& command) {
        auto& state = engine_->state();
        const auto count = static_cast<std::size_t>(state.lstMethodMacroList.count());
        const bool atEnd = command.step == EditCommand::atEnd;
        if (command.isBefore && command.step == 1 && count > 0) {
            insertFirst(command);
            return;
        }
        if (!atEnd) {
            requireStep(command.step);
        }
        if (const auto inFront = atEnd ? count : command.step - (command.isBefore ? 1 : 0); inFront > 0) {
            chooseStep(inFront);
        }
        chooseMacro(command.text);
        enterValues(command.values);
        press(state.cmdInsert);
        if (static_cast<std::size_t>(state.lstMethodMacroList.count()) != count + 1) {
            fail("the editor did not insert the step");
        }
    }

    // The window inserts after a step only: the first one is doubled, then the front one of the two is replaced.
    void insertFirst(const EditCommand& command) {
        chooseStep(1);
        requireStoredValues(command);
        press(engine_->state().cmdInsert);
        auto first = command;
        first.step = 1;
        replace(first);
    }

    void replace(const EditCommand& command) {
        chooseStep(command.step);
        chooseMacro(command.text);
        enterValues(command.values);
        press(engine_->state().cmdReplace);
    }

    void set(const EditCommand& command) {
        chooseStep(command.step);
        requireStoredValues(command);
        enterValues(command.values);
        press(engine_->state().cmdReplace);
    }

    void chooseStep(std::size_t step) {
        requireStep(step);
        (void)engine_->state().lstMethodMacroList.userSelect(static_cast<int>(step) - 1);
    }

    void requireStep(std::size_t step) const {
        const auto count = static_cast<std::size_t>(engine_->state().lstMethodMacroList.count());
        if (step == 0 || step > count) {
            fail("there is no step " + std::to_string(step) + "; the method has " + std::to_string(count));
        }
    }

    void chooseMacro(const std::string& macro) {
        auto& macros = engine_->state().cboSelectedMacro;
        const auto index = macros.indexOf(macro);
        if (index == controls::noSelection) {
            fail("the catalogue has no macro " + quoted(macro));
        }
        (void)macros.userSelect(index);
    }

    void enterValues(const std::vector<Assignment>& values) {
        for (const auto& assignment : values) {
            enterValue(assignment);
        }
    }

    void enterValue(const Assignment& assignment) {
        auto& state = engine_->state();
        const int row = rowOf(assignment.parameter);
        static_cast<void>(engine_->takeReports());
        auto answer = state.grdMacro.userEdit(row, assignment.value, true);
        if (answer == controls::UserRequest::NoSuchEntry) {
            // The menu offers more names than the drop-down list.
            (void)state.grdMacro.userMouseDown(row, menuPosition);
            const auto& captions = state.mnuUserIndex.captions();
            const auto found = std::find(captions.begin(), captions.end(), assignment.value);
            if (state.mnuUserIndex.shown() && found != captions.end()) {
                answer = state.mnuUserIndex.userChoose(static_cast<int>(found - captions.begin()));
            }
            state.mnuUserIndex.close();
        }
        const bool refused = !engine_->takeReports().empty() || answer != controls::UserRequest::Done;
        if (refused) {
            const auto& hint = state.arrMacroParams.at(static_cast<std::size_t>(row)).text;
            fail(quoted(assignment.value) + " is refused for " + quoted(assignment.parameter) +
                 (hint.empty() ? "" : ": " + hint));
        }
    }

    [[nodiscard]] int rowOf(const std::string& parameter) const {
        const auto& grid = engine_->state().grdMacro;
        int found = 0;
        std::vector<std::string> names;
        for (int row = 1; row < grid.rowCount(); ++row) {
            names.push_back(grid.cellText(row, 0));
            if (names.back() == parameter) {
                if (found != 0) {
                    fail("there are several parameters " + quoted(parameter));
                }
                found = row;
            }
        }
        if (found == 0) {
            fail("there is no parameter " + quoted(parameter) +
                 (names.empty() ? "; the macro has none" : "; there are: " + text::join(names, ", ")));
        }
        return found;
    }

    // The window puts the default in place of a value that is not valid. Nothing is to change that the script does not name.
    void requireStoredValues(const EditCommand& command) {
        const auto& state = engine_->state();
        const auto& entry = state.arrMethodMacros.at(static_cast<std::size_t>(state.lstMethodMacroList.listIndex()));
        const auto values = entry.MacroValues.value_or(std::vector<std::string>());
        const bool isSet = command.verb == EditCommand::Verb::Set;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const int row = static_cast<int>(i) + 1;
            if (row >= state.grdMacro.rowCount()) {
                fail("the step has more values than its cycle has parameters: use update first");
            }
            const auto name = state.grdMacro.cellText(row, 0);
            const bool isGiven =
                isSet && std::any_of(command.values.begin(), command.values.end(),
                                     [&name](const Assignment& value) { return value.parameter == name; });
            if (!isGiven && state.grdMacro.cellText(row, 1) != values[i]) {
                fail("the step's " + quoted(name) + " holds " + quoted(values[i]) + ", which is not valid: set it too");
            }
        }
    }

    void press(controls::Button& button) {
        // What was reported while choosing does not concern what is pressed now.
        static_cast<void>(engine_->takeReports());
        if (button.userClick() != controls::UserRequest::Done) {
            fail("the editor does not allow this");
        }
        requireSilence();
    }

    void requireSilence() {
        if (const auto reports = engine_->takeReports(); !reports.empty()) {
            fail(reports.front());
        }
    }

    [[noreturn]] void fail(const std::string& what) const {
        throw Fault(displayName(*script_) + ":" + std::to_string(line_) + ": " + what);
    }

    Engine* engine_;
    const std::string* script_;
    std::size_t line_ = 0;
};

}  // namespace

void carryOut(Engine& engine, const std::string& script, const std::vector<EditCommand>& commands) {
    ScriptedUser(engine, script).carryOut(commands);
}

}  // namespace vrn::cli
