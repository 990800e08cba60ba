#include "hosts/cli/System.h"

#include <windows.h>

#include <io.h>
#include <shellapi.h>

#include <algorithm>
#include <atomic>
#include <cstdio>

#include "errors/modErr.h"
#include "hosts/cli/ExitStatus.h"
#include "hosts/cli/Names.h"
#include "text/Unicode.h"

namespace vrn::cli::system {

namespace {

std::atomic<bool> interruptFlag = false;

BOOL WINAPI noteInterrupt(DWORD /*event*/) {
    interruptFlag = true;
    return TRUE;
}

std::wstring wide(const std::string& text) {
    const auto units = text::toUtf16(text);
    return {units.begin(), units.end()};
}

std::string narrow(const wchar_t* text) {
    const std::wstring_view units(text);
    return text::fromUtf16(std::u16string(units.begin(), units.end()));
}

[[noreturn]] void fail(const std::string& path, const char* what) {
    const auto code = static_cast<std::int32_t>(GetLastError());
    throw Fault(displayName(path) + ": " + what + ": " + errors::GetSystemMessage(code));
}

// A file beside the target until it takes the target's place; gone when that does not happen.
class Beside {
  public:
    explicit Beside(const std::string& target)
        : target_(target),
          name_(wide(target) + L".vrnmethod-new"),
          file_(CreateFileW(name_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)) {
        if (file_ == INVALID_HANDLE_VALUE) {
            fail(target_, "cannot write into its folder");
        }
    }
    Beside(const Beside&) = delete;
    Beside& operator=(const Beside&) = delete;
    ~Beside() {
        closeFile();
        if (!name_.empty()) {
            (void)DeleteFileW(name_.c_str());
        }
    }

    void write(std::string_view content) {
        constexpr std::size_t most = 1U << 20U;
        while (!content.empty()) {
            DWORD written = 0;
            if (WriteFile(file_, content.data(), static_cast<DWORD>(std::min(most, content.size())), &written,
                          nullptr) == 0) {
                fail(target_, "cannot write");
            }
            content.remove_prefix(written);
        }
        if (FlushFileBuffers(file_) == 0 || !closeFile()) {
            fail(target_, "cannot write");
        }
    }

    void rename() {
        if (MoveFileExW(name_.c_str(), wide(target_).c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) ==
            0) {
            fail(target_, "cannot be replaced");
        }
        name_.clear();
    }

    // Takes the place of a file that is there: its permissions stay, and so does its content when it has a name to go to.
    void replace(const std::string& backup) {
        const auto kept = wide(backup);
        if (ReplaceFileW(wide(target_).c_str(), name_.c_str(), backup.empty() ? nullptr : kept.c_str(), 0, nullptr,
                         nullptr) == 0) {
            fail(target_, "cannot be replaced");
        }
        name_.clear();
    }

  private:
    bool closeFile() {
        const HANDLE file = file_;
        file_ = INVALID_HANDLE_VALUE;
        return file == INVALID_HANDLE_VALUE || CloseHandle(file) != 0;
    }

    std::string target_;
    std::wstring name_;
    HANDLE file_;
};

}  // namespace

std::vector<std::string> prepare(int /*argc*/, char** /*argv*/) {
    // The arguments of main are in the ANSI code page, which not every name is in.
    int count = 0;
    LPWSTR* const all = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    arguments.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        arguments.push_back(narrow(all[i]));
    }
    (void)LocalFree(static_cast<HLOCAL>(all));
    (void)SetConsoleOutputCP(CP_UTF8);
    return arguments;
}

bool isTerminal(Stream stream) noexcept { return _isatty(_fileno(stream == Stream::Out ? stdout : stderr)) != 0; }

unsigned terminalWidth() noexcept {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    return GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info) != 0
               ? static_cast<unsigned>(info.srWindow.Right - info.srWindow.Left + 1)
               : 80U;
}

void replaceFile(const std::string& path, std::string_view content, const std::string& backupSuffix) {
    const auto attributes = GetFileAttributesW(wide(path).c_str());
    const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
    if (exists && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        throw Fault(displayName(path) + ": is a folder");
    }
    if (exists && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        throw Fault(displayName(path) + ": is read-only");
    }
    Beside replacement(path);
    replacement.write(content);
    if (exists) {
        replacement.replace(backupSuffix.empty() ? std::string() : path + backupSuffix);
    } else {
        replacement.rename();
    }
}

void deferInterrupts() noexcept {
    interruptFlag = false;
    (void)SetConsoleCtrlHandler(noteInterrupt, TRUE);
}

void restoreInterrupts() noexcept { (void)SetConsoleCtrlHandler(noteInterrupt, FALSE); }

bool interrupted() noexcept { return interruptFlag; }

}  // namespace vrn::cli::system
