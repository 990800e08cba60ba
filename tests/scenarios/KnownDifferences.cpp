#include "scenarios/KnownDifferences.h"

#include <array>
#include <string>
#include <string_view>

namespace vrn::test {

namespace {

using Json = nlohmann::json;

struct KnownDifference {
    std::string_view from, to;  ///< what stands before and behind it
    std::string_view unless;    ///< not where this stands between them
};

constexpr std::array differences{
    // MSXML counts its errors otherwise than any other parser and words them in the system's language; under Wine it fills neither
    // these nor the place. What the editor itself refuses has one record everywhere.
    KnownDifference{"\r\nError:   ", "URL:     ", "DTD is prohibited."},
};

// A line number is one of the source of a host's own build.
constexpr const char* lineNumber = "intLineNumber";

// Data of the engine. A window shows what follows from it, and so do the members that a host calls.
constexpr std::array keysOfEngine{"IsChanged",           "booDisable",      "booBaselineLoaded",
                                  "booCycleDateChanged", "arrMethodMacros", "strAtomLine"};
// A row shows its list when the user opens it, which would end another edit.
constexpr std::array keysOfRow{"object", "items"};

std::string without(const KnownDifference& difference, std::string text) {
    for (auto at = text.find(difference.from); at != std::string::npos; at = text.find(difference.from, at + 1)) {
        const auto end = text.find(difference.to, at);
        if (end != std::string::npos && text.substr(at, end - at).find(difference.unless) == std::string::npos) {
            text.erase(at, end - at);
        }
    }
    return text;
}

}  // namespace

Json withoutParsersOwn(Json reply) {
    if (!reply.contains("events")) {
        return reply;
    }
    for (auto& event : reply["events"]) {
        event.erase(lineNumber);
        for (const auto* const key : {"text", "strError"}) {
            for (const auto& difference : differences) {
                if (event.contains(key)) {
                    event[key] = without(difference, event[key]);
                }
            }
        }
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
