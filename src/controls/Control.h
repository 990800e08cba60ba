// What all child controls have in common: the models that the engine works on in place of windows.
//
// A model holds state, tells what a user may do to it (`user…` functions), runs the handler that the shell wired, and tells one
// observer, the native peer, what changed. The engine cannot tell a model with a native window from one without.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

namespace vrn::controls {

enum class ControlKind { Frame, PictureBox, Button, ListBox, ComboBox, TextBox, Label, Menu, Grid };

/// What a native peer has to bring up to date.
enum class Change { Enabled, Visible, Text, Items, Index, View, Cells, Edit, Look, Position, Popup, Repaint };

class Control;

class ControlObserver {
  public:
    virtual ~ControlObserver() = default;
    virtual void controlChanged(Control& control, Change change) noexcept = 0;
};

/// How a user's request ended.
enum class UserRequest {
    Done,
    NotUsable,    ///< the control is disabled or hidden: nothing happened
    NoSuchEntry,  ///< a row, index or item that the control does not have: nothing happened
};

/// Where the user is: lets a control be told that the user goes on to another one.
class Focus {
  public:
    /// `leave` is called once, before the next thing that the user does.
    void hold(std::function<void()> leave) { leave_ = std::move(leave); }
    void release() { leave_ = nullptr; }
    void enter() {
        if (const auto leave = std::exchange(leave_, nullptr)) {
            leave();
        }
    }

  private:
    std::function<void()> leave_;
};

class Control {
  public:
    Control(ControlKind kind, std::string name, Control* container, Focus* focus = nullptr)
        : name_(std::move(name)), container_(container), focus_(focus), kind_(kind) {}
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    [[nodiscard]] ControlKind kind() const noexcept { return kind_; }
    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    [[nodiscard]] Control* container() const noexcept { return container_; }
    [[nodiscard]] bool isContainer() const noexcept {
        return kind_ == ControlKind::Frame || kind_ == ControlKind::PictureBox;
    }

    [[nodiscard]] bool enabled() const noexcept { return enabled_; }
    /// Fails with error 438 for a kind of control that knows no such property.
    void setEnabled(bool enabled);
    [[nodiscard]] bool visible() const noexcept { return visible_; }
    void setVisible(bool visible);

    /// Border look of text boxes and frames: 0 flat, 1 three-dimensional.
    [[nodiscard]] int appearance() const noexcept { return appearance_; }
    void setAppearance(int appearance);
    /// Asks the native peer, if there is one, to paint the control again.
    void repaint() { changed(Change::Repaint); }

    void observe(ControlObserver* observer) noexcept { observer_ = observer; }

  protected:
    void changed(Change change) noexcept {
        if (observer_ != nullptr) {
            observer_->controlChanged(*this, change);
        }
    }
    /// Begins something that the user does to this control: false when it cannot be used; otherwise the control that the user
    /// was in is left first.
    [[nodiscard]] bool beginUserRequest();
    [[nodiscard]] Focus* focus() const noexcept { return focus_; }

  private:
    std::string name_;
    Control* container_;
    Focus* focus_;
    ControlObserver* observer_ = nullptr;
    ControlKind kind_;
    bool enabled_ = true;
    bool visible_ = true;
    int appearance_ = 1;
};

/// A frame or picture box: holds other controls.
class Frame final : public Control {
  public:
    Frame(std::string name, Control* container, std::string caption = {}, ControlKind kind = ControlKind::Frame)
        : Control(kind, std::move(name), container), caption_(std::move(caption)) {}
    /// The mouse is over the frame itself, outside of what it holds.
    std::function<void()> onMouseMove;

    [[nodiscard]] const std::string& caption() const noexcept { return caption_; }
    void userMouseMove() const {
        if (onMouseMove) {
            onMouseMove();
        }
    }

  private:
    std::string caption_;
};

class Button final : public Control {
  public:
    Button(std::string name, Control* container, Focus* focus, std::string caption)
        : Control(ControlKind::Button, std::move(name), container, focus), caption_(std::move(caption)) {}

    std::function<void()> onClick;

    [[nodiscard]] const std::string& caption() const noexcept { return caption_; }
    /// Runs the handler as a program does that presses the button, whatever its state.
    void press() const {
        if (onClick) {
            onClick();
        }
    }
    UserRequest userClick();

  private:
    std::string caption_;
};

class Label final : public Control {
  public:
    Label(std::string name, Control* container) : Control(ControlKind::Label, std::move(name), container) {}

    [[nodiscard]] const std::string& caption() const noexcept { return caption_; }
    void setCaption(std::string caption);

  private:
    std::string caption_;
};

class TextBox final : public Control {
  public:
    TextBox(std::string name, Control* container, Focus* focus)
        : Control(ControlKind::TextBox, std::move(name), container, focus) {}

    /// Runs when the user has changed the text; filling the box by code does not run it.
    std::function<void()> onChange;

    [[nodiscard]] const std::string& text() const noexcept { return text_; }
    void setText(std::string text);
    /// The user gives the box this whole new text. LF alone is taken as CR LF; characters that XML cannot hold are dropped.
    UserRequest userType(std::string_view text);

    /// Place in the container, in twips.
    void moveTo(float left, float top);
    [[nodiscard]] float left() const noexcept { return left_; }
    [[nodiscard]] float top() const noexcept { return top_; }

  private:
    std::string text_;
    float left_ = 0;
    float top_ = 0;
};

}  // namespace vrn::controls
