// Carries out an edit script as a user at the window would: by choosing, typing and pressing, with all that the window checks.
#pragma once

#include <string>
#include <vector>

#include "hosts/cli/EditScript.h"
#include "hosts/cli/Engine.h"

namespace vrn::cli {

class ScriptedUser {
  public:
    /// The engine has loaded the method.
    ScriptedUser(Engine& engine, std::string scriptName) : engine_(&engine), script_(std::move(scriptName)) {}

    /// Throws `Fault` that names the script's line at the first edit that the editor refuses.
    void carryOut(const std::vector<EditCommand>& commands);

  private:
    void carryOut(const EditCommand& command);
    void insert(const EditCommand& command);
    void insertFirst(const EditCommand& command);
    void replace(const EditCommand& command);
    void set(const EditCommand& command);
    void requireStep(std::size_t step) const;
    void chooseStep(std::size_t step);
    void chooseMacro(const std::string& macro);
    void enterValues(const std::vector<Assignment>& values);
    void enterValue(const Assignment& assignment);
    void requireStoredValues(const EditCommand& command);
    [[nodiscard]] int rowOf(const std::string& parameter) const;
    void press(controls::Button& button);
    void requireSilence();
    [[noreturn]] void fail(const std::string& what) const;

    Engine* engine_;
    std::string script_;
    std::size_t line_ = 0;
};

}  // namespace vrn::cli
