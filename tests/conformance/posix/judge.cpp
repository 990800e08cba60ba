// Holds what the editor's parser makes of the suite against the suite's own answers and against libxml2: its verdict, and its
// exclusive canonical form byte by byte. An answer that is not the suite's needs a rule here that says why.
//   judge FOLDER
#include <iostream>
#include <map>

#include "conformance/Reading.h"
#include "conformance/Suite.h"
#include "conformance/posix/Peer.h"
#include "errors/Error.h"
#include "text/Unicode.h"
#include "xml/Canonical.h"

namespace vrn::test {
namespace {

// Why an answer may differ from the suite's. Empty: it may not.
std::string_view ruleFor(const ConformanceCase& test, Verdict verdict) {
    if (verdict == Verdict::HasDoctype) {
        return "a document type declaration is refused, whatever else is there";
    }
    if (test.version == "1.1") {
        return "XML 1.1 is not read as such: its documents are judged by the rules of 1.0";
    }
    if (test.type == "error") {
        return "a processor may report these errors or not";
    }
    if (!test.namespaces) {
        return "the document breaks the rules for namespaces, which always hold";
    }
    if (!test.edition.empty()) {
        return "names have the letters of the fourth edition of XML 1.0";
    }
    return {};
}

bool isWellFormed(const ConformanceCase& test) { return test.type == "valid" || test.type == "invalid"; }

// The peer keeps layout white space; what the editor drops goes first.
void dropLayout(xmlNode* node) {
    for (auto* child = node->children; child != nullptr;) {
        auto* const next = child->next;
        if (child->type == XML_TEXT_NODE && xmlIsBlankNode(child) != 0) {
            xmlUnlinkNode(child);
            xmlFreeNode(child);
        } else if (child->type == XML_ELEMENT_NODE) {
            dropLayout(child);
        }
        child = next;
    }
}

// The editor keeps white space that was written with references, of which the peer's tree says nothing: without it here.
void dropLayout(const xml::Node& node) {
    for (const auto& child : node.childNodes()) {
        if (child.kind() == xml::NodeKind::Text && text::trimXmlSpace(child.text()).empty()) {
            node.removeChild(child);
        } else if (child.kind() == xml::NodeKind::Element) {
            dropLayout(child);
        }
    }
}

class Judge {
  public:
    void judge(const ConformanceCase& test) {
        std::string text;
        try {
            text = textOf(test.file);
        } catch (const errors::Error&) {
            return count(test, isWellFormed(test) ? "the encoding is not one that the tool reads" : "");
        }
        const auto document = documentOf(text);
        const auto verdict = verdictOf(document);
        const bool agrees = (verdict == Verdict::Accepted) == isWellFormed(test);
        const auto rule = agrees ? std::string_view() : ruleFor(test, verdict);
        if (!agrees && rule.empty()) {
            fault(test, isWellFormed(test) ? "is refused: " + document.parseError().reason : "is accepted");
        }
        count(test, rule);
        compareWithPeer(test, withoutDoctype(text));
    }

    [[nodiscard]] int summary() const {
        for (const auto& [rule, number] : counts_) {
            std::cout << number << "  " << (rule.empty() ? "as the suite says" : "otherwise: " + rule) << "\n";
        }
        std::cout << compared_ << "  compared with libxml2, " << canonical_ << " canonical forms the same\n"
                  << faults_ << "  faults\n";
        return faults_ == 0 && canonical_ > 0 ? 0 : 1;
    }

  private:
    void count(const ConformanceCase& /*test*/, std::string_view rule) { ++counts_[std::string(rule)]; }
    void fault(const ConformanceCase& test, const std::string& what) {
        ++faults_;
        std::cout << test.id << " (" << test.file.string() << ", " << test.type << ") " << what << "\n";
    }

    void compareWithPeer(const ConformanceCase& test, const std::string& text) {
        if (test.version == "1.1" || !test.edition.empty() || test.type == "error") {
            return;  // the peer reads the names of the fifth edition, and reports other errors of those that may be reported
        }
        const auto peer = peerDocument(text);
        const auto document = documentOf(text);
        ++compared_;
        if ((peer != nullptr) != (verdictOf(document) == Verdict::Accepted)) {
            fault(test, peer ? "is refused without its document type: " + document.parseError().reason
                             : "is accepted without its document type, but not by libxml2");
        } else if (peer) {
            compareCanonicalForms(test, *peer, document);
        }
    }

    void compareCanonicalForms(const ConformanceCase& test, xmlDoc& peer, const xml::Document& document) {
        dropLayout(reinterpret_cast<xmlNode*>(&peer));
        dropLayout(document.documentElement());
        const auto expected = peerCanonicalForm(peer);
        if (expected && *expected != xml::exclusiveCanonicalForm(document.node())) {
            fault(test, "has another canonical form than with libxml2");
        } else if (expected) {
            ++canonical_;
        }
    }

    std::map<std::string, int> counts_;
    int compared_ = 0;
    int canonical_ = 0;
    int faults_ = 0;
};

}  // namespace

}  // namespace vrn::test

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: judge FOLDER\n";
        return 2;
    }
    vrn::test::silencePeer();
    try {
        vrn::test::Judge judge;
        for (const auto& test : vrn::test::conformanceCases(argv[1])) {
            judge.judge(test);
        }
        return judge.summary();
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
