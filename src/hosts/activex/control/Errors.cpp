#include "hosts/activex/control/Errors.h"

#include <utility>

#include "com/Com.h"

namespace vrn::activex {

namespace {

constexpr HRESULT runTimeErrors = static_cast<HRESULT>(0x800A0000);
constexpr std::int32_t largestRunTimeError = 0xFFFF;

void publish(const errors::Error& error, REFIID iid) {
    com::ComPtr<ICreateErrorInfo> record;
    com::ComPtr<IErrorInfo> info;
    com::require(CreateErrorInfo(&record));
    const com::Bstr description(error.description());
    const com::Bstr source(error.source());
    const com::Bstr helpFile(error.helpFile());
    record->SetGUID(iid);
    record->SetDescription(description.get());
    record->SetSource(source.get());
    record->SetHelpFile(helpFile.get());
    record->SetHelpContext(static_cast<DWORD>(error.helpContext()));
    com::require(record.As(&info));
    SetErrorInfo(0, info.Get());
}

}  // namespace

HRESULT resultOf(std::int32_t number) noexcept {
    if (number == errors::number::outOfMemory) {
        return E_OUTOFMEMORY;
    }
    if (number < 0) {
        return number;
    }
    return number > 0 && number <= largestRunTimeError ? runTimeErrors | number : E_FAIL;
}

HRESULT publishCurrentError(REFIID iid) noexcept {
    HRESULT result = E_OUTOFMEMORY;
    try {
        const auto error = errors::currentError();
        result = resultOf(error.number());
        publish(error, iid);
    } catch (...) {
        // No memory for the description: the number alone must do.
        SetErrorInfo(0, nullptr);
    }
    return result;
}

void fail(HRESULT result, std::string description) { throw errors::Error(result, std::move(description)); }

}  // namespace vrn::activex
