// vrnhost: a host program of the method editor control.
#include <windows.h>
// After windows.h, which they build on.
#include <commctrl.h>
#include <ole2.h>
#include <shellapi.h>

#include <cstdio>
#include <string>
#include <vector>

#include "errors/Error.h"
#include "hosts/sample/Window.h"
#include "hosts/sample/script/ScriptHost.h"
#include "text/windows/Wide.h"

namespace {

constexpr const wchar_t* help =
    L"vrnhost                          open the window\r\n"
    L"vrnhost --set FOLDER [METHOD]    open it with a document set (macros.xml, objects.xml, config.xml) and a method\r\n"
    L"vrnhost host                     answer JSON requests, one a line, as vrnmethod host does\r\n"
    L"vrnhost --help                   this text\r\n";

// COM for a thread with windows: a single-threaded apartment, with what in-place activation and drag and drop need.
class Ole {
  public:
    Ole() { vrn::com::require(OleInitialize(nullptr)); }
    ~Ole() { OleUninitialize(); }
    Ole(const Ole&) = delete;
    Ole& operator=(const Ole&) = delete;
};

std::vector<std::wstring> arguments() {
    int count = 0;
    LPWSTR* const texts = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::wstring> result(texts + 1, texts + count);
    LocalFree(texts);
    return result;
}

// To whoever started the program from a shell; a window's program has no console of its own.
void print(const std::wstring& text) {
    if (GetStdHandle(STD_OUTPUT_HANDLE) == nullptr && AttachConsole(ATTACH_PARENT_PROCESS) == FALSE) {
        MessageBoxW(nullptr, text.c_str(), L"vrnhost", MB_OK | MB_ICONINFORMATION);
        return;
    }
    const auto bytes = vrn::text::fromWide(text);
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

std::wstring absolute(const std::wstring& path) {
    std::wstring full(32768, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

int run() {
    const auto given = arguments();
    const bool set = !given.empty() && given[0] == L"--set" && (given.size() == 2 || given.size() == 3);
    if (given.size() == 1 && given[0] == L"host") {
        const Ole ole;
        vrn::sample::runScriptHost();
        return 0;
    }
    if (!given.empty() && !set) {
        print(help);
        return given[0] == L"--help" ? 0 : 2;
    }
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES | ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&classes);
    const Ole ole;
    vrn::sample::Window window;
    window.show();
    if (set) {
        window.open(absolute(given[1]), given.size() == 3 ? absolute(given[2]) : std::wstring());
    }
    return window.run();
}

}  // namespace

int main() {
    try {
        return run();
    } catch (...) {
        const auto text = vrn::text::toWide(vrn::errors::currentError().description());
        MessageBoxW(nullptr, text.c_str(), L"vrnhost", MB_OK | MB_ICONERROR);
        return 1;
    }
}
