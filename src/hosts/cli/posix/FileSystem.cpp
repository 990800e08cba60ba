// Files on POSIX: read, locked, and replaced in one step.
#include <fcntl.h>
#include <sys/file.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdlib>
#include <random>
#include <thread>

#include "hosts/cli/System.h"
#include "hosts/cli/posix/Descriptor.h"
#include "text/TextFile.h"

namespace vrn::cli::system {

namespace {

using Clock = std::chrono::steady_clock;

std::string folderOf(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash == 0 ? 1 : slash);
}

std::string nameOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

// The file that a path means in the end, whether it is there yet or not; what cannot be followed is left as it is.
std::string targetOf(std::string path) {
    constexpr int mostLinks = 40;
    for (int i = 0; i < mostLinks; ++i) {
        const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(path.c_str(), nullptr), &std::free);
        if (resolved) {
            return resolved.get();
        }
        std::array<char, PATH_MAX> link{};
        const auto size = readlink(path.c_str(), link.data(), link.size());
        if (size <= 0) {
            break;
        }
        const std::string next(link.data(), static_cast<std::size_t>(size));
        path = next.starts_with('/') ? next : folderOf(path).append("/").append(next);
    }
    return path;
}

std::string identityOf(const struct stat& file) {
    return std::to_string(file.st_dev) + ":" + std::to_string(file.st_ino);
}

std::string identityOfDescriptor(int descriptor) {
    struct stat file {};
    return fstat(descriptor, &file) == 0 && S_ISREG(file.st_mode) ? identityOf(file) : std::string();
}

bool isSameFile(const struct stat& a, const struct stat& b) { return a.st_dev == b.st_dev && a.st_ino == b.st_ino; }

std::string contentOf(int file, const std::string& path) {
    std::string content;
    std::array<char, 65536> block{};
    ssize_t count = 0;
    while ((count = readSome(file, block.data(), block.size())) > 0) {
        content.append(block.data(), static_cast<std::size_t>(count));
    }
    if (count < 0) {
        failUnreadable(path, errno);
    }
    return content;
}

