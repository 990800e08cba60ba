#include "hosts/cli/System.h"

#include <windows.h>

#include <algorithm>
#include <limits>
#include <system_error>
#include <thread>
#include <utility>

#include "errors/modErr.h"
#include "hosts/cli/Call.h"
#include "hosts/cli/Output.h"
#include "text/TextFile.h"
#include "text/windows/Wide.h"

namespace vrn::cli::system {

namespace {

using text::toWide;

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

[[noreturn]] void fail(const std::string& path, const std::string& what) {
    throw Fault(displayName(path) + ": " + what);
}

[[noreturn]] void failByCode(const std::string& path, const char* what) {
    fail(path, what + (": " + errors::GetSystemMessage(static_cast<std::int32_t>(GetLastError()))));
}

[[noreturn]] void failUnreadable(const std::string& path) {
    fail(path, unreadable({static_cast<int>(GetLastError()), std::system_category()}));
}

class Handle {
  public:
    explicit Handle(HANDLE handle = INVALID_HANDLE_VALUE) noexcept : handle_(handle) {}
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    Handle& operator=(Handle&&) = delete;
    ~Handle() { (void)close(); }
    [[nodiscard]] HANDLE get() const noexcept { return handle_; }
    explicit operator bool() const noexcept { return handle_ != INVALID_HANDLE_VALUE; }
    bool close() noexcept {
        const HANDLE handle = std::exchange(handle_, INVALID_HANDLE_VALUE);
        return handle == INVALID_HANDLE_VALUE || CloseHandle(handle) != 0;
    }

