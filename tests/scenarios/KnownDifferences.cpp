#include "scenarios/KnownDifferences.h"

#include <array>

namespace vrn::test {

namespace {

using Json = nlohmann::json;

// A line number is one of the source of a host's own build.
constexpr const char* lineNumber = "intLineNumber";

// Data of the engine. A window shows what follows from it, and so do the members that a host calls.
constexpr std::array keysOfEngine{"IsChanged",           "booDisable",      "booBaselineLoaded",
                                  "booCycleDateChanged", "arrMethodMacros", "strAtomLine"};
// A row shows its list when the user opens it, which would end another edit.
constexpr std::array keysOfRow{"object", "items"};

}  // namespace

Json withoutLineNumbers(Json reply) {
    if (!reply.contains("events")) {
        return reply;
    }
    for (auto& event : reply["events"]) {
        event.erase(lineNumber);
    }
    return reply;
}

Json shownByWindows(Json snapshot) {
    for (const auto* const key : keysOfEngine) {
        snapshot.erase(key);
    }
    for (auto& row : snapshot.at("grdMacro").at("rows")) {
        for (const auto* const key : keysOfRow) {
            row.erase(key);
        }
    }
    return snapshot;
}

}  // namespace vrn::test
