#include "hosts/activex/server/Module.h"

#include <atomic>

#include "vrnMethodEditor.h"

// The linker's name for where the module begins, which is what the system calls its handle.
extern "C" IMAGE_DOS_HEADER __ImageBase;  // NOLINT(bugprone-reserved-identifier)

namespace vrn::activex::module {

namespace {

std::atomic<long> references{0};

}  // namespace

HINSTANCE instance() noexcept { return reinterpret_cast<HINSTANCE>(&__ImageBase); }

Reference::Reference() noexcept { ++references; }

Reference::~Reference() { --references; }

void lock(bool keep) noexcept { references += keep ? 1 : -1; }

bool isIdle() noexcept { return references == 0; }

std::wstring path() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(instance(), path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) {
            com::require(HRESULT_FROM_WIN32(GetLastError()));
        }
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

com::ComPtr<ITypeLib> typeLibrary() {
    com::ComPtr<ITypeLib> library;
    com::require(LoadTypeLibEx(path().c_str(), REGKIND_NONE, &library));
    return library;
}

com::ComPtr<ITypeInfo> typeInfo(const GUID& id) {
    com::ComPtr<ITypeInfo> info;
    com::require(typeLibrary()->GetTypeInfoOfGuid(id, &info));
    return info;
}

}  // namespace vrn::activex::module
