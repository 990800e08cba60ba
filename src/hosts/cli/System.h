// The process as the operating system runs it; one implementation per kind of system. FileSystem.h has the files.
#pragma once

#include <exception>
#include <iosfwd>
#include <string>
#include <vector>

namespace vrn::cli::system {

/// To be called once, before anything else: a standard stream that is closed is taken, so that no file gets its place. The
/// arguments of the program, its name first, as the system has them: UTF-8 where it has an encoding at all.
[[nodiscard]] std::vector<std::string> prepare(int argc, char** argv);

/// The standard streams. They fail for a stream that was closed when the program began, and when an interruption was noted while
/// they wait for the other side.
[[nodiscard]] std::istream& input();
[[nodiscard]] std::ostream& output();
[[nodiscard]] std::ostream& errors();

enum class Stream { Out, Err };
[[nodiscard]] bool isTerminal(Stream stream) noexcept;
/// Columns of the terminal behind the error stream, 80 when they cannot be told.
[[nodiscard]] unsigned terminalWidth() noexcept;

/// While it lives, an interruption by the user or the system is only noted: who is in the middle of something ends it first. What
/// the program was set to ignore when it began stays ignored. One at a time.
class InterruptGuard {
  public:
    InterruptGuard() noexcept;
    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;
    ~InterruptGuard();
};
[[nodiscard]] bool interrupted() noexcept;
/// Ends the program as an interruption that was noted would have ended it; does nothing without one.
void followInterrupt() noexcept;

/// Thrown by what would wait on while an interruption is noted.
class Interrupted : public std::exception {
  public:
    [[nodiscard]] const char* what() const noexcept override { return "interrupted"; }
};

}  // namespace vrn::cli::system
