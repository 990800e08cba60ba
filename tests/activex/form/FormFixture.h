// A form with real windows in a plain parent window, around an editor whose message boxes are recorded.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <oleacc.h>
#include <windowsx.h>

#include <array>
#include <string>
#include <thread>
#include <vector>

#include "com/Com.h"
#include "hosts/activex/form/ControlIds.h"
#include "hosts/activex/form/Form.h"
#include "method/SmallSet.h"
#include "text/windows/Wide.h"

namespace vrn::test {

using activex::ControlId;
using activex::Form;

class RecordingSite final : public activex::FormSite {
  public:
    void enter() noexcept override { ++inside; }
    void leave() noexcept override { --inside; }
    void focusChanged(bool inForm) noexcept override { focus.push_back(inForm); }
    void userActs() noexcept override {}
    [[nodiscard]] bool uiDead() const noexcept override { return dead; }
    std::vector<bool> focus;
    bool dead = false;
    int inside = 0;
};

class FormTest : public SmallSetTest {
  public:
    static void pump() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }

  protected:
    FormTest() : form(editor(), site, GetModuleHandleW(nullptr)) {
        parent = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 800, 600, nullptr,
                                 nullptr, nullptr, nullptr);
        form.create(parent, {0, 0, 800, 600});
        form.show(true);
        SetForegroundWindow(parent);
        pump();
    }
    ~FormTest() override {
        form.destroy();
        DestroyWindow(parent);
        pump();
    }

    [[nodiscard]] HWND frame(ControlId id) const { return GetDlgItem(form.window(), static_cast<int>(id)); }
    [[nodiscard]] HWND window(ControlId id) const {
        const auto holder = activex::frameOf(id);
        return GetDlgItem(holder == ControlId::fraMethodEditor ? form.window() : frame(holder), static_cast<int>(id));
    }
    [[nodiscard]] HWND grid() const { return window(ControlId::grdMacro); }
    [[nodiscard]] HWND textEditor() const { return GetDlgItem(grid(), activex::gridTextEditorId); }
    [[nodiscard]] HWND listEditor() const { return GetDlgItem(grid(), activex::gridListEditorId); }

    static void key(HWND to, WPARAM code) { SendMessageW(to, WM_KEYDOWN, code, 1); }
    static void type(HWND to, const std::wstring& text) {
        for (const wchar_t c : text) {
            SendMessageW(to, WM_CHAR, c, 1);
        }
    }
    static void click(HWND to, int x, int y) {
        SendMessageW(to, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
        SendMessageW(to, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
    }
    static std::string textOf(HWND of) {
        std::array<wchar_t, 400> text{};
        GetWindowTextW(of, text.data(), static_cast<int>(text.size()));
        return text::fromWide(text.data());
    }
    static std::string windowTextOf(HWND of) {
        std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(of)) + 1, L'\0');
        text.resize(static_cast<std::size_t>(GetWindowTextW(of, text.data(), static_cast<int>(text.size()))));
        return text::fromWide(text);
    }
    [[nodiscard]] bool translated(HWND focus, UINT message, WPARAM code) {
        return form.translateKey({focus, message, code, 1, 0, {}});
    }
    /// The grid as an assistive program finds it.
    [[nodiscard]] com::ComPtr<IAccessible> accessibleGrid() const {
        com::ComPtr<IAccessible> accessible;
        AccessibleObjectFromWindow(grid(), static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                   reinterpret_cast<void**>(accessible.GetAddressOf()));
        return accessible;
    }
    /// The place of one of its children in its client area.
    [[nodiscard]] RECT placeInGrid(int child) const {
        RECT place{};
        const com::Variant id(static_cast<std::int32_t>(child));
        accessibleGrid()->accLocation(&place.left, &place.top, &place.right, &place.bottom, id.get());
        place.right += place.left;
        place.bottom += place.top;
        MapWindowPoints(nullptr, grid(), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    static POINT middleOf(const RECT& place) {
        return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
    }
    /// The middle of a grid row.
    [[nodiscard]] int rowY(int row) const { return middleOf(placeInGrid(row)).y; }
    /// The field of a row that opens the menu of values.
    [[nodiscard]] RECT menuField(int row) const {
        com::Variant field;
        const com::Variant cell(static_cast<std::int32_t>(row));
        accessibleGrid()->accNavigate(NAVDIR_RIGHT, cell.get(), field.put());
        return placeInGrid(field.get().lVal);
    }

    RecordingSite site;
    Form form;
    HWND parent = nullptr;
};

/// Holds a key down for as long as it lives, as far as this thread can tell.
class HeldKey {
  public:
    explicit HeldKey(int key) : key_(static_cast<std::size_t>(key)) { set(0x80); }
    ~HeldKey() { set(0); }
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;

  private:
    void set(BYTE state) const {
        std::array<BYTE, 256> keys{};
        GetKeyboardState(keys.data());
        keys.at(key_) = state;
        SetKeyboardState(keys.data());
    }
    std::size_t key_;
};

}  // namespace vrn::test
