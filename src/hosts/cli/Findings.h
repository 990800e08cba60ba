// What can be wrong with a method, each kind under a code that stays the same from version to version.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/cli/Engine.h"
#include "method/Inspection.h"

namespace vrn::cli {

enum class Severity { Note, Warning, Error };
[[nodiscard]] std::string_view severityName(Severity severity) noexcept;
[[nodiscard]] std::optional<Severity> severityOf(std::string_view name) noexcept;

struct FindingKind {
    std::string_view code;
    Severity severity;
    std::string_view meaning;  ///< a sentence
};

/// All kinds, in the order in which they are documented.
[[nodiscard]] std::span<const FindingKind> findingKinds() noexcept;

struct Finding {
    const FindingKind* kind = nullptr;
    xml::Position position;  ///< in the file; zeros for no place in particular
    std::size_t step = 0;    ///< from 1; 0 for the method as a whole
    std::string cycle;
    std::string parameter;
    std::string value;
    std::string message;
    std::string fix;
    std::string file;            ///< that the position is in; empty for the method itself
    std::size_t definition = 0;  ///< of the cycle's parameter in the catalogue, from 0, when that is at fault
};

/// Everything that is wrong with a method, in the order of the document. `reports` are what the engine said meanwhile.
[[nodiscard]] std::vector<Finding> findingsOf(const method::EditorState& state, const method::Inspection& inspection,
                                              const std::vector<Report>& reports);

/// Whether the finding is about the signature: signing mends it.
[[nodiscard]] bool concernsSignature(const Finding& finding) noexcept;

/// What is wrong with a cycle of the catalogue.
[[nodiscard]] std::string faultText(const method::CatalogueFault& fault);

/// Whether the catalogue is at fault, and every method with the cycle would have the same finding.
[[nodiscard]] bool concernsCatalogue(const Finding& finding) noexcept;

/// "step 2 WASH, Volume"; empty for the method as a whole.
[[nodiscard]] std::string placeOf(const Finding& finding);

}  // namespace vrn::cli
