// The services that the system itself brings: its locale and its message boxes.
#pragma once

#include <memory>

#include "errors/modMsgBox.h"
#include "services/LocaleService.h"

namespace vrn::services {

/// The thread's decimal separator and the system's default locale.
[[nodiscard]] std::shared_ptr<LocaleService> systemLocale();

/// The system's modal message box. While it is open, no other window of the thread can be used.
[[nodiscard]] std::shared_ptr<errors::MessageBoxService> systemMessageBox();

}  // namespace vrn::services
