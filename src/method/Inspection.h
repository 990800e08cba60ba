// A method held against the document set: what each step's values are worth today, which cycles have changed since.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/ValueStatus.h"
#include "method/MethodContent.h"
#include "method/Verification.h"

namespace vrn::method {

struct InspectedValue {
    const catalogue::Parameter* parameter = nullptr;  ///< lives as long as the inspector
    std::string value;
    catalogue::ValueStatus status = catalogue::ValueStatus::Valid;
};

struct InspectedStep {
    std::string text;
    std::string macro;                                 ///< empty when the text is no step
    bool readable = true;                              ///< whether the text is a step at all
    bool known = true;                                 ///< whether the catalogue has its cycle
    std::vector<InspectedValue> values;                ///< those that the cycle has a parameter for
    std::vector<std::string> surplus;                  ///< values behind the last parameter
    std::vector<const catalogue::Parameter*> missing;  ///< parameters behind the last value
};

/// An embedded cycle beside the catalogue's of the same name.
struct CycleComparison {
    std::string name;
    bool inCatalogue = true;
    bool dateDiffers = false;  ///< only the first cycle's date is recorded
    bool definitionsDiffer = false;
    [[nodiscard]] bool isOutdated() const noexcept { return dateDiffers || definitionsDiffer; }
};

struct Inspection {
    VerificationResult verification;
    MethodContent content;
    bool syringeKnown = false;
    std::vector<InspectedStep> steps;
    std::vector<CycleComparison> cycles;
};

/// Inspects any number of methods against one document set, which `state` has loaded and keeps for the inspector's life.
class Inspector {
  public:
    explicit Inspector(EditorState& state) : state_(&state) {}

    /// Nothing of the method is shown, but `domMethod` and the chosen syringe become this method's.
    [[nodiscard]] Inspection inspect(const xml::Document& method);
    /// The parameters of a cycle with the syringe now chosen; null when the catalogue does not have it, none
    /// after a failure, which is reported as the window would.
    [[nodiscard]] const std::vector<catalogue::Parameter>* parameters(const std::string& macro);

  private:
    [[nodiscard]] InspectedStep inspectStep(const std::string& text);
    [[nodiscard]] std::vector<CycleComparison> compareCycles(const xml::Document& method, const MethodContent& content);
    /// The parameter definitions of the catalogue's cycle; null when it does not have it.
    [[nodiscard]] const std::vector<std::string>* definitions(const std::string& macro);

    EditorState* state_;
    /// Resolving a cycle's parameters costs more than all else: done once for each syringe.
    std::map<std::pair<int, std::string>, std::vector<catalogue::Parameter>> parameters_;
    std::vector<catalogue::Parameter> none_;
    std::map<std::string, std::vector<std::string>> definitions_;
};

}  // namespace vrn::method
