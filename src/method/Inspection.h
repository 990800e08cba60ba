// A method held against the document set: what each step's values are worth today, which cycles have changed since, and whether what
// the method records beside its steps is what the editor would record.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/ValueStatus.h"
#include "method/MethodContent.h"
#include "method/Verification.h"

namespace vrn::method {

struct InspectedValue {
    const catalogue::Parameter* parameter = nullptr;  ///< lives as long as the inspector
    std::string_view value;
    catalogue::ValueStatus status = catalogue::ValueStatus::Valid;
};

/// All texts are pieces of the method's content in the same inspection.
struct InspectedStep {
    std::string_view text;
    std::string_view macro;                            ///< empty when the text is no step
    bool readable = true;                              ///< whether the text is a step at all
    bool known = true;                                 ///< whether the catalogue has its cycle
    std::vector<InspectedValue> values;                ///< those that the cycle has a parameter for
    std::vector<std::string_view> surplus;             ///< values after the last parameter
    std::vector<const catalogue::Parameter*> missing;  ///< parameters after the last value
    std::vector<std::string_view> unchecked;           ///< all values, when the catalogue's cycle is at fault
};

/// A cycle whose parameters the catalogue does not say in a form that can be used.
struct CatalogueFault {
    std::string cycle;
    std::size_t definition = 0;  ///< from 0
    std::string text;            ///< of the definition
    std::string reason;
};

/// An embedded cycle beside the catalogue's of the same name.
struct CycleComparison {
    std::string name;
    bool inCatalogue = true;
    bool isUsed = true;        ///< whether a step uses it
    bool isNamed = true;       ///< whether the name, which says whose date is recorded, can be read
    bool dateDiffers = false;  ///< only the first cycle's date is recorded
    bool definitionsDiffer = false;
    [[nodiscard]] bool isOutdated() const noexcept { return dateDiffers || definitionsDiffer || !isNamed; }
};

struct Inspection {
    Inspection() = default;
    Inspection(Inspection&&) = default;
    Inspection& operator=(Inspection&&) = default;
    Inspection(const Inspection&) = delete;  // the copy's steps would be pieces of the original
    Inspection& operator=(const Inspection&) = delete;
    ~Inspection() = default;

    VerificationResult verification;
    MethodContent content;
    bool syringeKnown = false;
    std::vector<InspectedStep> steps;
    std::vector<CycleComparison> cycles;
    std::vector<CatalogueFault> catalogueFaults;  ///< of the cycles that steps use, each once

    // What a save would write. Not compared for a method that the editor would not read to its end.
    std::vector<std::string> cyclesNotEmbedded;  ///< that steps use
    bool cyclesInOtherOrder = false;             ///< than that of their first use, or one of them twice
    bool atomsDiffer = false;                    ///< the atom line is that of none of the steps' cycles
    bool configurationDiffers = false;           ///< `SLCONFIG`
    bool argumentsDiffer = false;                ///< `Arguments`

    /// Whether writing the method anew changes what it records beside values: cycles, atoms, names, surplus values.
    [[nodiscard]] bool isOutdated() const noexcept;
};

/// Inspects any number of methods against one document set, which `state` has loaded and keeps for the inspector's life.
class Inspector {
  public:
    explicit Inspector(EditorState& state) : state_(&state) {}

    /// Nothing of the method is shown, but method, baseline and the chosen syringe become this method's.
    [[nodiscard]] Inspection inspect(const xml::Document& method);
    /// The parameters of a cycle with the syringe now chosen; null when the catalogue does not have it, none when its definitions
    /// are at fault.
    [[nodiscard]] const std::vector<catalogue::Parameter>* parameters(const std::string& macro);
    /// Why these are none; null when the cycle can be used.
    [[nodiscard]] const CatalogueFault* faultOf(const std::string& macro);

  private:
    struct Resolved {
        std::vector<catalogue::Parameter> parameters;
        std::optional<CatalogueFault> fault;
    };
    struct Cycle {
        std::vector<std::string> definitions;
        std::vector<std::string> atoms;
    };
    [[nodiscard]] const Resolved* resolved(std::string_view macro);
    [[nodiscard]] Resolved resolve(const std::string& macro, const xml::Node& node);
    [[nodiscard]] InspectedStep inspectStep(std::string_view text, Inspection& inspection);
    [[nodiscard]] CycleComparison compareCycle(const xml::Document& method, const EmbeddedCycle& cycle, bool isFirst);
    void compareRecorded(Inspection& inspection, const xml::Document& method);
    /// What the catalogue says of a cycle; null when it does not have it.
    [[nodiscard]] const Cycle* cycle(const std::string& macro);

    using ByCycle = std::map<std::string, Resolved, std::less<>>;

    EditorState* state_;
    /// Resolving a cycle's parameters costs more than all else: done once for each syringe.
    std::map<int, ByCycle> resolved_;
    bool usesNames_ = false;  ///< of the method at hand
    std::map<std::string, Cycle> cycles_;
};

}  // namespace vrn::method