// A file to be replaced, as it is now.
class OldFile {
  public:
    OldFile(const std::string& target, const std::string& shown)
        : file_(open(target.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
        if (!file_) {
            failUnreadable(shown, errno);
        }
        traits_ = traitsOf(file_.number(), shown);
        content_ = contentOf(file_.number(), shown);
    }
    [[nodiscard]] const Traits& traits() const noexcept { return traits_; }
    [[nodiscard]] const std::string& content() const noexcept { return content_; }

  private:
    Descriptor file_;
    Traits traits_;
    std::string content_;
};

// A file beside the target until it takes the target's place; gone when that does not happen.
class Beside {
  public:
    /// `shown` is what the user calls the target.
    Beside(const std::string& target, std::string shown, mode_t mode)
        : target_(target), shown_(std::move(shown)), name_(besideName(target)) {
        while (!file_) {
            file_ = Descriptor(open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
            if (!file_ && errno != EEXIST) {
                const int error = errno;
                name_.clear();
                error == ENOENT ? fail(shown_, "its folder does not exist")
                                : fail(shown_, "cannot write into its folder", error);
            }
            name_ = file_ ? name_ : besideName(target);
        }
    }
    Beside(const Beside&) = delete;
    Beside& operator=(const Beside&) = delete;
    ~Beside() {
        if (!name_.empty()) {
            (void)unlink(name_.c_str());
        }
    }

    /// As the old file where there is one.
    void write(std::string_view content, const Traits* old) {
        if (!writeAll(file_.number(), content)) {
            fail(shown_, "cannot be written", errno);
        }
        if (old != nullptr) {
            takeOver(file_.number(), *old, shown_);
        }
        if (fsync(file_.number()) != 0 || !file_.close()) {
            fail(shown_, "cannot be written", errno);
        }
    }

    void rename() {
        if (::rename(name_.c_str(), target_.c_str()) != 0) {
            fail(shown_, "cannot be replaced", errno);
        }
        name_.clear();
        // Makes the new name last. A file system that cannot do that has done all it can.
        const Descriptor folder(open(folderOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        (void)fsync(folder.number());
    }

  private:
    static std::string besideName(const std::string& target) {
        static thread_local std::minstd_rand random(std::random_device{}());
        const auto nameAt = target.rfind('/') + 1;
        // A long name leaves no room for an addition.
        return target.substr(0, nameAt) + "." + target.substr(nameAt, 128) + "." + std::to_string(random());
    }

    std::string target_;
    std::string shown_;
    std::string name_;
    Descriptor file_;
};

void requireReplaceable(const std::string& path, const std::string& target, const struct stat& old) {
    if (S_ISDIR(old.st_mode)) {
        failUnreadable(path, EISDIR);
    }
    if (!S_ISREG(old.st_mode)) {
        fail(path, "is not a regular file");
    }
    // Renaming over a file asks nobody whether it may be written, and root may write everything.
    if ((old.st_mode & 0222U) == 0 || access(target.c_str(), W_OK) != 0) {
        fail(path, "is read-only");
    }
}

// Whether there is something to replace.
bool isReplaceable(const std::string& path, const std::string& target) {
    struct stat old {};
    if (stat(target.c_str(), &old) != 0) {
        if (errno != ENOENT) {
            fail(path, "cannot be written", errno);
        }
        return false;
    }
    requireReplaceable(path, target, old);
    return true;
}

// The number in a name that means a descriptor of this process; -1 for every other name.
int descriptorNamed(std::string_view path) {
    if (path == "/dev/stdout" || path == "/dev/stderr") {
        return path == "/dev/stdout" ? STDOUT_FILENO : STDERR_FILENO;
    }
    for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
        int number = -1;
        const auto* const end = path.data() + path.size();
        if (path.starts_with(folder) && std::from_chars(path.data() + folder.size(), end, number).ptr == end) {
            return number;
        }
    }
    return -1;
}

// Whether the lock was taken before the time came. Without locks there is nothing to wait for.
bool lockBy(int file, Clock::time_point end) {
    using namespace std::chrono_literals;
    while (flock(file, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            return true;
        }
        if (interrupted()) {
            throw Interrupted();
        }
        if (Clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(5ms);
    }
    return true;
}

}  // namespace

std::string identityOf(const std::string& path) {
    struct stat file {};
    if (stat(path.c_str(), &file) == 0) {
        return identityOf(file);
    }
    const auto target = targetOf(path);
    return stat(folderOf(target).c_str(), &file) == 0 ? identityOf(file) + "/" + nameOf(target) : target;
}

std::string identityOfInput() { return identityOfDescriptor(STDIN_FILENO); }
std::string identityOfOutput() { return identityOfDescriptor(STDOUT_FILENO); }

std::string readFile(const std::string& path, std::size_t largest) {
    constexpr std::size_t block = 65536;
    // A pipe that nobody writes yet is to be waited for where an interruption is noticed.
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file || fstat(file.number(), &status) != 0) {
        failUnreadable(path, errno);
    }
    const bool isRegular = S_ISREG(status.st_mode);
    const auto expected = isRegular ? static_cast<std::size_t>(status.st_size) : 0;
    std::string bytes;
    std::size_t size = 0;
    for (std::size_t more = expected < largest ? expected + 1 : 0;; more = block) {
        bytes.resize(size + more);
        const auto count = isRegular ? readSome(file.number(), bytes.data() + size, more)
                                     : readSomeWaiting(file.number(), bytes.data() + size, more);
        if (count < 0 && errno == ECANCELED) {
            throw Interrupted();
        }
        if (count < 0) {
            failUnreadable(path, errno);
        }
        size += static_cast<std::size_t>(count);
        // A file gives less than it is asked for at its end only.
        if (more > 0 && (isRegular ? static_cast<std::size_t>(count) < more : count == 0)) {
            bytes.resize(size);
            return bytes;
        }
        if (size > largest || expected > largest) {
            fail(path, std::string(text::tooLarge));
        }
    }
}

Claim claimFile(const std::string& path, std::chrono::milliseconds patience) {
    const auto end = Clock::now() + patience;
    for (;;) {
        struct stat claimed {};
        if (stat(path.c_str(), &claimed) != 0 || !S_ISREG(claimed.st_mode)) {
            return nullptr;
        }
        Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        if (!file || fstat(file.number(), &claimed) != 0) {
            return nullptr;
        }
        if (!lockBy(file.number(), end)) {
            fail(path, "is being written by another process; try again when that is through");
        }
        // Who had it before has put another file in its place.
        struct stat now {};
        if (stat(path.c_str(), &now) != 0 || isSameFile(claimed, now)) {
            return std::make_shared<Descriptor>(std::move(file));
        }
    }
}

std::string backupOf(const std::string& path, const std::string& suffix) { return targetOf(path) + suffix; }

void requireReplaceable(const std::string& path, const std::string& backupSuffix) {
    const auto target = targetOf(path);
    if (isReplaceable(path, target) && !backupSuffix.empty()) {
        (void)isReplaceable(path + backupSuffix, target + backupSuffix);
    }
}

void replaceFile(const std::string& path, std::string_view content, const std::string& backupSuffix,
                 std::optional<std::string_view> asRead) {
    const auto target = targetOf(path);
    requireReplaceable(path, backupSuffix);
    if (!isReplaceable(path, target)) {
        if (asRead) {
            fail(path, "was removed after it was read; nothing was written");
        }
        Beside made(target, path, 0666);
        made.write(content, nullptr);
        made.rename();
        return;
    }
    const OldFile old(target, path);
    Beside replacement(target, path, 0600);
    replacement.write(content, &old.traits());
    const auto requireAsRead = [&](const std::string& now) {
        if (asRead && now != *asRead) {
            fail(path, "was changed after it was read; nothing was written");
        }
    };
    requireAsRead(old.content());
    if (!backupSuffix.empty()) {
        Beside backup(target + backupSuffix, path + backupSuffix, 0600);
        backup.write(old.content(), &old.traits());
        backup.rename();
    }
    requireAsRead(OldFile(target, path).content());
    replacement.rename();
}

bool isOutput(const std::string& path) { return descriptorNamed(path) == STDOUT_FILENO; }

bool isStream(const std::string& path) {
    struct stat file {};
    return descriptorNamed(path) >= 0 ||
           (stat(path.c_str(), &file) == 0 && !S_ISREG(file.st_mode) && !S_ISDIR(file.st_mode));
}

void writeStream(const std::string& path, std::string_view content) {
    const int named = descriptorNamed(path);
    // Opening a pipe would wait for a reader, who may never come.
    const Descriptor file(named >= 0 ? fcntl(named, F_DUPFD_CLOEXEC, 0)
                                     : open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file && errno == ENXIO) {
        fail(path, "is a pipe that nobody reads");
    }
    if (!file || !writeAllWaiting(file.number(), content)) {
        if (errno == ECANCELED) {
            throw Interrupted();
        }
        fail(path, "cannot be written", errno);
    }
}

}  // namespace vrn::cli::system
