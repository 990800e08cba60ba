// Prints what the editor's parser makes of every document of the suite, a line each, so that the answers of two systems can be
// compared: the whole document, and the document without its document type declaration.
//   conformance FOLDER
#include <iostream>

#include "conformance/Reading.h"
#include "conformance/Suite.h"
#include "errors/Error.h"

namespace vrn::test {
namespace {

std::string line(const ConformanceCase& test) {
    try {
        const auto text = textOf(test.file);
        return reportOn(documentOf(text)) + "; " + reportOn(documentOf(withoutDoctype(text)));
    } catch (const errors::Error& error) {
        return "undecodable: " + error.description();
    }
}

}  // namespace
}  // namespace vrn::test

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: conformance FOLDER\n";
        return 2;
    }
    try {
        for (const auto& test : vrn::test::conformanceCases(argv[1])) {
            std::cout << test.id << ": " << vrn::test::line(test) << "\n";
        }
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
    return 0;
}
