#include "conformance/posix/Peer.h"

#include <libxml/c14n.h>
#include <libxml/parser.h>

namespace vrn::test {

namespace {

void collect(const xmlNode* node, std::vector<const xmlNode*>& elements) {
    for (; node != nullptr; node = node->next) {
        if (node->type == XML_ELEMENT_NODE) {
            elements.push_back(node);
            collect(node->children, elements);
        }
    }
}

// An element is asked about itself; everything else about the element that has it.
int isSelected(void* selection, xmlNode* node, xmlNode* parent) {
    const auto* const element = node->type == XML_ELEMENT_NODE ? node : parent;
    const bool isElement = element != nullptr && element->type == XML_ELEMENT_NODE;
    return (*static_cast<const PeerSelection*>(selection))(isElement ? element : nullptr) ? 1 : 0;
}

void ignore(void* /*context*/, const char* /*format*/, ...) {}

}  // namespace

PeerDocument peerDocument(const std::string& text) {
    constexpr int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_IGNORE_ENC |
                            XML_PARSE_HUGE | XML_PARSE_NOENT;
    auto* const parser = xmlNewParserCtxt();
    auto* const read = xmlCtxtReadMemory(parser, text.data(), static_cast<int>(text.size()), nullptr, "UTF-8", options);
    // Faults of namespaces alone still give a document. That their names are URIs nobody else asks for.
    const bool isGood = read != nullptr && parser->wellFormed != 0 &&
                        (parser->nsWellFormed != 0 || parser->lastError.code == XML_WAR_NS_URI);
    xmlFreeParserCtxt(parser);
    PeerDocument document(read, xmlFreeDoc);
    return isGood ? std::move(document) : PeerDocument(nullptr, xmlFreeDoc);
}

std::vector<const xmlNode*> peerElements(const xmlDoc& document) {
    std::vector<const xmlNode*> elements;
    collect(document.children, elements);
    return elements;
}

bool isWithin(const xmlNode* element, const xmlNode* ancestor) noexcept {
    while (element != nullptr && element != ancestor) {
        element = element->parent;
    }
    return element != nullptr;
}

std::optional<std::string> peerCanonicalForm(xmlDoc& document, const PeerSelection& selection) {
    const std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> bytes(xmlBufferCreate(), xmlBufferFree);
    auto* const output = xmlOutputBufferCreateBuffer(bytes.get(), nullptr);
    const int size = xmlC14NExecute(&document, selection ? isSelected : nullptr, const_cast<PeerSelection*>(&selection),
                                    XML_C14N_EXCLUSIVE_1_0, nullptr, 0, output);
    xmlOutputBufferClose(output);
    if (size < 0) {
        return std::nullopt;
    }
    return std::string(reinterpret_cast<const char*>(xmlBufferContent(bytes.get())),
                       static_cast<std::size_t>(xmlBufferLength(bytes.get())));
}

void silencePeer() { xmlSetGenericErrorFunc(nullptr, ignore); }

}  // namespace vrn::test
