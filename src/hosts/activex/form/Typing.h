// Names typed in lists: the messages of the keyboard for `controls::TypeAhead`.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "controls/TypeAhead.h"

namespace vrn::activex {

/// The row that the user means with the character of the message at work, `noSelection` when no row fits. Nothing when the
/// character belongs to no name: the list may have a use for it.
[[nodiscard]] std::optional<int> rowTyped(controls::TypeAhead& typed, wchar_t character,
                                          const std::vector<std::string>& rows, int selected);

/// Whether the user goes on with something else than the name.
[[nodiscard]] bool endsTyping(UINT message, WPARAM wParam) noexcept;

}  // namespace vrn::activex
