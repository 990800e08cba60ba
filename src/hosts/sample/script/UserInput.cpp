#include "hosts/sample/script/UserInput.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "errors/Error.h"
#include "hosts/activex/form/ControlIds.h"
#include "hosts/sample/script/WindowSearch.h"
#include "text/windows/Wide.h"

namespace vrn::sample {

namespace {

using activex::ControlId;

constexpr std::array<std::pair<std::string_view, ControlId>, 11> identifiers{{
    {"txtMethodDescription", ControlId::txtMethodDescription},
    {"cboSyringe", ControlId::cboSyringe},
    {"lstMethodMacroList", ControlId::lstMethodMacroList},
    {"cmdInsert", ControlId::cmdInsert},
    {"cmdReplace", ControlId::cmdReplace},
    {"cmdDelete", ControlId::cmdDelete},
    {"cboSelectedMacro", ControlId::cboSelectedMacro},
    {"cmdDefCycle", ControlId::cmdDefCycle},
    {"grdMacro", ControlId::grdMacro},
    {"txtToolTip", ControlId::txtToolTip},
    {"lblCycleDateChanged", ControlId::lblCycleDateChanged},
}};

HWND windowNamed(HWND form, const std::string& name) {
    const auto* const found = std::find_if(identifiers.begin(), identifiers.end(),
                                           [&](const auto& identifier) { return identifier.first == name; });
    const auto isIt = [&](HWND window) { return GetDlgCtrlID(window) == static_cast<int>(found->second); };
    HWND const window = found == identifiers.end() ? nullptr : findBelow(form, isIt);
    if (window == nullptr) {
        throw errors::Error(E_FAIL, "The control has no window " + name + ".");
    }
    return window;
}

}  // namespace

ChildWindow::ChildWindow(HWND form, const std::string& name) : window_(windowNamed(form, name)) {}

std::string textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
    text.resize(
        static_cast<std::size_t>(SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text::fromWide(text);
}

void ChildWindow::notify(int code) const noexcept {
    const auto from = static_cast<WPARAM>(GetDlgCtrlID(window_));
    SendMessageW(GetParent(window_), WM_COMMAND, from | (static_cast<WPARAM>(code) << 16),
                 reinterpret_cast<LPARAM>(window_));
}

void replaceText(HWND edit, const std::string& text) {
    auto wide = text::toWide(text);
    // What cannot be in a window's text ends it.
    std::erase(wide, L'\0');
    SendMessageW(edit, EM_SETSEL, 0, -1);
    SendMessageW(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(wide.c_str()));
}

void TextWindow::replaceAll(const std::string& text) const {
    // Lines in a window end with CR LF.
    std::string lines;
    for (const char c : text) {
        if (c == '\n' && !lines.ends_with('\r')) {
            lines.push_back('\r');
        }
        lines.push_back(c);
    }
    replaceText(handle(), lines);
}

const ListWindow::Messages ListWindow::listMessages{LB_GETCOUNT,   LB_GETCURSEL, LB_SETCURSEL,
                                                    LB_GETTEXTLEN, LB_GETTEXT,   LBN_SELCHANGE};
const ListWindow::Messages ListWindow::comboMessages{CB_GETCOUNT,     CB_GETCURSEL, CB_SETCURSEL,
                                                     CB_GETLBTEXTLEN, CB_GETLBTEXT, CBN_SELCHANGE};

ListWindow::ListWindow(HWND form, const std::string& name)
    : ChildWindow(form, name), messages_(name.starts_with("lst") ? listMessages : comboMessages) {}

std::string ListWindow::item(int index) const {
    const auto row = static_cast<WPARAM>(index);
    std::wstring text(static_cast<std::size_t>(send(messages_.length, row)) + 1, L'\0');
    send(messages_.text, row, reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return text::fromWide(text);
}

std::vector<std::string> ListWindow::items() const {
    std::vector<std::string> items;
    const int rows = count();
    items.reserve(static_cast<std::size_t>(rows));
    for (int row = 0; row < rows; ++row) {
        items.push_back(item(row));
    }
    return items;
}

void ListWindow::choose(int index) const noexcept {
    // The window itself tells of a choice only when a mouse or a key made it.
    send(messages_.setIndex, static_cast<WPARAM>(index));
    notify(messages_.chosen);
}

}  // namespace vrn::sample
