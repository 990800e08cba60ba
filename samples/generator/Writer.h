// Has the editor write methods, as a host would.
#pragma once

#include <string>

#include "Installation.h"

namespace vrn::samples {

class Writer {
  public:
    explicit Writer(const Installation& installation);

    /// How much of a written method is looked at once more before it counts as good.
    enum class LookAt {
        FirstStep,  ///< it loads without a complaint and is written again as it was
        EveryStep,  ///< so does the selection of each step, which checks its values
    };

    /// The signed document that the editor writes for the draft, as XML text. Throws when the editor complains about
    /// anything.
    [[nodiscard]] std::string method(const MethodDraft& draft, LookAt lookAt) const;

  private:
    std::string macros_;
    std::string objects_;
    std::string configuration_;
};

}  // namespace vrn::samples
