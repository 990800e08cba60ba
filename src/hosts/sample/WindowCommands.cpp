// What the window's commands do.
#include <windows.h>
// After windows.h, which it builds on.
#include <commctrl.h>

#include <array>
#include <utility>

#include "errors/modErr.h"
#include "hosts/sample/Commands.h"
#include "hosts/sample/FileDialogs.h"
#include "hosts/sample/Verification.h"
#include "hosts/sample/Window.h"
#include "hosts/sample/script/XmlText.h"
#include "text/windows/Wide.h"

namespace vrn::sample {

namespace {

constexpr const wchar_t* programName = L"Method Host";

std::wstring fileName(const std::wstring& path) { return path.substr(path.find_last_of(L"\\/") + 1); }

std::wstring folderOf(const std::wstring& path) { return path.substr(0, path.find_last_of(L"\\/")); }

void setText(HWND status, WPARAM part, const std::wstring& text) {
    SendMessageW(status, SB_SETTEXTW, part, reinterpret_cast<LPARAM>(text.c_str()));
}

}  // namespace

void Window::onCommand(int command) {
    switch (command) {
        case IDM_NEW:
            return startNew();
        case IDM_OPEN_SET:
            return openSet();
        case IDM_OPEN_METHOD:
            return openMethod();
        case IDM_SAVE:
            return static_cast<void>(save(false));
        case IDM_SAVE_AS:
            return static_cast<void>(save(true));
        case IDM_VERIFY:
            return verify();
        case IDM_LOCK:
            return lock(!locked_);
        case IDM_COMPARE:
            return compare();
        case IDM_SHOW_AUDIT:
            return toggle(panes_.showAudit);
        case IDM_SHOW_EVENTS:
            return toggle(panes_.showEvents);
        case IDM_CLEAR_EVENTS:
            return events_.clear();
        case IDM_EXIT:
            return static_cast<void>(PostMessageW(window_, WM_CLOSE, 0, 0));
        case IDM_ABOUT:
            return tell(L"Sample host of the method editor control, version " + text::toWide(errors::versionText()),
                        MB_ICONINFORMATION);
        default:
            return;
    }
}

void Window::startNew() {
    if (mayLeaveMethod()) {
        file_->startNew();
        methodArrived();
    }
}

void Window::openSet() {
    if (!mayLeaveMethod()) {
        return;
    }
    const auto folder = askForFolder(window_, file_->set().folder);
    if (!folder.empty()) {
        file_->openSet(folder);
        events_.note(L"Set opened: " + folder);
        methodArrived();
    }
}

void Window::openMethod() {
    if (!mayLeaveMethod()) {
        return;
    }
    const auto path =
        askForFileToOpen(window_, file_->path().empty() ? file_->set().folder + L"\\methods" : folderOf(file_->path()));
    if (!path.empty()) {
        const bool accepted = file_->open(path);
        events_.note((accepted ? L"Method opened: " : L"Method not accepted: ") + path);
        methodArrived();
    }
}

bool Window::save(bool underNewName) {
    auto path = file_->path();
    if (underNewName || path.empty()) {
        path = askForFileToSave(window_, path.empty() ? file_->set().folder : folderOf(path), fileName(path));
    }
    if (path.empty()) {
        return false;
    }
    // The trail tells of the changes since the method was opened or saved last: afterwards there are none.
    const int messagesBefore = messages_;
    const auto before = file_->reference();
    const auto trail = file_->auditTrail();
    if (messages_ != messagesBefore) {
        return false;  // a value is refused: the user has read it, and is to mend it first
    }
    if (!file_->save(path)) {
        tell(L"There is no method to save: the sequence is empty.", MB_ICONINFORMATION);
        return false;
    }
    audit_.showChanges(changesBetween(before, file_->reference()), trail);
    events_.note(L"Saved: " + path);
    showState();
    return true;
}

void Window::verify() {
    const int messagesBefore = messages_;
    const auto method = file_->build();
    if (method == nullptr) {
        if (messages_ == messagesBefore) {
            tell(L"There is no method to verify: the sequence is empty.", MB_ICONINFORMATION);
        }
        return;
    }
    const auto found = errorsWhenLoaded(file_->set(), method.Get());
    for (const auto& error : found) {
        events_.add(error);
    }
    if (found.empty()) {
        events_.note(L"Verified: another editor accepts the method.");
        tell(L"Another editor accepts the method.", MB_ICONINFORMATION);
    } else {
        tell(L"Another editor does not accept the method:\n\n" + found.front().strError, MB_ICONWARNING);
    }
    showNoticeAgain();
}

void Window::lock(bool locked) {
    control_->DisableMethod(locked);
    locked_ = locked;
    showState();
}

void Window::compare() {
    const int messagesBefore = messages_;
    file_->isChanged();
    const auto method = messages_ == messagesBefore ? file_->build() : nullptr;
    if (method == nullptr) {
        // The sequence is empty, or a value is refused, which the user has read.
        audit_.showNoMethod();
    } else {
        audit_.showChanges(changesBetween(file_->reference(), textOf(method.Get())), file_->auditTrail());
        showNoticeAgain();
    }
    showState();
}

// A method that was built has the newest cycles, so the control takes its notice about older ones away. Nothing was saved: the
// control looks at the opened method again when the description becomes editable.
void Window::showNoticeAgain() {
    control_->DisableDescription(false);
    if (locked_) {
        control_->DisableMethod(true);
    }
}

void Window::toggle(bool& shown) {
    shown = !shown;
    arrange();
    showState();
}

bool Window::mayLeaveMethod() {
    const int messagesBefore = messages_;
    if (!file_->isChanged()) {
        // A method that cannot be built counts as unchanged. When the control has refused a value, and told so, it is no time
        // to go.
        return messages_ == messagesBefore;
    }
    showState();
    const auto name = file_->path().empty() ? std::wstring(L"the new method") : fileName(file_->path());
    const auto question = L"Save the changes to " + name + L"?";
    const int answer = MessageBoxW(window_, question.c_str(), programName, MB_YESNOCANCEL | MB_ICONQUESTION);
    return answer == IDNO || (answer == IDYES && save(false));
}

// The control has taken documents over, which makes it editable again.
void Window::methodArrived() {
    locked_ = false;
    audit_.showNothing();
    showState();
}

void Window::showState() {
    const bool loaded = file_->set().loaded();
    const bool changed = file_->knownAsChanged();
    const auto name = file_->path().empty() ? std::wstring(L"New method") : fileName(file_->path());
    const auto caption = loaded ? (changed ? L"*" : L"") + name + L" - " + programName : std::wstring(programName);
    SetWindowTextW(window_, caption.c_str());
    setText(status_, 0, loaded ? L"" : L"Open a document set to begin.");
    setText(status_, 1, loaded ? L"Set: " + file_->set().folder : L"");
    setText(status_, 2, !loaded ? L"" : locked_ ? L"Locked" : changed ? L"Changed" : L"");
    HMENU const menu = GetMenu(window_);
    for (const int command : {IDM_NEW, IDM_OPEN_METHOD, IDM_SAVE, IDM_SAVE_AS, IDM_VERIFY, IDM_LOCK, IDM_COMPARE}) {
        EnableMenuItem(menu, static_cast<UINT>(command), loaded ? MF_ENABLED : MF_GRAYED);
        toolBar_.enable(command, loaded);
    }
    const std::array<std::pair<UINT, bool>, 3> checks{
        {{IDM_LOCK, locked_}, {IDM_SHOW_AUDIT, panes_.showAudit}, {IDM_SHOW_EVENTS, panes_.showEvents}}};
    for (const auto& [command, checked] : checks) {
        CheckMenuItem(menu, command, checked ? MF_CHECKED : MF_UNCHECKED);
    }
    toolBar_.press(IDM_LOCK, locked_);
}

void Window::tell(const std::wstring& text, UINT icon) const {
    MessageBoxW(window_, text.c_str(), programName, MB_OK | icon);
}

}  // namespace vrn::sample
