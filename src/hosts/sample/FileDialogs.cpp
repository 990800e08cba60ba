#include "hosts/sample/FileDialogs.h"

#include <commdlg.h>
#include <shlobj.h>

#include <array>

#include "com/Com.h"

namespace vrn::sample {

namespace {

constexpr const wchar_t* folderTitle = L"Folder with macros.xml, objects.xml and config.xml";
constexpr const wchar_t* filter = L"Methods (*.xml)\0*.xml\0All files\0*.*\0";

std::wstring taken(LPWSTR text) {
    std::wstring copy(text == nullptr ? L"" : text);
    CoTaskMemFree(text);
    return copy;
}

// Where a folder that is not there is asked for, the dialog starts at its own choice.
void startAt(IFileDialog* dialog, const std::wstring& folder) {
    com::ComPtr<IShellItem> item;
    if (!folder.empty() && SUCCEEDED(SHCreateItemFromParsingName(folder.c_str(), nullptr, IID_IShellItem, &item))) {
        dialog->SetFolder(item.Get());
    }
}

std::wstring askWithBrowser(HWND owner) {
    BROWSEINFOW browse{};
    browse.hwndOwner = owner;
    browse.lpszTitle = folderTitle;
    browse.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
    std::array<wchar_t, MAX_PATH> path{};
    if (auto* const chosen = SHBrowseForFolderW(&browse); chosen != nullptr) {
        SHGetPathFromIDListW(chosen, path.data());
        CoTaskMemFree(chosen);
    }
    return path.data();
}

}  // namespace

std::wstring askForFolder(HWND owner, const std::wstring& start) {
    com::ComPtr<IFileOpenDialog> dialog;
    if (FAILED(CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_IFileOpenDialog, &dialog)) ||
        FAILED(dialog->SetOptions(FOS_PICKFOLDERS | FOS_FORCEFILESYSTEM | FOS_PATHMUSTEXIST))) {
        return askWithBrowser(owner);
    }
    dialog->SetTitle(folderTitle);
    startAt(dialog.Get(), start);
    com::ComPtr<IShellItem> chosen;
    LPWSTR path = nullptr;
    if (FAILED(dialog->Show(owner)) || FAILED(dialog->GetResult(&chosen)) ||
        FAILED(chosen->GetDisplayName(SIGDN_FILESYSPATH, &path))) {
        return {};
    }
    return taken(path);
}

namespace {

std::wstring askForFile(HWND owner, const std::wstring& folder, const std::wstring& name, bool save) {
    std::array<wchar_t, 32768> path{};
    name.copy(path.data(), path.size() - 1);
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = filter;
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
    dialog.lpstrDefExt = L"xml";
    dialog.Flags =
        OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST | (save ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
    const BOOL chosen = save ? GetSaveFileNameW(&dialog) : GetOpenFileNameW(&dialog);
    return chosen != FALSE ? path.data() : std::wstring();
}

}  // namespace

std::wstring askForFileToOpen(HWND owner, const std::wstring& folder) { return askForFile(owner, folder, {}, false); }

std::wstring askForFileToSave(HWND owner, const std::wstring& folder, const std::wstring& name) {
    return askForFile(owner, folder, name, true);
}

}  // namespace vrn::sample
