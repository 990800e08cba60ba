#include "conformance/Reading.h"

#include <fstream>
#include <sstream>

#include "errors/Error.h"
#include "services/Digest.h"
#include "text/TextFile.h"
#include "xml/Canonical.h"

namespace vrn::test {

namespace {

void addPlaces(const xml::Node& parent, std::string& places) {
    for (const auto& node : parent.childNodes()) {
        const auto place = node.position();
        places += std::to_string(place.line) + ":" + std::to_string(place.column) + "\n";
        if (node.kind() == xml::NodeKind::Element) {
            addPlaces(node, places);
        }
    }
}

}  // namespace

std::string bytesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw errors::Error(errors::number::invalidProcedureCall, "cannot read " + file.string());
    }
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return bytes.str();
}

std::string textOf(const std::filesystem::path& file) { return text::decodeXmlFile(bytesOf(file)); }

xml::Document documentOf(const std::string& text) {
    xml::Document document;
    document.loadXML(text);
    return document;
}

Verdict verdictOf(const xml::Document& document) {
    switch (document.parseError().errorCode) {
        case 0:
            return Verdict::Accepted;
        case xml::ParseError::dtdProhibited:
            return Verdict::HasDoctype;
        default:
            return Verdict::Refused;
    }
}

std::string reportOn(const xml::Document& document) {
    if (verdictOf(document) == Verdict::Accepted) {
        std::string places;
        addPlaces(document.node(), places);
        return "accepted, tree " + fingerprint(document.xml() + "\n" + places) + ", canonical form " +
               fingerprint(xml::exclusiveCanonicalForm(document.node()));
    }
    const auto& error = document.parseError();
    return "refused, " + std::to_string(error.errorCode) + " (" + error.reason + ") at " + std::to_string(error.line) +
           ":" + std::to_string(error.linepos) + ", offset " + std::to_string(error.filepos) + ", line " +
           fingerprint(error.srcText);
}

std::string fingerprint(const std::string& text) {
    constexpr std::size_t enough = 12;
    return services::base64(services::sha256(text)).substr(0, enough);
}

}  // namespace vrn::test
