// File descriptors: owned, read and written without being stuck in a pipe when the user interrupts.
#pragma once

#include <unistd.h>

#include <string_view>
#include <utility>

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

/// The same for what has somebody on its other side. They fail with ECANCELED once an interruption is noted: reading at once, writing when
/// the other side does not take the rest within a moment.
[[nodiscard]] ssize_t readSomeWaiting(int descriptor, char* buffer, std::size_t size) noexcept;
[[nodiscard]] bool writeAllWaiting(int descriptor, std::string_view bytes) noexcept;

}  // namespace vrn::cli::system
