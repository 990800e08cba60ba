// A method that goes back to where it came from.
#pragma once

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "hosts/cli/Engine.h"
#include "hosts/cli/Files.h"
#include "hosts/cli/MethodRun.h"
#include "hosts/cli/Output.h"
#include "hosts/cli/System.h"

namespace vrn::cli {

/// The files that a call reads, under whatever names: nothing else is written over them.
class FilesInUse {
  public:
    void add(const std::string& path);
    void add(const std::vector<std::string>& paths);
    /// Throws `Fault` when what is to be written at a path, such as "the backup", would replace one of them.
    void requireFree(const std::string& path, const std::string& shown, const std::string& what) const;

  private:
    std::unordered_set<std::string> identities_;
};

/// How files are written.
struct WriteArguments {
    bool dryRun = false;
    std::string backupSuffix;
    std::shared_ptr<FilesInUse> inUse = std::make_shared<FilesInUse>();
};

/// A method file that may be written anew: others that want to write it wait until the last copy of this is gone.
struct MethodToWrite : XmlFile {
    std::string bytes;  ///< as they were read
    system::Claim claim;
};

/// Reads it. Throws as `readXmlFile` does, and `system::Interrupted`.
[[nodiscard]] MethodToWrite readMethod(const std::string& path, const Console& console, const WriteArguments& write);

/// Throws `Fault` when nothing can be written over the method's file.
void requireWritable(const MethodToWrite& file, const WriteArguments& write);

/// Writes the signed method over its file, or to the outcome when it came from standard input; nothing with `dryRun`. What
/// would be written is read back and verified first. Throws `Fault`, also when the file has changed since it was read; it stays as it is
/// then.
void writeBack(Engine& engine, const MethodToWrite& file, const xml::Document& method, const WriteArguments& write,
               Outcome& outcome);

/// For a method that stays as it is: one from standard input goes to the output all the same.
void passThrough(const MethodToWrite& file, const WriteArguments& write, Outcome& outcome);

/// How the object about a method begins that a command which writes prints with --json: file, status and, when nothing is to be
/// written, `dryRun`.
[[nodiscard]] Json reportHead(const XmlFile& file, const char* status, const WriteArguments& write);

/// Adds lines for the user: on the error stream when the output is the method itself.
void report(const XmlFile& file, Outcome& outcome, const std::string& lines);

}  // namespace vrn::cli
