// A control in a container, for tests.
#pragma once

#include "activex/com/Container.h"
#include "hosts/sample/script/WindowSearch.h"

namespace vrn::test {

/// Identifiers of the control's child windows.
inline constexpr int txtMethodDescription = 102;
inline constexpr int lstMethodMacroList = 106;
inline constexpr int cmdDelete = 109;

/// The child control's window below the control's.
inline HWND childOf(HWND window, int id) {
    return sample::findBelow(window, [&](HWND candidate) { return GetDlgCtrlID(candidate) == id; });
}

class ContainerTest : public ControlTest {
  protected:
    void SetUp() override {
        editor = create();
        container.place(editor.Get());
    }
    void TearDown() override {
        container.remove();
        editor.Reset();
        ControlTest::TearDown();
    }
    /// The window of a child control while the control is active.
    [[nodiscard]] HWND child(int id) const { return childOf(container.controlWindow(), id); }
    /// What a user does who clicks a line of the sequence.
    static void clickLine(HWND list, int line) {
        RECT place{};
        SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&place));
        const LPARAM point = MAKELPARAM(place.left + 5, place.top + 2);
        SendMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, point);
        SendMessageW(list, WM_LBUTTONUP, 0, point);
    }
    HRESULT changeAmbient(DISPID property, com::Variant value) {
        container.ambients[property] = std::move(value);
        return as<IOleControl>(editor)->OnAmbientPropertyChange(property);
    }

    Container container;
    ComPtr<IVRN_MethodEditor> editor;
};

}  // namespace vrn::test
