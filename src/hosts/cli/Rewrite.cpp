#include "hosts/cli/Rewrite.h"

#include "hosts/cli/ExitStatus.h"
#include "hosts/cli/Names.h"
#include "hosts/cli/System.h"
#include "method/Verification.h"
#include "xml/TextFile.h"

namespace vrn::cli {

namespace {

// Encodings and line ends have their own ideas of a text: what counts is what the next reader gets.
void requireIntact(Engine& engine, const XmlFile& file, std::string_view bytes) {
    auto& method = engine.state().domMethod;
    method = xml::Document();
    const bool readable = method.loadXML(xml::decodeXmlFile(bytes));
    if (!readable || method::VerifyLoadedMethod(engine.state()).code != 0) {
        throw Fault(displayName(file.path) +
                    ": would not verify in the encoding that it declares; nothing was written");
    }
}

}  // namespace

void writeBack(Engine& engine, const XmlFile& file, const xml::Document& method, const WriteArguments& write,
               Outcome& outcome) {
    auto bytes = bytesFor(file, method);
    requireIntact(engine, file, bytes);
    if (write.dryRun) {
        return;
    }
    if (file.path == standardInput) {
        outcome.out += bytes;
    } else {
        system::replaceFile(file.path, bytes, write.backupSuffix);
    }
}

Json reportHead(const XmlFile& file, const char* status, const WriteArguments& write) {
    Json json = {{"file", displayName(file.path)}, {"status", status}};
    if (write.dryRun) {
        json["dryRun"] = true;
    }
    return json;
}

void tell(const XmlFile& file, Outcome& outcome, const std::string& lines) {
    (file.path == standardInput ? outcome.err : outcome.out) += lines;
}

}  // namespace vrn::cli
