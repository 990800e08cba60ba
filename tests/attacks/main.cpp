// Makes variants of a signed method and verifies each as the editor does. What is accepted must read as the original does, and is
// written to a folder, so that another verifier can be asked about it: without layout white space, which the editor does
// not count, and in the encoding that it declares.
//   attacks METHOD COUNT SEED FOLDER
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>

#include "attacks/Mutator.h"
#include "conformance/Reading.h"
#include "errors/Error.h"
#include "method/MethodContent.h"
#include "services/EmbeddedSignatures.h"
#include "services/SignatureProfile.h"
#include "text/TextFile.h"
#include "xml/Canonical.h"

namespace {

using namespace vrn;

bool verifies(const xml::Document& document) {
    static services::EmbeddedSignatureV4 component;
    static const auto key = services::signatureKeyV4(component);
    return component.verify(document, key, "/Method");
}

// All that the signature is to cover, and all that the editor reads of it.
std::string meaningOf(const xml::Document& document) {
    const auto content = method::contentOf(document);
    std::string meaning = xml::exclusiveCanonicalForm(document.node(), [](const xml::ElementView& element, int depth) {
        return depth == 2 && services::isSignature(element);
    });
    meaning +=
        "\n" + content.version.value_or("none") + "\n" + content.description + "\n" + content.syringe.value_or("none");
    for (const auto& step : content.steps) {
        meaning += "\n" + step;
    }
    for (const auto& cycle : content.cycles) {
        meaning += "\n" + cycle.name;
        for (const auto& definition : cycle.definitions) {
            meaning += "\n" + definition;
        }
    }
    return meaning;
}

void write(const std::set<std::string>& texts, const std::filesystem::path& folder) {
    std::size_t number = 0;
    for (const auto& text : texts) {
        try {
            const auto bytes = text::encodeXmlFile(text);
            std::ofstream(folder / (std::to_string(number++) + ".xml"), std::ios::binary) << bytes;
        } catch (const errors::Error&) {
            // Its declaration names an encoding that nobody knows: there is no such file.
        }
    }
}

int attack(const std::string& original, std::size_t count, std::uint64_t seed, const std::filesystem::path& folder) {
    xml::Document document;
    if (!document.loadXML(original) || !verifies(document)) {
        std::cerr << "the method itself does not verify\n";
        return 1;
    }
    const auto meaning = meaningOf(document);
    test::Mutator mutator(original, seed);
    std::set<std::string> accepted;
    std::size_t refused = 0;
    std::size_t faults = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto variant = mutator.next();
        xml::Document changed;
        if (!changed.loadXML(variant) || !verifies(changed)) {
            ++refused;
        } else if (meaningOf(changed) != meaning) {
            ++faults;
            std::cout << "accepted, but reads otherwise:\n" << variant << "\n";
        } else {
            accepted.insert(changed.xml());
        }
    }
    write(accepted, folder);
    std::cout << count << " variants: " << refused << " refused, " << accepted.size()
              << " different ones accepted with the same content, " << faults << " faults\n";
    return faults == 0 && refused > 0 && !accepted.empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        std::cerr << "usage: attacks METHOD COUNT SEED FOLDER\n";
        return 2;
    }
    try {
        return attack(test::textOf(argv[1]), std::stoul(argv[2]), std::stoull(argv[3]), argv[4]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
