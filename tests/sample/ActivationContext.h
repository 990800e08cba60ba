// The control without registration, for programs whose own manifest does not name it.
#pragma once

#include "activex/support/ControlFile.h"

namespace vrn::test {

/// While this lives, the thread finds the control in the file beside the program.
class ActivationContext {
  public:
    ActivationContext() {
        const auto manifest = binaryFolder() + L"\\vrnMethodEditor.manifest";
        ACTCTXW description{};
        description.cbSize = sizeof description;
        description.lpSource = manifest.c_str();
        context_ = CreateActCtxW(&description);
        ActivateActCtx(context_, &cookie_);
    }
    ~ActivationContext() {
        DeactivateActCtx(0, cookie_);
        ReleaseActCtx(context_);
    }
    ActivationContext(const ActivationContext&) = delete;
    ActivationContext& operator=(const ActivationContext&) = delete;

  private:
    HANDLE context_ = nullptr;
    ULONG_PTR cookie_ = 0;
};

}  // namespace vrn::test
