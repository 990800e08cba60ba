// regsvr32 registers the control completely and takes everything away again; without it, a manifest does.
#include <gtest/gtest.h>
#include <olectl.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <thread>
#include <vector>

#include "activex/support/ControlFile.h"
#include "com/Com.h"
#include "text/windows/Wide.h"
#include "vrnMethodEditor.h"

namespace vrn::test {
namespace {

using com::ComPtr;

// Every value below a key, by its path.
using Values = std::map<std::string, std::string>;

void collect(HKEY parent, const std::wstring& path, Values& values) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return;
    }
    values[text::fromWide(path)] = "";  // keys without a value count too
    std::vector<wchar_t> name(16384);
    std::vector<BYTE> data(65536);
    for (DWORD i = 0;; ++i) {
        auto nameLength = static_cast<DWORD>(name.size());
        auto size = static_cast<DWORD>(data.size());
        if (RegEnumValueW(key, i, name.data(), &nameLength, nullptr, nullptr, data.data(), &size) != ERROR_SUCCESS) {
            break;
        }
        // Only texts are written by the control; of anything else the bytes are compared.
        const std::wstring_view value(reinterpret_cast<const wchar_t*>(data.data()), size / sizeof(wchar_t));
        values[text::fromWide(path + L" @" + name.data())] = text::fromWide(value.substr(0, value.find(L'\0')));
    }
    for (DWORD i = 0;; ++i) {
        auto length = static_cast<DWORD>(name.size());
        if (RegEnumKeyExW(key, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
            break;
        }
        collect(parent, path + L"\\" + name.data(), values);
    }
    RegCloseKey(key);
}

Values classes() {
    Values values;
    collect(HKEY_LOCAL_MACHINE, L"Software\\Classes", values);
    collect(HKEY_CURRENT_USER, L"Software\\Classes", values);
    return values;
}

// What was added, with the prefix and the folder of the control left out.
std::string added(const Values& before, const Values& after) {
    std::string text;
    const std::string prefix = "Software\\Classes\\";
    const auto folder = text::fromWide(binaryFolder());
    for (const auto& [key, value] : after) {
        if (before.count(key) == 0 && key.starts_with(prefix) && !(value.empty() && after.count(key + " @") != 0)) {
            auto shown = value;
            if (const auto at = shown.find(folder); at != std::string::npos) {
                shown.replace(at, folder.size(), "FOLDER");
            }
            text += key.substr(prefix.size()) + " = " + shown + "\n";
        }
    }
    return text;
}

// Names in the registry are the same in either case, and not every system writes "TypeLib" with the same letters.
bool holds(const std::string& text, const std::string& part) {
    const auto same = [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); };
    return std::search(text.begin(), text.end(), part.begin(), part.end(), same) != text.end();
}

DWORD run(std::wstring command) {
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    PROCESS_INFORMATION process{};
    DWORD status = 1000;
    if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process)) {
        WaitForSingleObject(process.hProcess, INFINITE);
        GetExitCodeProcess(process.hProcess, &status);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    return status;
}

HRESULT create(const wchar_t* progId) {
    CLSID clsid{};
    ComPtr<IVRN_MethodEditor> control;
    const HRESULT found = CLSIDFromProgID(progId, &clsid);
    return FAILED(found) ? found
                         : CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IVRN_MethodEditor, &control);
}

TEST(Registration, IsCompleteAndUndoneWithoutATrace) {
    const Apartment apartment;
    const auto before = classes();
    ASSERT_EQ(run(L"regsvr32 /s \"" + controlFile() + L"\""), 0U);
    EXPECT_EQ(create(L"vrnMethodEditor.VRN_MethodEditor"), S_OK);
    EXPECT_EQ(create(L"vrnMethodEditor.VRN_MethodEditor.1"), S_OK);
    CoFreeUnusedLibrariesEx(0, 0);

    const auto shown = added(before, classes());
    const std::string bitness = sizeof(void*) == 8 ? "win64" : "win32";
    const std::string clsid = "CLSID\\{4611A8F1-26D4-4C96-A88E-60D9D78CC342}";
    for (const std::string& entry : std::vector<std::string>{
             clsid + " @ = Method editor control\n",
             clsid + "\\Control @ = \n",
             clsid + "\\Implemented Categories\\{40FC6ED4-2438-11CF-A3DB-080036F12502} @ = \n",
             clsid + "\\InprocServer32 @ = FOLDER\\vrnMthdA.ocx\n",
             clsid + "\\InprocServer32 @ThreadingModel = Apartment\n",
             clsid + "\\MiscStatus @ = 0\n",
             clsid + "\\MiscStatus\\1 @ = 131473\n",
             clsid + "\\ProgID @ = vrnMethodEditor.VRN_MethodEditor.1\n",
             clsid + "\\ToolboxBitmap32 @ = FOLDER\\vrnMthdA.ocx, 1\n",
             clsid + "\\TypeLib @ = {9E73B11D-C85D-45A6-BD47-E85F159819F2}\n",
             clsid + "\\Version @ = 1.0\n",
             clsid + "\\VersionIndependentProgID @ = vrnMethodEditor.VRN_MethodEditor\n",
             "vrnMethodEditor.VRN_MethodEditor\\CurVer @ = vrnMethodEditor.VRN_MethodEditor.1\n",
             "TypeLib\\{9E73B11D-C85D-45A6-BD47-E85F159819F2}\\1.0\\0\\" + bitness + " @ = FOLDER\\vrnMthdA.ocx\n",
             "Interface\\{888FC112-31D3-4894-B2A6-BA106120C91D}\\ProxyStubClsid32 @ = ",
         }) {
        EXPECT_TRUE(holds(shown, entry)) << entry << "is not in\n" << shown;
    }
    // It does not say that a web page may run it.
    EXPECT_EQ(shown.find("{7DD95801-9882-11CF-9FA9-00AA006C42C4}"), std::string::npos);
    EXPECT_EQ(shown.find("{7DD95802-9882-11CF-9FA9-00AA006C42C4}"), std::string::npos);

    ASSERT_EQ(run(L"regsvr32 /s /u \"" + controlFile() + L"\""), 0U);
    EXPECT_EQ(added(before, classes()), "");
    EXPECT_EQ(classes(), before);
    EXPECT_EQ(create(L"vrnMethodEditor.VRN_MethodEditor"), CO_E_CLASSSTRING);
    // Once more: nothing there is no failure.
    EXPECT_EQ(run(L"regsvr32 /s /u \"" + controlFile() + L"\""), 0U);
}

