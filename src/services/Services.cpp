#include "services/Services.h"

#include "services/EmbeddedSignatures.h"

namespace vrn::services {

namespace {

class SilentMessageBox final : public errors::MessageBoxService {
  public:
    std::int32_t MessageBoxExA(std::intptr_t /*hWnd*/, const std::string& /*text*/, const std::string& /*caption*/,
                               std::int32_t /*flags*/) override {
        return errors::buttonOk;
    }
    errors::ErrorState lastError() override { return {}; }
    void fallback(const std::string& /*text*/, const std::string& /*caption*/, std::int32_t /*style*/) override {}
};

}  // namespace

Services embeddedServices() {
    Services services;
    services.instrument = std::make_shared<EmbeddedInstrumentService>();
    services.messageBox = std::make_shared<SilentMessageBox>();
    services.locale = std::make_shared<FixedLocaleService>();
    services.createSignatureV4 = [] { return std::make_unique<EmbeddedSignatureV4>(); };
    services.createSignatureV23 = [] { return std::make_unique<EmbeddedSignatureV23>(); };
    return services;
}

Services withEmbeddedDefaults(Services services) {
    const auto fill = [](auto& place, auto& standard) {
        if (!place) {
            place = std::move(standard);
        }
    };
    auto embedded = embeddedServices();
    fill(services.instrument, embedded.instrument);
    fill(services.messageBox, embedded.messageBox);
    fill(services.locale, embedded.locale);
    fill(services.createSignatureV4, embedded.createSignatureV4);
    fill(services.createSignatureV23, embedded.createSignatureV23);
    return services;
}

}  // namespace vrn::services
