// Holds canonical forms against libxml2's, byte by byte, for generated documents: of the whole, of the whole without an element as a
// signature is left out, and of single elements that inherit declarations. Each document, and each of these elements, must also have
// the same form after it was written and read again, and copied.
//   canonical COUNT SEED    the documents of the seeds from SEED on
#include <iostream>

#include "conformance/DocumentGenerator.h"
#include "conformance/Reading.h"
#include "conformance/posix/Peer.h"
#include "generator/Random.h"
#include "xml/Canonical.h"

namespace vrn::test {
namespace {

void collect(const xml::Node& parent, std::vector<xml::Node>& elements) {
    for (const auto& node : parent.childNodes()) {
        if (node.kind() == xml::NodeKind::Element) {
            elements.push_back(node);
            collect(node, elements);
        }
    }
}

class Comparison {
  public:
    void compare(std::uint64_t seed) {
        const auto generated = generatedDocument(seed);
        const auto document = documentOf(generated.text);
        const auto peer = peerDocument(generated.forPeer);
        seed_ = seed;
        ++documents_;
        if (verdictOf(document) != Verdict::Accepted) {
            return fault("is refused: " + document.parseError().reason, {}, generated.text);
        }
        if (peer == nullptr) {
            return fault("is refused by libxml2", {}, generated.forPeer);
        }
        const auto whole = xml::exclusiveCanonicalForm(document.node());
        expectEqual("the whole document", whole, peerCanonicalForm(*peer));
        comparePieces(document, *peer);
        const auto written = document.xml();
        const auto again = documentOf(written);
        expectEqual("written and read again", again.xml(), written);
        expectEqual("the canonical form of that", xml::exclusiveCanonicalForm(again.node()), whole);
        xml::Document copy;
        copy.load(document);
        expectEqual("a copy", copy.xml(), written);
        expectEqual("the canonical form of a copy", xml::exclusiveCanonicalForm(copy.node()), whole);
    }

    [[nodiscard]] int summary() const {
        std::cout << documents_ << " documents: " << forms_ << " canonical forms and writings compared, " << faults_
                  << " faults\n";
        return faults_ == 0 && forms_ > 0 ? 0 : 1;
    }

  private:
    void comparePieces(const xml::Document& document, xmlDoc& peer) {
        std::vector<xml::Node> elements;
        collect(document.node(), elements);
        const auto peers = peerElements(peer);
        if (peers.size() != elements.size()) {
            return fault("has another number of elements", std::to_string(elements.size()),
                         std::to_string(peers.size()));
        }
        samples::Random random(seed_);
        for (int i = 0; i < 3; ++i) {
            const auto chosen = random.below(elements.size());
            const auto what = "the element " + std::to_string(chosen);
            const auto own = xml::exclusiveCanonicalForm(elements[chosen]);
            const auto* const apex = peers[chosen];
            expectEqual(what, own,
                        peerCanonicalForm(peer, [apex](const xmlNode* element) { return isWithin(element, apex); }));
            const auto alone = documentOf(elements[chosen].xml());
            expectEqual(what + " on its own", xml::exclusiveCanonicalForm(alone.node()), own);
        }
        const auto name = elements[random.below(elements.size())].name();
        const auto omit = [&name](const xml::ElementView& element, int depth) {
            return depth == 2 && element.qualifiedName == name;
        };
        expectEqual(
            "the children " + name + " left out", xml::exclusiveCanonicalForm(document.node(), omit),
            peerCanonicalForm(peer, [&](const xmlNode* element) { return !isLeftOut(element, peers[0], name); }));
    }

    static bool isLeftOut(const xmlNode* element, const xmlNode* root, const std::string& name) {
        while (element != nullptr && element->parent != root) {
            element = element->parent;
        }
        if (element == nullptr) {
            return false;
        }
        const auto* const ns = element->ns;
        const std::string prefix =
            ns == nullptr || ns->prefix == nullptr ? "" : reinterpret_cast<const char*>(ns->prefix) + std::string(":");
        return prefix + reinterpret_cast<const char*>(element->name) == name;
    }

    void expectEqual(const std::string& what, const std::string& own, const std::optional<std::string>& others) {
        ++forms_;
        const auto expected = others ? withNamespaces(*others) : "refused";
        if (own != expected) {
            fault(what + " differs", own, expected);
        }
    }

    void fault(const std::string& what, const std::string& own, const std::string& expected) {
        constexpr int shownFaults = 5;
        if (++faults_ <= shownFaults) {
            std::cout << "seed " << seed_ << ": " << what << "\n  the editor's: " << own << "\n  expected: " << expected
                      << "\n  the document: " << generatedDocument(seed_).text << "\n";
        }
    }

    std::uint64_t seed_ = 0;
    int documents_ = 0;
    int forms_ = 0;
    int faults_ = 0;
};

}  // namespace
}  // namespace vrn::test

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: canonical COUNT SEED\n";
        return 2;
    }
    try {
        vrn::test::silencePeer();
        vrn::test::Comparison comparison;
        const auto first = std::stoull(argv[2]);
        for (auto seed = first; seed < first + std::stoull(argv[1]); ++seed) {
            comparison.compare(seed);
        }
        return comparison.summary();
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
