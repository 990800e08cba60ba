// Frames: real parents of the controls they hold.
#pragma once

#include <string>

#include "hosts/activex/form/Peer.h"

namespace vrn::activex {

/// Draws a group box when it has a caption, the border of its only control otherwise. Passes its controls' reports on to
/// their peers.
class FrameWindow : public Peer {
  public:
    FrameWindow(Session& session, controls::Frame& model, ControlId id) noexcept
        : Peer(session, model, id), model_(model) {}
    void lookChanged() override;
    /// The caption's, or that of a disabled control below the mouse, which gets no messages of its own.
    [[nodiscard]] Tip tipAt(POINT place) override;

  protected:
    [[nodiscard]] Making making(HWND parent) const override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    virtual void paint(HDC context);

  private:
    controls::Frame& model_;
    mutable std::wstring caption_;
};

}  // namespace vrn::activex
