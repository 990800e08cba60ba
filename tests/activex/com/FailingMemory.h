// Memory of one module that runs out when a test says so.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>

namespace vrn::test {

/// While it lives, it stands between a loaded module and the function that all its allocations come from. One at a time.
class FailingMemory {
  public:
    explicit FailingMemory(HMODULE module) : slot_(importOf(module, "malloc")) {
        EXPECT_NE(slot_, nullptr);
        real_ = reinterpret_cast<Allocate>(*slot_);
        thread_ = GetCurrentThreadId();
        put(reinterpret_cast<ULONG_PTR>(&FailingMemory::allocate));
    }
    ~FailingMemory() { put(reinterpret_cast<ULONG_PTR>(real_)); }
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    /// From now on, of this thread's allocations the nth fails and no other.
    void failOnce(unsigned long nth) { left_ = nth; }
    void failNever() { left_ = 0; }
    [[nodiscard]] bool hasFailed() const { return left_ == 0; }

  private:
    using Allocate = void*(__cdecl*)(std::size_t);

    static void* __cdecl allocate(std::size_t size) {
        if (left_ > 0 && GetCurrentThreadId() == thread_ && --left_ == 0) {
            return nullptr;
        }
        return real_(size);
    }
    static ULONG_PTR* importOf(HMODULE module, const char* function) {
        auto* const base = reinterpret_cast<BYTE*>(module);
        const auto& dos = *reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
        const auto& headers = *reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos.e_lfanew);
        const auto& directory = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        const auto* from = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
        for (; from->Name != 0; ++from) {
            const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + from->OriginalFirstThunk);
            auto* slots = reinterpret_cast<IMAGE_THUNK_DATA*>(base + from->FirstThunk);
            for (; names->u1.AddressOfData != 0; ++names, ++slots) {
                if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) {
                    continue;
                }
                const auto& name = *reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
                if (std::strcmp(reinterpret_cast<const char*>(name.Name), function) == 0) {
                    return reinterpret_cast<ULONG_PTR*>(&slots->u1.Function);
                }
            }
        }
        return nullptr;
    }
    void put(ULONG_PTR function) {
        DWORD before = 0;
        VirtualProtect(slot_, sizeof *slot_, PAGE_READWRITE, &before);
        *slot_ = function;
        VirtualProtect(slot_, sizeof *slot_, before, &before);
    }

    static inline Allocate real_ = nullptr;
    static inline unsigned long left_ = 0;
    static inline DWORD thread_ = 0;
    ULONG_PTR* slot_;
};

}  // namespace vrn::test
