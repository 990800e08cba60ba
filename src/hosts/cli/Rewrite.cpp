#include "hosts/cli/Rewrite.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <utility>

#include "method/Verification.h"
#include "text/TextFile.h"

namespace vrn::cli {

namespace {

// Encodings and line ends may change a text: what counts is what the next reader gets.
void requireIntact(Engine& engine, const XmlFile& file, std::string_view bytes) {
    auto& method = engine.state().domMethod;
    method = xml::Document();
    const bool readable = method.loadXML(text::decodeXmlFile(bytes));
    if (!readable || method::VerifyLoadedMethod(engine.state()).code != 0) {
        throw Fault(displayName(file.path) +
                    ": would not verify in the encoding that it declares; nothing was written");
    }
}

}  // namespace

void FilesInUse::add(const std::string& path) {
    if (auto identity = path == standardInput ? system::identityOfInput() : system::identityOf(path);
        !identity.empty()) {
        identities_.insert(std::move(identity));
    }
}

void FilesInUse::add(const std::vector<std::string>& paths) {
    for (const auto& path : paths) {
        add(path);
    }
}

void FilesInUse::requireFree(const std::string& path, const std::string& shown, const std::string& what) const {
    if (identities_.contains(system::identityOf(path))) {
        throw Fault(displayName(shown) + ": " + what +
                    " would replace a file that this call uses; nothing was written");
    }
}

MethodToWrite readMethod(const std::string& path, const Console& console, const WriteArguments& write) {
    MethodToWrite method;
    if (!write.dryRun && path != standardInput) {
        method.claim = system::claimFile(path);
    }
    method.bytes = readFile(path, console);
    static_cast<XmlFile&>(method) = xmlFileOf(path, method.bytes, "Method");
    return method;
}

void requireWritable(const MethodToWrite& file, const WriteArguments& write) {
    if (file.path == standardInput) {
        return;
    }
    if (!write.backupSuffix.empty()) {
        if (std::filesystem::path("x" + write.backupSuffix).has_parent_path()) {
            throw Fault("'" + printable(write.backupSuffix) + "' is no suffix: it leads to another folder");
        }
        write.inUse->requireFree(system::backupOf(file.path, write.backupSuffix), file.path + write.backupSuffix,
                                 "the backup");
    }
    system::requireReplaceable(file.path, write.backupSuffix);
}

void writeBack(Engine& engine, const MethodToWrite& file, const xml::Document& method, const WriteArguments& write,
               Outcome& outcome) {
    auto bytes = bytesFor(file, method);
    requireIntact(engine, file, bytes);
    if (write.dryRun) {
        return;
    }
    if (file.path == standardInput) {
        outcome.method += bytes;
    } else {
        requireWritable(file, write);
        system::replaceFile(file.path, bytes, write.backupSuffix, file.bytes);
    }
}

void passThrough(const MethodToWrite& file, const WriteArguments& write, Outcome& outcome) {
    if (file.path == standardInput && !write.dryRun) {
        outcome.method = file.bytes;
    }
}

Json reportHead(const XmlFile& file, const char* status, const WriteArguments& write) {
    Json json = {{"file", displayName(file.path)}, {"status", status}};
    if (write.dryRun) {
        json["dryRun"] = true;
    }
    return json;
}

void report(const XmlFile& file, Outcome& outcome, const std::string& lines) {
    (file.path == standardInput ? outcome.err : outcome.out) += lines;
}

}  // namespace vrn::cli
