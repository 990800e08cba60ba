// The enumerators of COM, over a list that was taken when the first one was made.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <ocidl.h>

#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "hosts/activex/server/Module.h"

namespace vrn::activex {

/// `Interface` is IEnumX, `Item` what one `Next` gives out. `Source` owns the items: `size()` and
/// `HRESULT copy(std::size_t, Item&) const noexcept`, which gives a copy that the caller owns, and
/// `static void discard(Item&) noexcept`, which takes such a copy back.
template <typename Interface, typename Item, typename Source>
class Enumerator final : public Interface {
  public:
    Enumerator(std::shared_ptr<const Source> source, std::size_t next) : source_(std::move(source)), next_(next) {}
    virtual ~Enumerator() = default;
    Enumerator(const Enumerator&) = delete;
    Enumerator& operator=(const Enumerator&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        *object = iid == IID_IUnknown || iid == __uuidof(Interface) ? static_cast<Interface*>(this) : nullptr;
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&count_)); }
    ULONG STDMETHODCALLTYPE Release() override {
        const auto left = static_cast<ULONG>(InterlockedDecrement(&count_));
        if (left == 0) {
            delete this;
        }
        return left;
    }

    HRESULT STDMETHODCALLTYPE Next(ULONG wanted, Item* items, ULONG* fetched) override {
        if (items == nullptr || (fetched == nullptr && wanted != 1)) {
            return E_POINTER;
        }
        ULONG given = 0;
        HRESULT result = S_OK;
        while (given < wanted && next_ < source_->size() && SUCCEEDED(result)) {
            result = source_->copy(next_, items[given]);
            if (SUCCEEDED(result)) {
                ++given;
                ++next_;
            }
        }
        if (FAILED(result)) {
            // All or nothing: a caller that sees a failure frees nothing.
            next_ -= given;
            while (given > 0) {
                Source::discard(items[--given]);
            }
        }
        if (fetched != nullptr) {
            *fetched = given;
        }
        if (FAILED(result)) {
            return result;
        }
        return given == wanted ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const auto left = source_->size() - next_;
        next_ += count < left ? count : left;
        return count <= left ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        next_ = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(Interface** clone) override {
        if (clone == nullptr) {
            return E_POINTER;
        }
        *clone = new (std::nothrow) Enumerator(source_, next_);
        return *clone == nullptr ? E_OUTOFMEMORY : S_OK;
    }

  private:
    module::Reference module_;
    LONG count_ = 1;
    std::shared_ptr<const Source> source_;
    std::size_t next_;
};

/// A source of interface pointers.
template <typename Interface>
struct PointerSource {
    std::vector<com::ComPtr<Interface>> pointers;

    [[nodiscard]] std::size_t size() const noexcept { return pointers.size(); }
    HRESULT copy(std::size_t index, Interface*& item) const noexcept { return pointers[index].CopyTo(&item); }
    static void discard(Interface*& item) noexcept { std::exchange(item, nullptr)->Release(); }
};

}  // namespace vrn::activex
