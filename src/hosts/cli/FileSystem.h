// Files as the tool writes them; one implementation per kind of system.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vrn::cli::system {

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
