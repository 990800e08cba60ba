#include "hosts/sample/AuditView.h"

#include <array>
#include <functional>

#include "text/windows/Wide.h"

namespace vrn::sample {

namespace {

using Element = com::ComPtr<IXMLDOMElement>;

std::wstring attributeOf(IXMLDOMElement* element, const wchar_t* name) {
    com::Variant value;
    const com::Bstr attribute{std::wstring_view(name)};
    const bool there = element->getAttribute(attribute.get(), value.put()) == S_OK && value.get().vt == VT_BSTR;
    return there ? std::wstring(value.get().bstrVal, SysStringLen(value.get().bstrVal)) : std::wstring();
}

bool hasAttribute(IXMLDOMElement* element, const wchar_t* name) {
    com::ComPtr<IXMLDOMAttribute> node;
    const com::Bstr attribute{std::wstring_view(name)};
    return element->getAttributeNode(attribute.get(), &node) == S_OK && node != nullptr;
}

void forEachElement(IXMLDOMDocument* document, const wchar_t* path, const std::function<void(IXMLDOMElement*)>& use) {
    com::ComPtr<IXMLDOMNodeList> nodes;
    com::ComPtr<IXMLDOMNode> node;
    const com::Bstr query{std::wstring_view(path)};
    com::require(document->selectNodes(query.get(), &nodes));
    while (nodes->nextNode(node.ReleaseAndGetAddressOf()) == S_OK && node != nullptr) {
        if (Element element; SUCCEEDED(node->QueryInterface(IID_IXMLDOMElement, &element))) {
            use(element.Get());
        }
    }
}

struct Change {
    const wchar_t* path;
    const wchar_t* attribute;
    const wchar_t* caption;
};

constexpr std::array<Change, 3> singleChanges{{
    {L"MethodAuditTrail/Cycle", L"name", L"Cycle"},
    {L"MethodAuditTrail/Cycle", L"date", L"Date of the cycle"},
    {L"MethodAuditTrail/Syringe", L"size", L"Syringe"},
}};

}  // namespace

void AuditView::create(HWND parent, int id) {
    ListView::create(parent, id, L"Changes", {{L"What", 126}, {L"Before", 82}, {L"Now", 80}});
}

void AuditView::showNothing() const {
    clear();
    addRow({L"Not compared yet", L"F5 compares", L""});
}

void AuditView::showNoMethod() const {
    clear();
    addRow({L"No method to compare", L"", L""});
}

void AuditView::showChanges(const std::vector<ChangeRow>& changes, const com::Bstr& trail) const {
    clear();
    for (const auto& change : changes) {
        addRow({text::toWide(change.what), text::toWide(change.before), text::toWide(change.now)});
    }
    if (changes.empty()) {
        addRow({L"No changes", L"", L""});
    }
    addRow({L"", L"", L""});
    addTrail(trail);
}

void AuditView::addTrail(const com::Bstr& trail) const {
    const auto document = parseDocument(trail.get());
    if (document == nullptr) {
        addRow({L"No audit trail", L"", L""});
        return;
    }
    addRow({L"In the audit trail:", L"", L""});
    bool any = false;
    for (const auto& change : singleChanges) {
        forEachElement(document.Get(), change.path, [&](IXMLDOMElement* element) {
            if (hasAttribute(element, change.attribute)) {
                addRow({change.caption, L"", attributeOf(element, change.attribute)});
                any = true;
            }
        });
    }
    forEachElement(document.Get(), L"MethodAuditTrail/MethodParameters/Parameter", [&](IXMLDOMElement* element) {
        addRow({attributeOf(element, L"name"), L"", attributeOf(element, L"value")});
        any = true;
    });
    if (!any) {
        addRow({L"nothing", L"", L""});
    }
}

}  // namespace vrn::sample
