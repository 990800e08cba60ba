// Holds methods against a document set, on one thread, and finds what is wrong with them.
#pragma once

#include <string>
#include <vector>

#include "hosts/cli/Engine.h"
#include "hosts/cli/Files.h"
#include "hosts/cli/Finding.h"
#include "method/Inspection.h"

namespace vrn::cli {

class Checker {
  public:
    /// Throws `Fault` for a set that cannot be used.
    explicit Checker(const SetTexts& set) : engine_(set), inspector_(engine_.state()), macrosFile_(set.files[0]) {}

    struct Result {
        method::Inspection inspection;
        std::vector<Finding> findings;  ///< in the order of the document
    };
    /// The findings of a method that is in no file yet: only those of the catalogue have a position.
    [[nodiscard]] Result check(const xml::Document& method);
    /// The same with the positions of findings in the file.
    [[nodiscard]] Result check(const XmlFile& method);

    [[nodiscard]] Engine& engine() noexcept { return engine_; }
    [[nodiscard]] method::Inspector& inspector() noexcept { return inspector_; }

  private:
    void locateInCatalogue(std::vector<Finding>& findings);

    Engine engine_;
    method::Inspector inspector_;
    std::string macrosFile_;
};

/// What is wrong with a cycle of the catalogue.
[[nodiscard]] std::string faultText(const method::CatalogueFault& fault);

}  // namespace vrn::cli
