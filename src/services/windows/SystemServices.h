// The services that the system itself brings: its locale and its message boxes.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "errors/modMsgBox.h"
#include "services/LocaleService.h"

namespace vrn::services {

/// The thread's decimal separator and the system's default locale.
[[nodiscard]] std::shared_ptr<LocaleService> systemLocale();

/// The system's modal message box. While it is open, the window that owns it cannot be used; no other window of the thread when
/// it has no owner. `owner` is asked for one when the caller names none, and answers 0 for none; it may be empty.
[[nodiscard]] std::shared_ptr<errors::MessageBoxService> systemMessageBox(std::function<std::intptr_t()> owner = {});

}  // namespace vrn::services
