#include "hosts/activex/services/HostServices.h"

#include "hosts/activex/services/InstrumentObject.h"
#include "hosts/activex/services/SignatureObjects.h"
#include "services/EmbeddedSignatures.h"

namespace vrn::activex {

namespace {

constexpr const wchar_t* instrumentProgId = L"vrnMethodEditor.InstrumentService";
constexpr const wchar_t* signatureV4ProgId = L"vrnMethodEditor.SignatureV4";
constexpr const wchar_t* signatureV23ProgId = L"vrnMethodEditor.SignatureV23";

// None when no such class is registered, or when it makes no object that answers by names.
com::Object createByProgId(const wchar_t* progId) {
    CLSID clsid{};
    com::ComPtr<IDispatch> object;
    if (FAILED(CLSIDFromProgID(progId, &clsid)) ||
        FAILED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)))) {
        return {};
    }
    return com::Object(std::move(object));
}

com::Object ownOr(const com::Object& own, const wchar_t* progId) { return own ? own : createByProgId(progId); }

}  // namespace

struct HostServices::Objects {
    com::Object instrument;
    com::Object signatureV4;
    com::Object signatureV23;
    // Asked once for every row of a grid, so it is looked for only once.
    std::shared_ptr<services::InstrumentService> instrumentInUse;

    services::InstrumentService& currentInstrument() {
        if (instrumentInUse == nullptr) {
            if (auto object = ownOr(instrument, instrumentProgId)) {
                instrumentInUse = std::make_shared<InstrumentObject>(std::move(object));
            } else {
                instrumentInUse = std::make_shared<services::EmbeddedInstrumentService>();
            }
        }
        return *instrumentInUse;
    }
};

// Stands for whichever service is in force at the time of a call.
class HostServices::Instrument final : public services::InstrumentService {
  public:
    explicit Instrument(std::shared_ptr<Objects> objects) : objects_(std::move(objects)) {}
    void UnitInfo(const std::string& unitCode, std::string& unitText, std::int32_t& unitFactor) override {
        inUse()->UnitInfo(unitCode, unitText, unitFactor);
    }
    void UnitPair(const std::string& code, std::string& first, std::string& second) override {
        inUse()->UnitPair(code, first, second);
    }
    std::optional<std::vector<std::string>> ObjectNames(const std::string& key) override {
        return inUse()->ObjectNames(key);
    }

  private:
    // A copy: the service may set another one from within a call.
    [[nodiscard]] std::shared_ptr<services::InstrumentService> inUse() const {
        (void)objects_->currentInstrument();
        return objects_->instrumentInUse;
    }
    std::shared_ptr<Objects> objects_;
};

HostServices::HostServices() : objects_(std::make_shared<Objects>()) {}

void HostServices::setInstrumentService(IDispatch* service) {
    // The old ones go last: their release may call back.
    const auto oldInUse = std::exchange(objects_->instrumentInUse, nullptr);
    const auto old = std::exchange(objects_->instrument, com::Object(com::ComPtr<IDispatch>(service)));
}

void HostServices::setSignatureV4(IDispatch* component) {
    const auto old = std::exchange(objects_->signatureV4, com::Object(com::ComPtr<IDispatch>(component)));
}

void HostServices::setSignatureV23(IDispatch* component) {
    const auto old = std::exchange(objects_->signatureV23, com::Object(com::ComPtr<IDispatch>(component)));
}

services::Services HostServices::forEngine() const {
    services::Services services;
    services.instrument = std::make_shared<Instrument>(objects_);
    services.createSignatureV4 = [objects = objects_]() -> std::unique_ptr<services::SignatureV4> {
        if (auto object = ownOr(objects->signatureV4, signatureV4ProgId)) {
            return std::make_unique<SignatureObjectV4>(std::move(object));
        }
        return std::make_unique<services::EmbeddedSignatureV4>();
    };
    services.createSignatureV23 = [objects = objects_]() -> std::unique_ptr<services::SignatureV23> {
        if (auto object = ownOr(objects->signatureV23, signatureV23ProgId)) {
            return std::make_unique<SignatureObjectV23>(std::move(object));
        }
        return std::make_unique<services::EmbeddedSignatureV23>();
    };
    return services;
}

}  // namespace vrn::activex
