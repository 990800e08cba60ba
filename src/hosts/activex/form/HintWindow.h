// The hint on a parameter: a small window over the form that looks like a tool tip and lets the mouse through.
#pragma once

#include "hosts/activex/form/Peer.h"

namespace vrn::activex {

class GridWindow;

class HintWindow final : public Peer {
  public:
    /// `grid` is where the mouse is: the hint also shows what does not fit into its cells there.
    HintWindow(Session& session, controls::TextBox& model, ControlId id, GridWindow& grid) noexcept
        : Peer(session, model, id), model_(model), grid_(grid) {}
    void lookChanged() override;
    [[nodiscard]] bool takesFocus() const noexcept override { return false; }

  protected:
    [[nodiscard]] Making making(HWND parent) const override;
    [[nodiscard]] bool takesPlace() const noexcept override { return false; }
    void update(controls::Change change) override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    void place();
    void paint(HDC context) const;

    [[nodiscard]] std::wstring shownText() const;

    controls::TextBox& model_;
    GridWindow& grid_;
};

}  // namespace vrn::activex
