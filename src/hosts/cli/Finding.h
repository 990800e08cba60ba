// A finding: something that is wrong with a method, and how it reads as text, as JSON and in SARIF.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/cli/Output.h"
#include "xml/Dom.h"

namespace vrn::cli {

enum class Severity { Note, Warning, Error };
[[nodiscard]] std::string_view severityName(Severity severity) noexcept;
[[nodiscard]] std::optional<Severity> severityOf(std::string_view name) noexcept;

/// What can be wrong, in the order of the documentation.
enum class FindingCode {
    SignatureMissing,
    SignatureInvalid,
    VersionOld,
    VersionUnsupported,
    SyringeUnknown,
    SequenceEmpty,
    StepMalformed,
    CycleUnknown,
    ValueNotANumber,
    ValueOutOfRange,
    ValueNotInList,
    NameUnknown,
    ValueMissing,
    ValueSurplus,
    CycleOutdated,
    CyclesDiffer,
    AtomsDiffer,
    NamesDiffer,
    CatalogueFault,
    EditorReport,
    Count,  ///< no code, but how many there are
};

/// What a finding is about: a part of the method, or what it is held against.
enum class Subject { Signature, Version, Syringe, Sequence, Step, Cycles, Atoms, Names, Catalogue, Editor };

/// How much of a method the editor leaves out of what it writes, or writes in another way than it read it.
enum class Loss { Nothing, Part, Everything };

/// All that the tool knows of a code. The name is public: it stays the same from version to version.
struct FindingKind {
    FindingCode code;
    std::string_view name;
    Severity severity;
    Subject subject;
    Loss loss;
    std::string_view meaning;  ///< a sentence
};

/// All kinds, in the order of their codes.
[[nodiscard]] std::span<const FindingKind> findingKinds() noexcept;

struct Finding {
    FindingCode code = FindingCode::EditorReport;
    xml::Position position;  ///< in the file; zeros for no place in particular
    std::size_t step = 0;    ///< from 1; 0 for the method as a whole
    std::string cycle;
    std::string parameter;
    std::string value;
    std::string message;
    std::string fix;
    std::string file;            ///< that the position is in; empty for the method itself
    std::size_t definition = 0;  ///< of the cycle's parameter in the catalogue, from 0, when that is at fault

    [[nodiscard]] const FindingKind& kind() const noexcept;
    [[nodiscard]] bool isError() const noexcept { return kind().severity == Severity::Error; }
    /// Whether signing mends it.
    [[nodiscard]] bool concernsSignature() const noexcept { return kind().subject == Subject::Signature; }
    /// Whether the catalogue is at fault, so that every method with the cycle has the same finding.
    [[nodiscard]] bool concernsCatalogue() const noexcept { return kind().subject == Subject::Catalogue; }
};

[[nodiscard]] bool hasErrors(const std::vector<Finding>& findings) noexcept;

/// "step 2 WASH, Volume"; empty for the method as a whole.
[[nodiscard]] std::string placeOf(const Finding& finding);

/// The findings of a file with its name and their positions in it, as compilers write them: editors open the file there.
[[nodiscard]] std::string findingText(const std::string& file, const std::vector<Finding>& findings,
                                      const Style& style);
/// Findings of what is in no file yet, aligned, for the lines below one about it.
[[nodiscard]] std::string findingList(const std::vector<Finding>& findings, const Style& style);

/// An array with an object for each: code, severity and message always, the rest where there is any.
[[nodiscard]] Json findingsJson(const std::vector<Finding>& findings);

/// One result of a SARIF run, as JSON text.
[[nodiscard]] std::string sarifResult(const std::string& path, const Finding& finding);
/// The result of a file that could not be read.
[[nodiscard]] std::string sarifFault(const std::string& path, const std::string& what);
/// A whole SARIF 2.1.0 document around results that are separated by ",".
[[nodiscard]] std::string sarifDocument(const std::string& results);

}  // namespace vrn::cli