  private:
    HANDLE handle_;
};

Handle opened(const std::string& path, DWORD access) {
    // With this flag folders can be opened too: reading one fails, and only asking what it is does not.
    return Handle(CreateFileW(toWide(path).c_str(), access, shareAll, nullptr, OPEN_EXISTING,
                              FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

// From the drive on: not every Windows replaces a file that is named without its folder.
std::wstring fullPath(const std::string& path) {
    const auto name = toWide(path);
    std::wstring full(GetFullPathNameW(name.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(GetFullPathNameW(name.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full.empty() ? name : full;
}

std::string identityOf(HANDLE file) {
    BY_HANDLE_FILE_INFORMATION information{};
    if (GetFileType(file) != FILE_TYPE_DISK || GetFileInformationByHandle(file, &information) == 0) {
        return {};
    }
    return std::to_string(information.dwVolumeSerialNumber) + ":" + std::to_string(information.nFileIndexHigh) + ":" +
           std::to_string(information.nFileIndexLow);
}

void writeAll(HANDLE file, const std::string& path, std::string_view content) {
    constexpr std::size_t most = 1U << 20U;
    while (!content.empty()) {
        DWORD written = 0;
        if (WriteFile(file, content.data(), static_cast<DWORD>(std::min(most, content.size())), &written, nullptr) ==
            0) {
            failByCode(path, "cannot be written");
        }
        content.remove_prefix(written);
    }
}

// A file beside the target until it takes the target's place; gone when that does not happen.
class Beside {
  public:
    explicit Beside(const std::string& target)
        : target_(target),
          place_(fullPath(target)),
          name_(place_ + L".vrnmethod-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                std::to_wstring(GetCurrentThreadId())),
          file_(CreateFileW(name_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr)) {
        if (!file_) {
            failByCode(target_, "cannot write into its folder");
        }
    }
    Beside(const Beside&) = delete;
    Beside& operator=(const Beside&) = delete;
    ~Beside() {
        (void)file_.close();
        if (!name_.empty()) {
            (void)DeleteFileW(name_.c_str());
        }
    }

    void write(std::string_view content) {
        writeAll(file_.get(), target_, content);
        if (FlushFileBuffers(file_.get()) == 0 || !file_.close()) {
            failByCode(target_, "cannot be written");
        }
    }

    void rename() {
        if (MoveFileExW(name_.c_str(), place_.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0) {
            failByCode(target_, "cannot be replaced");
        }
        name_.clear();
    }

    // Takes the place of a file that is there: its attributes, streams and access control list stay or the call fails, and its content
    // stays when it has a name to go to.
    void replace(const std::string& backup) {
        const auto kept = fullPath(backup);
        if (ReplaceFileW(place_.c_str(), name_.c_str(), backup.empty() ? nullptr : kept.c_str(), 0, nullptr, nullptr) ==
            0) {
            failByCode(target_, "cannot be replaced");
        }
        name_.clear();
    }

  private:
    std::string target_;
    std::wstring place_;
    std::wstring name_;
    Handle file_;
};

// Whether there is something to replace.
bool isReplaceable(const std::string& path) {
    const auto attributes = GetFileAttributesW(toWide(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return false;
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        fail(path, "is a folder");
    }
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        fail(path, "is read-only");
    }
    return true;
}

}  // namespace

std::string identityOf(const std::string& path) {
    if (const auto file = opened(path, 0)) {
        return identityOf(file.get());
    }
    // Not there yet: its folder and its name, in which case does not count.
    auto full = fullPath(path);
    const auto name = full.find_last_of(L'\\') + 1;
    const auto folder = opened(text::fromWide(std::wstring_view(full).substr(0, name)), 0);
    (void)CharLowerW(full.data());
    return (folder ? identityOf(folder.get()) : std::string()) + "\\" +
           text::fromWide(std::wstring_view(full).substr(folder ? name : 0));
}

std::string identityOfInput() { return identityOf(GetStdHandle(STD_INPUT_HANDLE)); }
std::string identityOfOutput() { return identityOf(GetStdHandle(STD_OUTPUT_HANDLE)); }

std::string readFile(const std::string& path, std::size_t largest) {
    const auto attributes = GetFileAttributesW(toWide(path).c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        fail(path, "is a folder");
    }
    const auto file = opened(path, GENERIC_READ);
    if (!file) {
        failUnreadable(path);
    }
    LARGE_INTEGER fileSize{};
    const bool isKnown = GetFileType(file.get()) == FILE_TYPE_DISK && GetFileSizeEx(file.get(), &fileSize) != 0;
    if (isKnown && static_cast<std::uint64_t>(fileSize.QuadPart) > largest) {
        fail(path, std::string(text::tooLarge));
    }
    std::string bytes;
    std::size_t size = 0;
    constexpr std::size_t block = 65536;
    DWORD count = 0;
    for (auto more = isKnown ? static_cast<std::size_t>(fileSize.QuadPart) + 1 : block;; more = block) {
        bytes.resize(size + more);
        if (ReadFile(file.get(), bytes.data() + size, static_cast<DWORD>(more), &count, nullptr) == 0 &&
            GetLastError() != ERROR_BROKEN_PIPE) {
            failUnreadable(path);
        }
        size += count;
        if (count == 0) {
            bytes.resize(size);
            return bytes;
        }
        if (size > largest) {
            fail(path, std::string(text::tooLarge));
        }
    }
}

Claim claimFile(const std::string& path, std::chrono::milliseconds patience) {
    // The file itself could not be replaced while it is locked. The system removes this one with its process.
    const auto end = std::chrono::steady_clock::now() + patience;
    const auto lock = toWide(path) + L".vrnmethod-lock";
    const auto attributes = GetFileAttributesW(toWide(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return nullptr;
    }
    // A file that is just being removed is refused as one that may not be made is.
    for (int refusals = 0;;) {
        Handle file(CreateFileW(lock.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
        if (file) {
            return std::make_shared<Handle>(std::move(file));
        }
        constexpr int mostRefusals = 20;
        const auto error = GetLastError();
        if (error != ERROR_SHARING_VIOLATION && (error != ERROR_ACCESS_DENIED || ++refusals > mostRefusals)) {
            return nullptr;  // where it cannot be made, nothing can be written either
        }
        if (interrupted()) {
            throw Interrupted();
        }
        if (std::chrono::steady_clock::now() >= end) {
            fail(path, "is being written by another process; try again when that is through");
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

std::string backupOf(const std::string& path, const std::string& suffix) { return path + suffix; }

void requireReplaceable(const std::string& path, const std::string& backupSuffix) {
    if (isReplaceable(path) && !backupSuffix.empty()) {
        (void)isReplaceable(backupOf(path, backupSuffix));
    }
}

void replaceFile(const std::string& path, std::string_view content, const std::string& backupSuffix,
                 std::optional<std::string_view> asRead) {
    requireReplaceable(path, backupSuffix);
    const bool exists = isReplaceable(path);
    if (!exists && asRead) {
        fail(path, "was removed after it was read; nothing was written");
    }
    Beside replacement(path);
    replacement.write(content);
    if (!exists) {
        replacement.rename();
        return;
    }
    if (asRead && readFile(path, std::numeric_limits<std::size_t>::max()) != *asRead) {
        fail(path, "was changed after it was read; nothing was written");
    }
    replacement.replace(backupSuffix.empty() ? std::string() : backupOf(path, backupSuffix));
}

bool isOutput(const std::string& /*path*/) { return false; }

bool isStream(const std::string& path) {
    const auto file = opened(path, GENERIC_WRITE);
    return file && GetFileType(file.get()) != FILE_TYPE_DISK;
}

void writeStream(const std::string& path, std::string_view content) {
    const auto file = opened(path, GENERIC_WRITE);
    if (!file) {
        failByCode(path, "cannot be written");
    }
    writeAll(file.get(), path, content);
}

}  // namespace vrn::cli::system
