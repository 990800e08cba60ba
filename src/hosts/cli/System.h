// The operating system: the process as it runs it, and files as the tool reads, locks and replaces them. One implementation per kind
// of system.
#pragma once

#include <chrono>
#include <cstddef>
#include <exception>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
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
/// Columns of the terminal that the error stream is, 80 when they are not known.
[[nodiscard]] unsigned terminalWidth() noexcept;

/// While it lives, an interruption by the user or the system is only noted, so that a file is written to its end. What the program
/// was set to ignore when it began stays ignored. One at a time.
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

/// Thrown by what would go on waiting though an interruption is noted.
class Interrupted : public std::exception {
  public:
    [[nodiscard]] const char* what() const noexcept override { return "interrupted"; }
};

/// What all names of one file have in common. A file that is not there yet has its folder and its name in it.
[[nodiscard]] std::string identityOf(const std::string& path);
/// The identity of the file that the standard input or output is; empty when it is none.
[[nodiscard]] std::string identityOfInput();
[[nodiscard]] std::string identityOfOutput();

/// The whole content. Throws `Fault` for what cannot be read or has more than `largest` bytes, and `Interrupted`.
[[nodiscard]] std::string readFile(const std::string& path, std::size_t largest);

/// A file that is read to be written anew. As long as a copy of this is there, other processes and threads that claim the file wait
/// for it; the system ends a claim with its process. Null where there is nothing to claim, or no way to.
using Claim = std::shared_ptr<const void>;

/// Throws `Fault` when others keep the file for longer than that, and `Interrupted`.
[[nodiscard]] Claim claimFile(const std::string& path, std::chrono::milliseconds patience = std::chrono::seconds(10));

/// Throws `Fault` when `replaceFile` would refuse this file or the backup: a folder, a device, a file that is read-only.
void requireReplaceable(const std::string& path, const std::string& backupSuffix);

/// The file that keeps what `replaceFile` replaces.
[[nodiscard]] std::string backupOf(const std::string& path, const std::string& suffix);

/// Puts a file with this content in place of the one at `path`, or makes it: written whole beside it and renamed over it, so
/// that at any moment the path names the old content or the new. Owner, group, permissions, access control list and extended
/// attributes stay those of the old file; a symbolic link stays and its target is replaced. With a suffix the old content is kept
/// under the name with the suffix. With `asRead` the file must still have this content.
/// Throws `Fault`, also when somebody would lose access to the file; then nothing has changed.
void replaceFile(const std::string& path, std::string_view content, const std::string& backupSuffix,
                 std::optional<std::string_view> asRead = std::nullopt);

/// Whether the path is another name of the standard output.
[[nodiscard]] bool isOutput(const std::string& path);

/// Whether writing to this path means a pipe, a terminal or another device, or a descriptor that the caller opened for the program:
/// nothing that could be replaced.
[[nodiscard]] bool isStream(const std::string& path);
/// Writes to one. Throws `Fault`, also for a pipe that nobody reads, and `Interrupted`.
void writeStream(const std::string& path, std::string_view content);

}  // namespace vrn::cli::system
