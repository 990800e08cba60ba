// The scripted host: one editor driven by JSON lines. See docs/scripted-host.md.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include "services/Services.h"

namespace vrn::script {

class ScriptHost {
  public:
    /// The message box of `services` is replaced: boxes become events of the reply.
    explicit ScriptHost(services::Services services = services::embeddedServices());
    ~ScriptHost();

    /// Carries out one request and gives its reply, without line end. Never fails.
    [[nodiscard]] std::string handle(std::string_view line) noexcept;

    /// Answers every line of `in` with a line of `out`, until the end of input.
    void run(std::istream& in, std::ostream& out);

  private:
    class Session;
    std::unique_ptr<Session> session_;
};

}  // namespace vrn::script
