#include "hosts/activex/server/Registration.h"

#include <olectl.h>

#include <array>
#include <string>
#include <vector>

#include "com/Com.h"
#include "hosts/activex/server/Module.h"
#include "hosts/activex/server/RegistrySnapshot.h"
#include "vrnMethodEditor.h"

namespace vrn::activex {

namespace {

constexpr const wchar_t* progId = L"vrnMethodEditor.VRN_MethodEditor";
constexpr const wchar_t* versionedProgId = L"vrnMethodEditor.VRN_MethodEditor.1";
constexpr const wchar_t* className = L"Method editor control";
constexpr const wchar_t* categoryOfControls = L"{40FC6ED4-2438-11CF-A3DB-080036F12502}";
constexpr WORD majorVersion = 1;  // of the type library
constexpr WORD minorVersion = 0;

struct Entry {
    std::wstring key;
    const wchar_t* name;  // null for the key's own value
    std::wstring value;
};

std::wstring textOf(const GUID& id) {
    std::array<wchar_t, 40> text{};
    const int length = StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    return {text.data(), static_cast<std::size_t>(length - 1)};
}

std::wstring classKey() { return L"CLSID\\" + textOf(CLSID_VRN_MethodEditor); }

std::vector<Entry> entries() {
    const auto id = textOf(CLSID_VRN_MethodEditor);
    const auto key = classKey();
    const auto file = module::path();
    return {
        {key, nullptr, className},
        {key + L"\\InprocServer32", nullptr, file},
        {key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
        {key + L"\\Control", nullptr, L""},
        {key + L"\\MiscStatus", nullptr, L"0"},
        {key + L"\\MiscStatus\\1", nullptr, std::to_wstring(miscStatus)},
        {key + L"\\ToolboxBitmap32", nullptr, file + L", 1"},
        {key + L"\\TypeLib", nullptr, textOf(LIBID_vrnMethodEditor)},
        {key + L"\\Version", nullptr, std::to_wstring(majorVersion) + L"." + std::to_wstring(minorVersion)},
        {key + L"\\ProgID", nullptr, versionedProgId},
        {key + L"\\VersionIndependentProgID", nullptr, progId},
        {key + L"\\Implemented Categories\\" + categoryOfControls, nullptr, L""},
        {progId, nullptr, className},
        {std::wstring(progId) + L"\\CLSID", nullptr, id},
        {std::wstring(progId) + L"\\CurVer", nullptr, versionedProgId},
        {versionedProgId, nullptr, className},
        {std::wstring(versionedProgId) + L"\\CLSID", nullptr, id},
    };
}

LSTATUS write(const Entry& entry) {
    HKEY key = nullptr;
    LSTATUS status =
        RegCreateKeyExW(HKEY_CLASSES_ROOT, entry.key.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr);
    if (status == ERROR_SUCCESS) {
        status = RegSetValueExW(key, entry.name, 0, REG_SZ, reinterpret_cast<const BYTE*>(entry.value.c_str()),
                                static_cast<DWORD>((entry.value.size() + 1) * sizeof(wchar_t)));
        RegCloseKey(key);
    }
    return status;
}

LSTATUS removeTree(const std::wstring& key) {
    const LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
    return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
}

// Class entries exist once per bitness, the ProgIDs that lead to them once for both.
bool otherBitnessIsRegistered() {
    constexpr REGSAM otherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    constexpr REGSAM ownView = sizeof(void*) == 8 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY;
    std::array<std::wstring, 2> files;
    for (const REGSAM view : {otherView, ownView}) {
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_CLASSES_ROOT, (classKey() + L"\\InprocServer32").c_str(), 0, KEY_READ | view, &key) !=
            ERROR_SUCCESS) {
            continue;
        }
        std::array<wchar_t, 1024> file{};
        DWORD size = sizeof(file) - sizeof(wchar_t);
        if (RegQueryValueExW(key, nullptr, nullptr, nullptr, reinterpret_cast<BYTE*>(file.data()), &size) ==
            ERROR_SUCCESS) {
            files.at(view == otherView ? 0 : 1) = file.data();
        }
        RegCloseKey(key);
    }
    // On a system of one bitness both views are the same entries.
    return !files[0].empty() && files[0] != files[1];
}

HRESULT removeEntries() {
    LSTATUS failed = ERROR_SUCCESS;
    const auto remove = [&failed](const std::wstring& key) {
        if (const LSTATUS status = removeTree(key); status != ERROR_SUCCESS) {
            failed = status;
        }
    };
    const bool progIdsAreShared = otherBitnessIsRegistered();
    remove(classKey());
    if (!progIdsAreShared) {
        remove(progId);
        remove(versionedProgId);
    }
    return failed == ERROR_SUCCESS ? S_OK : SELFREG_E_CLASS;
}

HRESULT removeTypeLibrary() {
    constexpr SYSKIND system = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;
    BSTR registered = nullptr;
    if (FAILED(QueryPathOfRegTypeLib(LIBID_vrnMethodEditor, majorVersion, minorVersion, LOCALE_NEUTRAL, &registered))) {
        return S_OK;
    }
    SysFreeString(registered);
    return SUCCEEDED(UnRegisterTypeLib(LIBID_vrnMethodEditor, majorVersion, minorVersion, LOCALE_NEUTRAL, system))
               ? S_OK
               : SELFREG_E_TYPELIB;
}

HRESULT addTypeLibrary() {
    const auto file = module::path();
    const auto folder = file.substr(0, file.find_last_of(L"\\/"));
    // The system's call takes the texts without promising not to write to them.
    std::wstring fileText = file;
    std::wstring folderText = folder;
    return SUCCEEDED(RegisterTypeLib(module::typeLibrary().Get(), fileText.data(), folderText.data()))
               ? S_OK
               : SELFREG_E_TYPELIB;
}

// Every key that a registration writes to or below, the system's own call for the type library included.
std::vector<RegistrySnapshot::Root> everything() {
    constexpr std::array<REGSAM, 2> views{KEY_WOW64_64KEY, KEY_WOW64_32KEY};
    std::vector<RegistrySnapshot::Root> roots{
        {classKey()}, {progId}, {versionedProgId}, {L"TypeLib\\" + textOf(LIBID_vrnMethodEditor)}};
    for (const auto& id : {IID_IVRN_MethodEditor, DIID_DVRN_MethodEditorEvents, IID_IMethodEditorServices,
                           IID_IInstrumentService, IID_ISignatureV4, IID_ISignatureV23}) {
        for (const auto view : views) {
            roots.push_back({L"Interface\\" + textOf(id), view});
        }
    }
    return roots;
}

HRESULT addEntries() {
    for (const auto& entry : entries()) {
        if (write(entry) != ERROR_SUCCESS) {
            return SELFREG_E_CLASS;
        }
    }
    return S_OK;
}

}  // namespace

HRESULT registerServer() noexcept {
    try {
        const RegistrySnapshot before(everything());
        HRESULT result = E_UNEXPECTED;
        try {
            result = addEntries();
            if (SUCCEEDED(result)) {
                result = addTypeLibrary();
            }
        } catch (...) {
            result = SELFREG_E_CLASS;
        }
        if (FAILED(result)) {
            // Half a registration would be found and then fail. That of another copy of the file may have been there before.
            before.restore();
        }
        return result;
    } catch (...) {
        return SELFREG_E_CLASS;
    }
}

HRESULT unregisterServer() noexcept {
    try {
        const HRESULT typeLibrary = removeTypeLibrary();
        const HRESULT classes = removeEntries();
        return FAILED(classes) ? classes : typeLibrary;
    } catch (...) {
        return SELFREG_E_CLASS;
    }
}

}  // namespace vrn::activex
