// What the tool needs of the operating system; one implementation per kind of system.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vrn::cli::system {

/// To be called once, before anything else. The arguments of the program, its name first, as the system has them: UTF-8 where it
/// has an encoding at all.
[[nodiscard]] std::vector<std::string> prepare(int argc, char** argv);

enum class Stream { Out, Err };
[[nodiscard]] bool isTerminal(Stream stream) noexcept;
/// Columns of the terminal behind the error stream, 80 when they cannot be told.
[[nodiscard]] unsigned terminalWidth() noexcept;

/// Puts a file with this content in place of the one at `path`, or makes it: written whole beside it and renamed over it, so
/// that at any moment the path names the old content or the new. Permissions stay those of the old file; a symbolic link stays
/// and its target is replaced. With a suffix the old content is kept under the name with the suffix.
/// Throws `Fault`; then nothing has changed.
void replaceFile(const std::string& path, std::string_view content, const std::string& backupSuffix);

/// From now on an interruption by the user only sets a flag: who is in the middle of something ends it first.
void deferInterrupts() noexcept;
/// Back to the system's own way.
void restoreInterrupts() noexcept;
[[nodiscard]] bool interrupted() noexcept;

}  // namespace vrn::cli::system
