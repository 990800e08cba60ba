#include "hosts/activex/form/Typing.h"

#include "controls/ItemList.h"
#include "text/windows/Wide.h"

namespace vrn::activex {

namespace {

// Half of a character is none.
bool isPrinted(wchar_t character) noexcept {
    return character >= L' ' && character != 0x7F && (character < 0xD800 || character > 0xDFFF);
}

// When the user did it, however long the message had to wait.
controls::TypeAhead::Time timeOfMessage() noexcept {
    return controls::TypeAhead::Time(static_cast<DWORD>(GetMessageTime()));
}

}  // namespace

std::optional<int> rowTyped(controls::TypeAhead& typed, wchar_t character, const std::vector<std::string>& rows,
                            int selected) {
    const auto now = timeOfMessage();
    if (character == L'\b') {
        typed.takeBack(now);
        return controls::noSelection;
    }
    if (!isPrinted(character) || (character == L' ' && !typed.goesOn(now))) {
        return std::nullopt;
    }
    return typed.type(text::fromWide({&character, 1}), now, rows, selected);
}

// Letters come as keys first: only the keys that make none count.
bool endsTyping(UINT message, WPARAM wParam) noexcept {
    const bool moves = (wParam >= VK_PRIOR && wParam <= VK_DELETE) || wParam == VK_F4 || wParam == VK_RETURN ||
                       wParam == VK_ESCAPE || wParam == VK_TAB;
    return message == WM_KILLFOCUS || message == WM_LBUTTONDOWN || (message == WM_KEYDOWN && moves);
}

}  // namespace vrn::activex
