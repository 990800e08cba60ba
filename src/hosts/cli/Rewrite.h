// A method that goes back to where it came from.
#pragma once

#include <string>

#include "hosts/cli/Engine.h"
#include "hosts/cli/Files.h"
#include "hosts/cli/Json.h"
#include "hosts/cli/MethodRun.h"

namespace vrn::cli {

/// How files are written.
struct WriteArguments {
    bool dryRun = false;
    std::string backupSuffix;
};

/// Writes the signed method over its file, or to the outcome's output when it came from standard input; nothing with `dryRun`. What
/// would be written is read back and verified first. Throws `Fault`; the file is the old one then.
void writeBack(Engine& engine, const XmlFile& file, const xml::Document& method, const WriteArguments& write,
               Outcome& outcome);

/// How the object about a method begins that a command which writes prints with --json: file, status and, when nothing is to be
/// written, `dryRun`.
[[nodiscard]] Json reportHead(const XmlFile& file, const char* status, const WriteArguments& write);

/// Adds lines for the user: on the error stream when the output is the method itself.
void tell(const XmlFile& file, Outcome& outcome, const std::string& lines);

}  // namespace vrn::cli
