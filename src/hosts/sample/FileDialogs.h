// The system's dialogs for folders and files. Each answers an empty path when the user cancels.
#pragma once

#include <windows.h>

#include <string>

namespace vrn::sample {

[[nodiscard]] std::wstring askForFolder(HWND owner, const std::wstring& start);
[[nodiscard]] std::wstring askForFileToOpen(HWND owner, const std::wstring& folder);
[[nodiscard]] std::wstring askForFileToSave(HWND owner, const std::wstring& folder, const std::wstring& name);

}  // namespace vrn::sample
