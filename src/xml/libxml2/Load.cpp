// The parse goes through SAX hooks around libxml2's own tree builder: layout white space never becomes a node, a CDATA section
// stays apart from its neighbours, and what could cost more than linear time is refused.
#include "xml/libxml2/Load.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "text/Unicode.h"
#include "xml/Prolog.h"
#include "xml/libxml2/Tree.h"

namespace vrn::xml {

namespace {

// libxml2 compares each attribute of an element with every other, each namespace prefix with all in scope, climbs to the
// declaring ancestor for every element in a namespace, and its table of names stops growing. Real documents stay far below
// these limits; hostile ones stay linear.
constexpr int maximumDepth = 1000;
constexpr int maximumAttributes = 1000;
constexpr int maximumDeclarations = 1000;
constexpr int maximumNames = 100000;
// While a start tag is still being read its attributes show only as the size of the parser's table: five entries for
// each, and room for as many again after it grew.
constexpr int maximumAttributeTable = 2 * (5 * maximumAttributes + 5);

// "Entities replaced" is about the five that XML itself has, since a DTD is refused: without it their references in namespace
// names stay half read.
constexpr int parserOptions =
    XML_PARSE_HUGE | XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_IGNORE_ENC | XML_PARSE_COMPACT;

struct FreeParser {
    void operator()(xmlParserCtxt* parser) const noexcept {
        if (parser->myDoc != nullptr) {
            xmlFreeDoc(parser->myDoc);
        }
        xmlFreeParserCtxt(parser);
    }
};
using Parser = std::unique_ptr<xmlParserCtxt, FreeParser>;

// What one parse knows beside libxml2's context.
struct Load {
    explicit Load(std::string_view wholeText) : text(wholeText) {}

    std::string_view text;
    std::size_t readUpTo = 0;
    xmlParserCtxt* parser = nullptr;

    // White space that opens a run of character data, until it is known whether more than white space follows.
    std::string pending;
    const xmlNode* pendingParent = nullptr;
    const xmlNode* pendingAfter = nullptr;

    bool failed = false;
    bool outOfMemory = false;
    int code = 0;
    std::size_t offset = 0;
    std::string reason;

