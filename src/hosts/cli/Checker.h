// A method held against the document set, on one thread.
#pragma once

#include "hosts/cli/Files.h"
#include "hosts/cli/Findings.h"

namespace vrn::cli {

class Checker {
  public:
    /// Throws `Fault` for a set that cannot be used.
    explicit Checker(const SetTexts& set) : engine_(set), inspector_(engine_.state()), macrosFile_(set.files[0]) {}

    struct Result {
        method::Inspection inspection;
        std::vector<Finding> findings;
    };
    [[nodiscard]] Result check(const xml::Document& method);
    /// The same with the findings' positions in the file.
    [[nodiscard]] Result check(const XmlFile& method);
    [[nodiscard]] Engine& engine() noexcept { return engine_; }
    [[nodiscard]] method::Inspector& inspector() noexcept { return inspector_; }

  private:
    // The catalogue's own faults are reported where they are.
    void locateInCatalogue(std::vector<Finding>& findings);

    Engine engine_;
    method::Inspector inspector_;
    std::string macrosFile_;
};

}  // namespace vrn::cli
