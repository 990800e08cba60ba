// Prints what the editor makes of variants of documents, a line each, so that the answers of two systems can be compared: of the
// bytes taken for a text, of the file that they would be, and of the signature.
//   variants lines COUNT SEED FILE...    the parser's limits, then the variants of the seeds from SEED on
//   variants show SEED FILE...           the bytes of one
#include <iostream>

#include "conformance/Reading.h"
#include "conformance/Variants.h"
#include "errors/Error.h"
#include "method/Verification.h"
#include "text/TextFile.h"

namespace vrn::test {
namespace {

std::string signatureOf(const xml::Document& document) {
    try {
        method::EditorState state;
        state.domMethod = document;
        const auto result = method::VerifyLoadedMethod(state);
        return std::to_string(result.code) + " (" + result.errorText + ")";
    } catch (const errors::Error& error) {
        return "error " + std::to_string(error.number()) + " (" + error.description() + ")";
    }
}

std::string reportOnText(const std::string& text) {
    const auto document = documentOf(text);
    const auto report = reportOn(document);
    return verdictOf(document) == Verdict::Accepted ? report + ", signature " + signatureOf(document) : report;
}

std::string reportOnFile(const std::string& bytes) {
    try {
        const auto text = text::decodeXmlFile(bytes);
        return text == bytes ? "the same" : reportOnText(text);
    } catch (const errors::Error& error) {
        return error.description();
    }
}

void print(const std::string& name, const Variant& variant) {
    std::cout << name << " (" << variant.kind << ", " << fingerprint(variant.bytes)
              << "): " << reportOnText(variant.bytes) << "; as a file: " << reportOnFile(variant.bytes) << "\n";
}

std::vector<std::string> filesOf(const std::vector<std::string>& names) {
    std::vector<std::string> files;
    for (const auto& name : names) {
        files.push_back(bytesOf(name));
    }
    return files;
}

int run(const std::vector<std::string>& arguments) {
    const bool showsOne = arguments.size() > 2 && arguments[0] == "show";
    if (!showsOne && (arguments.size() < 4 || arguments[0] != "lines")) {
        std::cerr << "usage: variants lines COUNT SEED FILE... | variants show SEED FILE...\n";
        return 2;
    }
    const auto files = filesOf({arguments.begin() + (showsOne ? 2 : 3), arguments.end()});
    const auto first = std::stoull(arguments[showsOne ? 1 : 2]);
    if (showsOne) {
        std::cout << variant(files, first).bytes;
        return 0;
    }
    for (const auto& limit : limits()) {
        print("limit", limit);
    }
    for (auto seed = first; seed < first + std::stoull(arguments[1]); ++seed) {
        print("seed " + std::to_string(seed), variant(files, seed));
    }
    return 0;
}

}  // namespace
}  // namespace vrn::test

int main(int argc, char** argv) {
    try {
        return vrn::test::run({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
