#include "hosts/activex/control/DocumentArgument.h"

#include <msxml.h>

#include <string_view>

#include "com/Dispatch.h"
#include "hosts/activex/control/Errors.h"

namespace vrn::activex {

namespace {

// The same for all versions of MSXML.
constexpr IID nodeInterface{0x2933BF80, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

void requireNode(HRESULT result, IXMLDOMNode* node) {
    if (FAILED(result)) {
        com::throwFailure(result, node, &nodeInterface);
    }
}

bool isDeclaration(IXMLDOMNode* node) {
    DOMNodeType type = NODE_INVALID;
    com::Bstr name;
    return SUCCEEDED(node->get_nodeType(&type)) && type == NODE_PROCESSING_INSTRUCTION &&
           SUCCEEDED(node->get_nodeName(name.put())) && name.view() == L"xml";
}

// The text of a document does not tell which encoding its declaration names; the declaration's own node does. Without it a
// method would seem changed as soon as it is loaded.
std::string withFullDeclaration(std::string text, IXMLDOMNode* node) {
    com::ComPtr<IXMLDOMNode> first;
    com::Variant data;
    if (node->get_firstChild(&first) != S_OK || !isDeclaration(first.Get()) ||
        first->get_nodeValue(data.put()) != S_OK || data.get().vt != VT_BSTR) {
        return text;
    }
    constexpr std::string_view opening = "<?xml ";
    constexpr std::string_view closing = "?>";
    const auto end = text.starts_with(opening) ? text.find(closing) : std::string::npos;
    const auto rest = end == std::string::npos ? 0 : end + closing.size();
    return std::string(opening) + com::textOf(data) + std::string(closing) + text.substr(rest);
}

std::string textOfNode(IXMLDOMNode* node) {
    VARIANT_BOOL hasChildren = VARIANT_FALSE;
    requireNode(node->hasChildNodes(&hasChildren), node);
    if (hasChildren == VARIANT_FALSE) {
        return {};
    }
    com::Bstr text;
    requireNode(node->get_xml(text.put()), node);
    return withFullDeclaration(text.utf8(), node);
}

}  // namespace

std::string documentText(IDispatch* node, const char* name) {
    if (node == nullptr) {
        return {};
    }
    com::ComPtr<IXMLDOMNode> known;
    if (SUCCEEDED(node->QueryInterface(nodeInterface, &known))) {
        return textOfNode(known.Get());
    }
    const com::Object object{com::ComPtr<IDispatch>(node)};
    if (!object.has(L"hasChildNodes") || !object.has(L"xml")) {
        fail(DISP_E_TYPEMISMATCH, std::string("The argument ") + name + " is neither an XML document nor a node.");
    }
    return com::truthOf(object.read(L"hasChildNodes")) ? com::textOf(object.read(L"xml")) : std::string();
}

}  // namespace vrn::activex
