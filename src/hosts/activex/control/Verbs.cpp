#include "hosts/activex/control/Verbs.h"

#include <array>
#include <string_view>

#include "hosts/activex/control/Enumerator.h"

namespace vrn::activex {

namespace {

struct Verb {
    LONG number;
    std::wstring_view name;
    DWORD attributes;
};

constexpr std::array<Verb, 5> allVerbs{{
    {OLEIVERB_PRIMARY, L"&Edit", OLEVERBATTRIB_ONCONTAINERMENU},
    {OLEIVERB_SHOW, L"", 0},
    {OLEIVERB_HIDE, L"", 0},
    {OLEIVERB_UIACTIVATE, L"", 0},
    {OLEIVERB_INPLACEACTIVATE, L"", 0},
}};

struct VerbSource {
    [[nodiscard]] static std::size_t size() noexcept { return allVerbs.size(); }
    static HRESULT copy(std::size_t index, OLEVERB& item) noexcept {
        const auto& verb = allVerbs[index];
        item = {};
        item.lVerb = verb.number;
        item.grfAttribs = verb.attributes;
        if (!verb.name.empty()) {
            item.lpszVerbName = static_cast<LPOLESTR>(CoTaskMemAlloc((verb.name.size() + 1) * sizeof(wchar_t)));
            if (item.lpszVerbName == nullptr) {
                return E_OUTOFMEMORY;
            }
            item.lpszVerbName[verb.name.copy(item.lpszVerbName, verb.name.size())] = L'\0';
        }
        return S_OK;
    }
    static void discard(OLEVERB& item) noexcept { CoTaskMemFree(std::exchange(item.lpszVerbName, nullptr)); }
};

}  // namespace

IEnumOLEVERB* enumerateVerbs() {
    return new Enumerator<IEnumOLEVERB, OLEVERB, VerbSource>(std::make_shared<VerbSource>(), 0);
}

}  // namespace vrn::activex
