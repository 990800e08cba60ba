// What a method records beside its steps because of them: the atoms of a cycle, the user-defined names in use. The editor writes these
// parts anew with every save.
#pragma once

#include <string>
#include <vector>

#include "method/EditorState.h"
#include "xml/Dom.h"

namespace vrn::method {

/// A user-defined name with its category.
struct NamedArgument {
    std::string category;
    std::string name;
    bool operator==(const NamedArgument&) const = default;
};

struct RecordedParts {
    std::vector<std::string> atoms;  ///< `ATOMLINE`
    std::vector<NamedArgument>
        configuration;                     ///< `SLCONFIG`: the names of each cycle's steps, one empty pair without any
    std::vector<NamedArgument> arguments;  ///< `Arguments`: the names of the method
};

/// What the method records. What does not belong into a part stands there as an entry that no save would write.
[[nodiscard]] RecordedParts recordedParts(const xml::Document& method);

/// The atoms of a catalogue's macro as a save records them.
[[nodiscard]] std::vector<std::string> atomsOf(const xml::Node& macro);

/// The names among the values of these steps as a save of this method would record them; with the method's atoms for `arguments`.
[[nodiscard]] RecordedParts namesInUse(EditorState& state, const xml::Document& method,
                                       const std::vector<MethodMacroEntry>& steps);

}  // namespace vrn::method
