#include "hosts/cli/System.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include "hosts/cli/ExitStatus.h"
#include "hosts/cli/Names.h"

namespace vrn::cli::system {

namespace {

// Set by a signal, read by every thread.
std::atomic<bool> interruptFlag = false;
static_assert(std::atomic<bool>::is_always_lock_free);

extern "C" void noteInterrupt(int /*signal*/) { interruptFlag = true; }

constexpr std::array<int, 3> interrupts{SIGINT, SIGTERM, SIGHUP};

[[noreturn]] void fail(const std::string& path, const char* what, int error) {
    throw Fault(displayName(path) + ": " + what + ": " + strerrordesc_np(error));
}

// The file that a path means in the end; the path itself when there is none yet.
std::string targetOf(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(path.c_str(), nullptr), &std::free);
    return resolved ? std::string(resolved.get()) : path;
}

std::string folderOf(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash == 0 ? 1 : slash);
}

// A file beside the target until it takes the target's place; gone when that does not happen.
class Beside {
  public:
    /// `shown` is what the user calls the target.
    Beside(const std::string& target, std::string shown)
        : target_(target),
          shown_(std::move(shown)),
          name_(patternBeside(target)),
          file_(mkostemp(name_.data(), O_CLOEXEC)) {
        if (file_ < 0) {
            fail(shown_, "cannot write into its folder", errno);
        }
    }
    Beside(const Beside&) = delete;
    Beside& operator=(const Beside&) = delete;
    ~Beside() {
        closeFile();
        if (!name_.empty()) {
            (void)unlink(name_.c_str());
        }
    }

    void write(std::string_view content) {
        while (!content.empty()) {
            const auto written = ::write(file_, content.data(), content.size());
            if (written < 0 && errno != EINTR) {
                fail(shown_, "cannot write", errno);
            }
            content.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
        }
    }

    void takeOver(const struct stat& old) {
        // Only root can give a file away; whoever else may write here keeps what they may.
        const int notGiven = fchown(file_, old.st_uid, old.st_gid);
        static_cast<void>(notGiven);
        if (fchmod(file_, old.st_mode & 07777) != 0) {
            fail(shown_, "cannot keep the permissions", errno);
        }
    }

    void makeReadable() const {
        const auto mask = umask(0);
        umask(mask);
        (void)fchmod(file_, 0666 & ~mask);
    }

    void finish() {
        if (fsync(file_) != 0 || !closeFile()) {
            fail(shown_, "cannot write", errno);
        }
    }

    void rename() {
        if (::rename(name_.c_str(), target_.c_str()) != 0) {
            fail(shown_, "cannot be replaced", errno);
        }
        name_.clear();
        // Makes the new name last. A file system that cannot do that has done all it can.
        const int folder = open(folderOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (folder >= 0) {
            (void)fsync(folder);
            (void)close(folder);
        }
    }

  private:
    static std::string patternBeside(const std::string& target) {
        const auto slash = target.rfind('/');
        const auto nameAt = slash == std::string::npos ? 0 : slash + 1;
        // A long name leaves no room for an addition.
        return target.substr(0, nameAt) + "." + target.substr(nameAt, 128) + ".XXXXXX";
    }
    bool closeFile() {
        const int file = file_;
        file_ = -1;
        return file < 0 || close(file) == 0;
    }

    std::string target_;
    std::string shown_;
    std::string name_;
    int file_;
};

std::string contentOf(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        fail(path, "cannot be read", errno);
    }
    std::string content;
    std::array<char, 65536> block{};
    ssize_t count = 0;
    while ((count = read(file, block.data(), block.size())) > 0) {
        content.append(block.data(), static_cast<std::size_t>(count));
    }
    const int error = errno;
    (void)close(file);
    if (count < 0) {
        fail(path, "cannot be read", error);
    }
    return content;
}

void keepBackup(const std::string& path, const std::string& target, const struct stat& old, const std::string& suffix) {
    Beside backup(target + suffix, path + suffix);
    backup.write(contentOf(target));
    backup.takeOver(old);
    backup.finish();
    backup.rename();
}

void requireReplaceable(const std::string& path, const struct stat& old) {
    if (S_ISDIR(old.st_mode)) {
        throw Fault(displayName(path) + ": is a folder");
    }
    if (!S_ISREG(old.st_mode)) {
        throw Fault(displayName(path) + ": is not a regular file");
    }
    // Renaming over a file asks nobody whether it may be written, and root may write everything.
    if ((old.st_mode & 0222) == 0 || access(path.c_str(), W_OK) != 0) {
        throw Fault(displayName(path) + ": is read-only");
    }
}

}  // namespace

std::vector<std::string> prepare(int argc, char** argv) {
    // Beyond a limit on file sizes a write is to fail, not to end the program.
    (void)std::signal(SIGXFSZ, SIG_IGN);
    return {argv, argv + argc};
}

bool isTerminal(Stream stream) noexcept { return isatty(stream == Stream::Out ? STDOUT_FILENO : STDERR_FILENO) == 1; }

unsigned terminalWidth() noexcept {
    struct winsize size {};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80U;
}

void replaceFile(const std::string& path, std::string_view content, const std::string& backupSuffix) {
    const auto target = targetOf(path);
    struct stat old {};
    const bool exists = stat(target.c_str(), &old) == 0;
    if (exists) {
        requireReplaceable(path, old);
    }
    Beside replacement(target, path);
    replacement.write(content);
    if (exists) {
        replacement.takeOver(old);
    } else {
        replacement.makeReadable();
    }
    replacement.finish();
    if (exists && !backupSuffix.empty()) {
        keepBackup(path, target, old, backupSuffix);
    }
    replacement.rename();
}

void deferInterrupts() noexcept {
    interruptFlag = false;
    for (const int signal : interrupts) {
        (void)std::signal(signal, noteInterrupt);
    }
    // A reader that goes away is no reason to stop in the middle either: the output fails, and that is told at the end.
    (void)std::signal(SIGPIPE, SIG_IGN);
}

void restoreInterrupts() noexcept {
    for (const int signal : interrupts) {
        (void)std::signal(signal, SIG_DFL);
    }
    (void)std::signal(SIGPIPE, SIG_DFL);
}

bool interrupted() noexcept { return interruptFlag; }

}  // namespace vrn::cli::system
