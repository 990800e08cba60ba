// MSXML parses what `SourceReader` makes of a text. For the record of an error it parses the text again as it was written, so
// that lines and positions are those of the author.
#include "xml/msxml/Load.h"

#include <algorithm>
#include <climits>
#include <optional>

#include "text/Unicode.h"
#include "xml/Prolog.h"
#include "xml/TextFile.h"
#include "xml/msxml/SourceReader.h"

namespace vrn::xml {

using com::Bstr;
using com::ComPtr;
using tree::NodePtr;

namespace {

// Codes and reasons as MSXML itself has them.
constexpr int invalidCharacter = -1072896760;
constexpr std::string_view invalidCharacterReason = "An invalid character was found in text content.";

std::size_t firstInvalid(std::string_view text) {
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::size_t offset = text.size() - rest.size();
        const char32_t c = text::takeCodePoint(rest);
        if (c == text::invalidCodePoint || !text::isXmlCharacter(c)) {
            return offset;
        }
    }
    return text.size();
}

bool isEncodingName(std::string_view name) noexcept {
    return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '_' ||
               c == '-';
    });
}

// The encoding that a declaration names says nothing about text in memory, and MSXML refuses what it does not agree with. Blanks
// in its place leave all positions as they are.
std::string withoutEncoding(std::string_view text) {
    std::string out(text);
    const std::string encoding = declaredEncoding(text);
    const auto data = declarationData(text);
    if (!data || !isEncodingName(encoding)) {
        return out;
    }
    const std::size_t name = data->find("encoding");
    const std::size_t value = data->find(encoding, name + std::string_view("encoding").size());
    const auto start = static_cast<std::size_t>(data->data() - text.data()) + name;
    const std::size_t length = value + encoding.size() + 1 - name;
    return out.replace(start, length, length, ' ');
}

bool loads(IXMLDOMDocument2& document, std::string_view text) {
    VARIANT_BOOL loaded = VARIANT_FALSE;
    const Bstr wide(text);
    const auto lock = tree::lockParser();
    const HRESULT result = document.loadXML(wide.get(), &loaded);
    if (result == E_OUTOFMEMORY) {
        com::throwFailure(result);
    }
    return SUCCEEDED(result) && loaded == VARIANT_TRUE;
}

// A system may leave out where the error is; the record has zeros then.
ParseError recordOf(IXMLDOMDocument2& document, std::string_view text) {
    ComPtr<IXMLDOMParseError> told;
    com::require(document.get_parseError(&told));
    LONG code = 0;
    LONG filepos = 0;
    LONG line = 0;
    LONG linepos = 0;
    Bstr reason;
    told->get_errorCode(&code);
    told->get_reason(reason.put());
    told->get_filepos(&filepos);
    told->get_line(&line);
    told->get_linepos(&linepos);
    ParseError error = parseErrorAt(text, 0, code == 0 ? E_FAIL : code, reason.utf8());
    if (line <= 0) {
        error.line = error.linepos = 0;
        error.srcText.clear();
        return error;
    }
    Bstr source;
    told->get_srcText(source.put());
    error.filepos = filepos;
    error.line = line;
    error.linepos = linepos;
    error.srcText = source.utf8();
    error.srcText.erase(std::min(error.srcText.find_first_of("\r\n"), error.srcText.size()));
    return error;
}

ParseError recordFor(std::string_view text, const std::optional<SourceReader::Refusal>& refusal) {
    const ComPtr<IXMLDOMDocument2> document = newMsxmlDocument();
    if (!loads(*document.Get(), withoutEncoding(text))) {
        return recordOf(*document.Get(), text);
    }
    return refusal ? parseErrorAt(text, refusal->offset, refusal->code, refusal->reason)
                   : parseErrorAt(text, 0, E_FAIL, "The text cannot be read");
}

// What MSXML makes of the declaration gives way to what was written.
void keepDeclaration(tree::Tree& tree, std::string_view data) {
    IXMLDOMDocument2* const document = tree.document.Get();
    NodePtr first = tree::firstChild(document);
    if (first != nullptr && tree::typeOf(first.Get()) == NODE_PROCESSING_INSTRUCTION &&
        tree::nameOf(first.Get()) == "xml") {
        tree::remove(document, first.Get());
        first = tree::firstChild(document);
    }
    ComPtr<IXMLDOMProcessingInstruction> declaration;
    com::require(
        document->createProcessingInstruction(Bstr(tree::declarationTarget).get(), Bstr(data).get(), &declaration));
    tree::insert(tree, declaration.Get(), document, first.Get());
}

}  // namespace

bool parseText(std::string_view text, tree::Tree& tree, ParseError& error) {
    if (const auto doctype = findDoctype(text)) {
        error = parseErrorAt(text, *doctype, ParseError::dtdProhibited, "DTD is prohibited.");
        return false;
    }
    if (text.size() > INT_MAX / sizeof(wchar_t)) {
        error = parseErrorAt(text.substr(0, 1), 0, E_FAIL, "The text is too long");
        return false;
    }
    if (const std::size_t invalid = firstInvalid(text); invalid < text.size()) {
        error = parseErrorAt(text, invalid, invalidCharacter, invalidCharacterReason);
        return false;
    }
    const SourceReader source(text);
    if (source.isCostly()) {
        error = parseErrorAt(text, source.refusal()->offset, source.refusal()->code, source.refusal()->reason);
        return false;
    }
    if (source.refusal() || !loads(*tree.document.Get(), withoutEncoding(source.withoutLayout()))) {
        error = recordFor(text, source.refusal());
        return false;
    }
    tree.depthBound = source.depth();
    if (const auto data = declarationData(text)) {
        keepDeclaration(tree, *data);
    }
    return true;
}

}  // namespace vrn::xml
