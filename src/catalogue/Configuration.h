// User-defined names: which of them a value may be, under which category they stand, and which a method uses.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "method/EditorState.h"

namespace vrn::catalogue {

/// Whether `value` is one of the user-defined names configured for the parameter's unit code. A value that is part of a configured
/// name, or of two that follow each other, counts too. `name` is field 0 of the definition.
[[nodiscard]] bool ControlUserDef_Obj(method::EditorState& state, const std::string& name, const std::string& value);

/// The category of a user-defined name: from the baseline method's own copy, else from the configuration; "" when neither has it or
/// the name holds a double quote.
[[nodiscard]] std::string GetPredUnitName(method::EditorState& state, const xml::Document& configuration,
                                          const std::string& udon);

/// A text cut before its first blank, then before its first "-", then before its first "+".
void ClearSpaces(std::string& text);

/// Distinct user-defined names in order of first use. Two that differ in case only are one.
class UdonCollection {
  public:
    /// Adds the cleaned form of a value that begins with "SL."; any other value is passed over.
    void addValue(std::string_view value);
    [[nodiscard]] const std::vector<std::string>& names() const noexcept { return names_; }

  private:
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>{}(text); }
    };
    std::vector<std::string> names_;
    std::unordered_set<std::string> upperCased_;
    std::unordered_set<std::string, TextHash, std::equal_to<>> known_;  ///< values that were added, as they were
};

/// The user-defined names in the macro values, and in the atom line, of a method document.
void CheckMacroValues(method::EditorState& state, const xml::Document& method, UdonCollection& udons);
void CheckCycleUdons(method::EditorState& state, const xml::Document& method, UdonCollection& udons);
[[nodiscard]] UdonCollection MethodUdons(method::EditorState& state, const xml::Document& method);

}  // namespace vrn::catalogue
