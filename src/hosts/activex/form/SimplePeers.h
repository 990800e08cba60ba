// Peers of the controls that the system has as they are: button, label, description box.
#pragma once

#include <string>

#include "hosts/activex/form/Peer.h"

namespace vrn::activex {

class ButtonPeer final : public Peer {
  public:
    ButtonPeer(Session& session, controls::Button& model, ControlId id) noexcept
        : Peer(session, model, id), model_(model) {}
    void onCommand(int code) override;
    /// As a click of the mouse does.
    void press();
    /// The key that presses the button together with Alt, in upper case; 0 without one.
    [[nodiscard]] static wchar_t mnemonicOf(const controls::Button& model);
    [[nodiscard]] wchar_t mnemonic() const { return mnemonicOf(model_); }
    void lookChanged() override;
    [[nodiscard]] Tip tipAt(POINT place) override;

  protected:
    [[nodiscard]] Making making(HWND parent) const override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    void fitCaption();

    controls::Button& model_;
    mutable std::wstring caption_;
    bool cut_ = false;  // whether the window shows a part of the caption
};

class LabelPeer final : public Peer {
  public:
    LabelPeer(Session& session, controls::Label& model, ControlId id) noexcept
        : Peer(session, model, id), model_(model) {}
    [[nodiscard]] bool takesFocus() const noexcept override { return false; }
    [[nodiscard]] Tip tipAt(POINT place) override;

  protected:
    [[nodiscard]] Making making(HWND parent) const override;
    void update(controls::Change change) override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    void paint(HDC context) const;

    controls::Label& model_;
};

/// A box of several lines in which the user types; read-only, it can be scrolled and copied from.
class TextPeer final : public Peer {
  public:
    TextPeer(Session& session, controls::TextBox& model, ControlId id) noexcept
        : Peer(session, model, id), model_(model) {}
    void onCommand(int code) override;
    void lookChanged() override;

  protected:
    [[nodiscard]] Making making(HWND parent) const override;
    [[nodiscard]] bool readable() const noexcept override { return true; }
    void setReadOnly(bool readOnly) override { send(EM_SETREADONLY, readOnly ? TRUE : FALSE); }
    void update(controls::Change change) override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    void show();

    controls::TextBox& model_;
    bool showing_ = false;
};

/// The text of a window.
[[nodiscard]] std::wstring windowText(HWND window);

}  // namespace vrn::activex
