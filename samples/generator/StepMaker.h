// Steps with values that the editor accepts.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "Definition.h"
#include "Installation.h"
#include "Random.h"

namespace vrn::samples {

class StepMaker {
  public:
    /// For methods with this syringe: ranges bound to the syringe take its properties.
    StepMaker(const Installation& installation, std::string_view syringe, Random& random);

    /// A step of a random cycle: defaults, bounds, values between them, objects and now and then a user-defined name.
    [[nodiscard]] Step step();

  private:
    [[nodiscard]] std::string value(const Definition& definition);
    [[nodiscard]] std::string objectName(const Definition& definition);
    [[nodiscard]] std::string number(const Definition& definition);
    /// A limit in tenths. A reference that names no number of the syringe is 0, as for the editor.
    [[nodiscard]] std::int64_t limit(const std::string& field) const;

    using Names = std::vector<std::string_view>;

    const Installation& installation_;
    Random& random_;
    std::map<std::string, Names, std::less<>> objects_;  ///< by type
    std::map<std::string, Names, std::less<>> names_;    ///< by category
    std::map<std::string, std::string, std::less<>> syringe_;
};

}  // namespace vrn::samples
