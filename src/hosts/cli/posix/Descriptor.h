// Open files on POSIX: descriptors, read and written without being stuck in a pipe when the user interrupts; what a file has besides
// its content; and how a call of the system that failed is reported.
#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <map>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "hosts/cli/Call.h"
#include "hosts/cli/Output.h"

namespace vrn::cli::system {

class Descriptor {
  public:
    explicit Descriptor(int number = -1) noexcept : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { (void)close(); }

    [[nodiscard]] int number() const noexcept { return number_; }
    explicit operator bool() const noexcept { return number_ >= 0; }
    /// False, with errno, when the system lost something that was written.
    bool close() noexcept {
        const int number = std::exchange(number_, -1);
        return number < 0 || ::close(number) == 0;
    }

  private:
    int number_;
};

/// Bytes read, 0 at the end, -1 with errno.
[[nodiscard]] ssize_t readSome(int descriptor, char* buffer, std::size_t size) noexcept;
/// False with errno.
[[nodiscard]] bool writeAll(int descriptor, std::string_view bytes) noexcept;

/// The same for a pipe or terminal. They fail with ECANCELED once an interruption is noted: reading at once, writing when
/// the other side does not take the rest within a moment.
[[nodiscard]] ssize_t readSomeWaiting(int descriptor, char* buffer, std::size_t size) noexcept;
[[nodiscard]] bool writeAllWaiting(int descriptor, std::string_view bytes) noexcept;

/// What a file has besides its content: owner, group, permissions, access control list, extended attributes.
struct Traits {
    struct stat status {};
    std::map<std::string, std::string> attributes;  ///< the access control list is one of them
};

/// Of an open file. Throws `Fault`, in which the file is called `shown`.
[[nodiscard]] Traits traitsOf(int file, const std::string& shown);

/// Gives a new file of this process the traits of an old one. A user who is not root cannot give a file away: owner and group may
/// become another as long as nobody loses access by it. Throws `Fault` for whatever else cannot be kept.
void takeOver(int file, const Traits& old, const std::string& shown);

[[noreturn]] inline void fail(const std::string& path, const std::string& what) {
    throw Fault(displayName(path) + ": " + what);
}

[[noreturn]] inline void fail(const std::string& path, const std::string& what, int error) {
    fail(path, what + ": " + std::generic_category().message(error));
}

[[noreturn]] inline void failUnreadable(const std::string& path, int error) {
    fail(path, unreadable({error, std::generic_category()}));
}

}  // namespace vrn::cli::system
