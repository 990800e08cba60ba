// What a value that a method holds is worth on this instrument today. Stricter than what the window lets pass: it tells of
// references and objects that are no longer there.
#pragma once

#include <string>
#include <string_view>

#include "catalogue/ParameterModel.h"

namespace vrn::catalogue {

enum class ValueStatus {
    Valid,
    NotANumber,
    OutOfRange,
    NotInList,    ///< an object that the instrument does not have
    UnknownName,  ///< a reference to a user-defined name that nobody defines
    NotKnown,     ///< the range is a syringe's, and no syringe is chosen
};

[[nodiscard]] ValueStatus valueStatus(method::EditorState& state, const Parameter& parameter, std::string_view value);

/// The reason in plain words, naming range or list; empty for a valid value.
[[nodiscard]] std::string statusText(const Parameter& parameter, ValueStatus status);

}  // namespace vrn::catalogue