    void fail(int errorCode, const char* message) noexcept;
};

Load& loadOf(void* context) { return *static_cast<Load*>(static_cast<xmlParserCtxt*>(context)->_private); }

std::size_t offsetOf(const xmlParserCtxt& parser) noexcept {
    const xmlParserInput* const input = parser.input;
    return input == nullptr ? 0 : input->consumed + static_cast<std::size_t>(input->cur - input->base);
}

// Notes the first error only.
void Load::fail(int errorCode, const char* message) noexcept {
    if (errorCode == XML_ERR_NO_MEMORY) {
        outOfMemory = true;
    }
    if (failed) {
        return;
    }
    failed = true;
    code = errorCode;
    offset = std::min(offsetOf(*parser), text.size());
    try {
        reason = message == nullptr ? "" : message;
    } catch (const std::bad_alloc&) {
        outOfMemory = true;
    }
}

void stop(Load& load, int code, const char* message) noexcept {
    load.fail(code, message);
    xmlStopParser(load.parser);
}

int readText(void* context, char* buffer, int length) {
    Load& load = *static_cast<Load*>(context);
    if (load.parser->maxatts > maximumAttributeTable || load.parser->nsNr > 2 * maximumDeclarations) {
        load.fail(XML_ERR_ATTRIBUTE_NOT_FINISHED, "Too many attributes in one element");
    }
    if (xmlDictSize(load.parser->dict) > maximumNames) {
        load.fail(XML_ERR_NAME_TOO_LONG, "Too many different names");
    }
    if (load.failed) {
        return 0;
    }
    const std::size_t count = std::min(static_cast<std::size_t>(length), load.text.size() - load.readUpTo);
    std::memcpy(buffer, load.text.data() + load.readUpTo, count);
    load.readUpTo += count;
    return static_cast<int>(count);
}

bool isBlank(const xmlChar* characters, int length) noexcept {
    return std::all_of(characters, characters + length,
                       [](xmlChar c) { return text::isXmlSpace(static_cast<char>(c)); });
}

// Whether one blank handed over was written as a character reference. Raw text comes either straight from the input buffer or
// from a buffer of the parser's own, and then the input stands right behind its last byte; a reference ends with ";".
bool isReference(const xmlParserInput& input, const xmlChar* characters, int length) noexcept {
    const bool inInput = characters >= input.base && characters < input.end;
    return !inInput && length == 1 && input.cur > input.base && input.cur[-1] == ';';
}

void addCharacters(Load& load, const xmlChar* characters, int length) {
    const xmlNode* const parent = load.parser->node;
    if (parent == nullptr) {
        return;
    }
    const xmlNode* const last = parent->last;
    // A text at the end of the open element is this very run: any other markup would stand behind it.
    if (last == nullptr || last->type != XML_TEXT_NODE) {
        if (load.pendingParent != parent || load.pendingAfter != last) {
            load.pending.clear();
        }
        if (isBlank(characters, length) && !isReference(*load.parser->input, characters, length)) {
            load.pending.append(reinterpret_cast<const char*>(characters), static_cast<std::size_t>(length));
            load.pendingParent = parent;
            load.pendingAfter = last;
            return;
        }
        if (!load.pending.empty()) {
            xmlSAX2Characters(load.parser, tree::chars(load.pending.c_str()), static_cast<int>(load.pending.size()));
            load.pending.clear();
        }
    }
    xmlSAX2Characters(load.parser, characters, length);
}

void onCharacters(void* context, const xmlChar* characters, int length) {
    Load& load = loadOf(context);
    try {
        addCharacters(load, characters, length);
    } catch (const std::bad_alloc&) {
        stop(load, XML_ERR_NO_MEMORY, nullptr);
    }
}

// libxml2 would join a section to the one before it, copying that one each time.
void onCData(void* context, const xmlChar* content, int length) {
    Load& load = loadOf(context);
    xmlParserCtxt& parser = *load.parser;
    if (parser.node == nullptr) {
        return;
    }
    xmlNode* const section = xmlNewCDataBlock(parser.myDoc, content, length);
    if (section == nullptr) {
        stop(load, XML_ERR_NO_MEMORY, nullptr);
        return;
    }
    section->line = static_cast<unsigned short>(std::min(parser.input->line, USHRT_MAX));
    tree::link(section, parser.node, nullptr);
}

void onStartElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri, int namespaceCount,
                    const xmlChar** namespaces, int attributeCount, int defaultedCount, const xmlChar** attributes) {
    Load& load = loadOf(context);
    if (load.parser->nodeNr >= maximumDepth) {
        stop(load, XML_ERR_INTERNAL_ERROR, "Excessive depth in document");
        return;
    }
    if (attributeCount > maximumAttributes || load.parser->nsNr > 2 * maximumDeclarations) {
        stop(load, XML_ERR_ATTRIBUTE_NOT_FINISHED, "Too many attributes in one element");
        return;
    }
    xmlSAX2StartElementNs(context, name, prefix, uri, namespaceCount, namespaces, attributeCount, defaultedCount,
                          attributes);
}

// A DOCTYPE that the look at the prolog did not see.
void onInternalSubset(void* context, const xmlChar* /*name*/, const xmlChar* /*externalId*/,
                      const xmlChar* /*systemId*/) {
    stop(loadOf(context), ParseError::dtdProhibited, "DTD is prohibited.");
}

void onError(void* context, xmlError* error) {
    const bool fatal = error->level == XML_ERR_FATAL || error->code == XML_ERR_NO_MEMORY;
    // A namespace may be named by anything; libxml2 only frowns at what is no URI.
    const bool badNamespace =
        error->level == XML_ERR_ERROR && error->domain == XML_FROM_NAMESPACE && error->code != XML_WAR_NS_URI;
    if (context == nullptr || !(fatal || badNamespace)) {
        return;
    }
    Load& load = loadOf(context);
    load.fail(error->code, error->message);
    // Nothing behind the first error matters, and some errors cost as much as all the text before them. This state is what
    // the parser looks at; stopping it by a call would free the buffer that it is just reading.
    load.parser->instate = XML_PARSER_EOF;
    load.parser->disableSAX = 1;
}

void installHooks(xmlSAXHandler& sax) {
    sax.characters = onCharacters;
    sax.ignorableWhitespace = onCharacters;
    sax.cdataBlock = onCData;
    sax.startElementNs = onStartElement;
    sax.internalSubset = onInternalSubset;
    sax.serror = onError;
}

Parser makeParser(Load& load) {
    Parser parser(xmlNewParserCtxt());
    if (parser == nullptr) {
        throw std::bad_alloc();
    }
    xmlCtxtUseOptions(parser.get(), parserOptions);
    installHooks(*parser->sax);
    parser->_private = &load;
    parser->loadsubset |= XML_SKIP_IDS;  // a table of identifiers would cost without serving anyone
    // An encoding that is known already keeps the parser from guessing one.
    parser->encoding = xmlStrdup(tree::chars("UTF-8"));
    load.parser = parser.get();
    xmlParserInputBuffer* const buffer = xmlParserInputBufferCreateIO(readText, nullptr, &load, XML_CHAR_ENCODING_NONE);
    xmlParserInput* const input =
        buffer == nullptr ? nullptr : xmlNewIOInputStream(parser.get(), buffer, XML_CHAR_ENCODING_NONE);
    if (input == nullptr) {
        xmlFreeParserInputBuffer(buffer);
        throw std::bad_alloc();
    }
    if (inputPush(parser.get(), input) < 0) {
        xmlFreeInputStream(input);
        throw std::bad_alloc();
    }
    return parser;
}

// The declaration is no node to libxml2.
void addDeclaration(xmlDoc* doc, std::string_view data) {
    xmlNode* const node = xmlNewDocPI(doc, tree::chars("xml"), nullptr);
    if (node == nullptr) {
        throw std::bad_alloc();
    }
    tree::link(node, tree::asNode(doc), doc->children);
    tree::setContent(node, data);
}

tree::DocPtr parse(Load& load) {
    const tree::QuietErrors quiet;
    const Parser parser = makeParser(load);
    xmlParseDocument(parser.get());
    if (load.outOfMemory) {
        throw std::bad_alloc();
    }
    if (parser->wellFormed == 0 && !load.failed) {
        load.fail(parser->errNo, parser->lastError.message);
    }
    if (load.failed) {
        return nullptr;
    }
    if (const auto data = declarationData(load.text)) {
        addDeclaration(parser->myDoc, *data);
    }
    return tree::DocPtr(std::exchange(parser->myDoc, nullptr));
}

}  // namespace

tree::DocPtr parseText(std::string_view text, ParseError& error) {
    tree::initialise();
    if (const auto doctype = findDoctype(text)) {
        error = parseErrorAt(text, *doctype, ParseError::dtdProhibited, "DTD is prohibited.");
        return nullptr;
    }
    if (text.size() > INT_MAX) {
        error = parseErrorAt(text.substr(0, 1), 0, XML_ERR_INTERNAL_ERROR, "The text is too long");
        return nullptr;
    }
    // libxml2 takes a NUL for the end of the text. What stands before it may hold an earlier error.
    const std::size_t end = std::min(text.find('\0'), text.size());
    Load load(text.substr(0, end));
    tree::DocPtr doc = parse(load);
    if (end < text.size() && (doc != nullptr || load.offset >= end)) {
        error = parseErrorAt(text, end, XML_ERR_INVALID_CHAR, "Char 0x0 out of allowed range");
        doc.reset();
    } else if (doc == nullptr) {
        error = parseErrorAt(text, load.offset, load.code, load.reason);
    }
    return doc;
}

}  // namespace vrn::xml