// A copy of the control whose type library is damaged, so that its registration fails after the class is written.
std::wstring brokenCopy() {
    std::wstring copy(MAX_PATH, L'\0');
    copy.resize(GetTempPathW(static_cast<DWORD>(copy.size()), copy.data()));
    copy += L"vrnMthdA broken.ocx";
    const std::filesystem::path from(controlFile());
    std::ifstream file(from, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const std::string signature("MSFT\x02\x00\x01\x00", 8);
    for (auto at = bytes.find(signature); at != std::string::npos; at = bytes.find(signature)) {
        bytes.replace(at, 4, "----");
    }
    std::ofstream(std::filesystem::path(copy), std::ios::binary) << bytes;
    return copy;
}

TEST(Registration, ThatFailsLeavesEverythingAsItWas) {
    const auto broken = brokenCopy();
    const auto before = classes();
    EXPECT_NE(run(L"regsvr32 /s \"" + broken + L"\""), 0U);
    EXPECT_EQ(classes(), before) << "there was none before";
    ASSERT_EQ(run(L"regsvr32 /s \"" + controlFile() + L"\""), 0U);
    // A stranger's addition to the class stays as well.
    const std::wstring foreign = L"CLSID\\{4611A8F1-26D4-4C96-A88E-60D9D78CC342}\\Foreign";
    EXPECT_EQ(RegSetValueW(HKEY_CLASSES_ROOT, foreign.c_str(), REG_SZ, L"kept", 4), ERROR_SUCCESS);
    const auto registered = classes();
    EXPECT_NE(run(L"regsvr32 /s \"" + broken + L"\""), 0U);
    EXPECT_EQ(added(registered, classes()), "");
    EXPECT_EQ(classes(), registered) << "another copy of the file was registered";
    EXPECT_EQ(run(L"regsvr32 /s /u \"" + controlFile() + L"\""), 0U);
    EXPECT_EQ(classes(), before);
    DeleteFileW(broken.c_str());
}

// COM gives a thread of the multithreaded apartment a proxy, and the control a thread of its own that dispatches messages.
TEST(Registration, ServesTheMultithreadedApartmentThroughAProxy) {
    ASSERT_EQ(run(L"regsvr32 /s \"" + controlFile() + L"\""), 0U);
    const auto inApartment = [](const std::function<void()>& body) {
        std::thread([&body] {
            EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
            body();
            CoUninitialize();
        }).join();
    };
    inApartment([&] {
        ComPtr<IVRN_MethodEditor> proxy;
        ASSERT_EQ(
            CoCreateInstance(CLSID_VRN_MethodEditor, nullptr, CLSCTX_INPROC_SERVER, IID_IVRN_MethodEditor, &proxy),
            S_OK);
        VARIANT_BOOL changed = VARIANT_TRUE;
        EXPECT_EQ(proxy->SetXmlDocuments(nullptr, nullptr, nullptr, nullptr), S_OK);
        EXPECT_EQ(proxy->get_MethodIsChanged(&changed), S_OK);
        EXPECT_EQ(changed, VARIANT_FALSE);
        // All threads of that apartment share it.
        inApartment([&] { EXPECT_EQ(proxy->refreshControls(), S_OK); });
    });
    EXPECT_EQ(run(L"regsvr32 /s /u \"" + controlFile() + L"\""), 0U);
}

TEST(Registration, IsNotNeededWithTheManifest) {
    const Apartment apartment;
    const auto manifest = binaryFolder() + L"\\vrnMethodEditor.manifest";
    const auto folder = binaryFolder();
    ACTCTXW wanted{};
    wanted.cbSize = sizeof(wanted);
    wanted.dwFlags = ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID;
    wanted.lpSource = manifest.c_str();
    wanted.lpAssemblyDirectory = folder.c_str();
    const HANDLE context = CreateActCtxW(&wanted);
    ASSERT_NE(context, INVALID_HANDLE_VALUE) << GetLastError();
    ULONG_PTR cookie = 0;
    ASSERT_TRUE(ActivateActCtx(context, &cookie));
    EXPECT_EQ(create(L"vrnMethodEditor.VRN_MethodEditor"), S_OK);
    EXPECT_EQ(create(L"vrnMethodEditor.VRN_MethodEditor.1"), S_OK);
    DeactivateActCtx(0, cookie);
    ReleaseActCtx(context);
    EXPECT_EQ(create(L"vrnMethodEditor.VRN_MethodEditor"), CO_E_CLASSSTRING);
}

}  // namespace
}  // namespace vrn::test
