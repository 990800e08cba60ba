// Prints what the editor's parser makes of every document of the suite, a line each, so that the answers of two systems can be
// compared: the whole document, and the document without its document type declaration.
//   conformance FOLDER
#include <iostream>

#include "conformance/Suite.h"
#include "errors/Error.h"
#include "services/Digest.h"

namespace {

using vrn::test::Reading;
using vrn::test::Verdict;

std::string shown(const Reading& reading) {
    switch (reading.verdict) {
        case Verdict::Accepted:
            return "accepted " + vrn::services::base64(vrn::services::sha256(reading.canonical));
        case Verdict::HasDoctype:
            return "doctype";
        case Verdict::Refused:
            break;
    }
    return "refused (" + reading.reason + ")";
}

std::string line(const vrn::test::ConformanceCase& test) {
    try {
        const auto text = vrn::test::textOf(test.file);
        return shown(vrn::test::readingOf(text)) + "; " + shown(vrn::test::readingOf(vrn::test::withoutDoctype(text)));
    } catch (const vrn::errors::Error& error) {
        return "undecodable";
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: conformance FOLDER\n";
        return 2;
    }
    try {
        for (const auto& test : vrn::test::conformanceCases(argv[1])) {
            std::cout << test.id << ": " << line(test) << "\n";
        }
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
    return 0;
}
