// Where the control's file is, and a thread that has COM.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <objbase.h>

#include <string>

namespace vrn::test {

/// The folder of the running program, which is also the control's.
inline std::wstring binaryFolder() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path.substr(0, path.find_last_of(L'\\'));
}

inline std::wstring controlFile() { return binaryFolder() + L"\\vrnMthdA.ocx"; }

/// COM for a thread, as a single-threaded apartment.
class Apartment {
  public:
    Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~Apartment() { CoUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

}  // namespace vrn::test
