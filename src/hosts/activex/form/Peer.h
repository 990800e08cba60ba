// A native window for one model: shows its state, tells it what the user does.
#pragma once

#include "controls/Control.h"
#include "hosts/activex/form/Window.h"

namespace vrn::activex {

/// A model's native window. Whatever the engine changes is shown; whatever the user does goes to the model first, and the
/// window is brought in line with what the model made of it. Once the session is closed the model is out of bounds.
class Peer : public Window, public controls::ControlObserver {
  public:
    Peer(Session& session, controls::Control& model, ControlId id) noexcept : Window(session), model_(model), id_(id) {}
    ~Peer() override = default;

    /// Makes the window and begins to follow the model.
    void create(HWND parent);
    /// Follows the model no longer.
    void letGo() noexcept { model_.observe(nullptr); }
    void controlChanged(controls::Control& control, controls::Change change) noexcept final;

    /// Resolution, fonts, colours or theme have changed.
    virtual void lookChanged();
    [[nodiscard]] ControlId controlId() const noexcept { return id_; }
    /// Whether the user can be in this control.
    [[nodiscard]] virtual bool takesFocus() const noexcept {
        return (model_.enabled() || readable()) && model_.visible();
    }

  protected:
    [[nodiscard]] virtual Making making(HWND parent) const = 0;
    /// Whether others move when it comes or goes.
    [[nodiscard]] virtual bool takesPlace() const noexcept { return true; }
    /// Whether the control can be read while the user can do nothing to the model. The window is not disabled then: it scrolls,
    /// and what it shows can be copied.
    [[nodiscard]] virtual bool readable() const noexcept { return false; }
    /// A readable control from now on only shows what it holds, or can be changed again.
    virtual void setReadOnly(bool /*readOnly*/) {}
    [[nodiscard]] bool readOnly() const noexcept { return readable() && !model_.enabled(); }
    /// The model has changed in a way of its own kind.
    virtual void update(controls::Change /*change*/) {}

    void mouseCame(UINT message, WPARAM wParam, LPARAM lParam) override;
    void ending() noexcept override;

  private:
    void showReadOnly();
    void updateEnabled();
    void updateVisible() noexcept;

    controls::Control& model_;
    ControlId id_;
    ToolTip toolTip_;
};

}  // namespace vrn::activex
