// What a method document says, read without an editor and without the documents around it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "method/EditorState.h"
#include "xml/Dom.h"

namespace vrn::method {

/// The description as the box shows it: every line ended by CR LF.
[[nodiscard]] std::string descriptionOf(const xml::Document& method);

/// Meets the steps in order until `meet` answers false: the node, and the text, which lives until `meet` returns. What has no text
/// is no step. The node is the first of a text that stands there bare in several.
using MeetStep = std::function<bool(const xml::Node& node, std::string_view text)>;
void forEachStep(const xml::Document& method, const MeetStep& meet);
/// The texts of the steps, those without text left out.
[[nodiscard]] std::vector<std::string> stepTexts(const xml::Document& method);
/// The node of each of these steps.
[[nodiscard]] std::vector<xml::Node> stepNodes(const xml::Document& method);

/// A cycle as the method embeds it.
struct EmbeddedCycle {
    std::string name;
    std::vector<std::string> definitions;  ///< parameter definitions in grid order
};

/// The embedded cycles in document order. A name without its brackets is used as it stands.
[[nodiscard]] std::vector<EmbeddedCycle> embeddedCycles(const xml::Document& method);
/// The cycle of this name, or null.
[[nodiscard]] const EmbeddedCycle* findCycle(const std::vector<EmbeddedCycle>& cycles, std::string_view name);

/// The display names of the parameters that a cycle's definitions describe.
[[nodiscard]] std::vector<std::string> parameterNames(const std::vector<std::string>& definitions);

struct MethodContent {
    std::optional<std::string> version;
    std::string description;
    std::optional<std::string> syringe;
    std::vector<std::string> steps;  ///< see `stepTexts`
    std::vector<EmbeddedCycle> cycles;
    bool isSigned = false;  ///< whether there is a signature of either form at all
    std::string timestamp;  ///< of the first cycle when it was embedded; empty when there is none
};

[[nodiscard]] MethodContent contentOf(const xml::Document& method);

}  // namespace vrn::method
