#include "controls/Control.h"

#include "errors/Error.h"
#include "text/Unicode.h"

namespace vrn::controls {

void Control::setEnabled(bool enabled) {
    if (kind_ == ControlKind::Label || kind_ == ControlKind::Menu) {
        throw errors::Error(errors::number::propertyNotSupported, "Object doesn't support this property or method");
    }
    if (enabled_ != enabled) {
        enabled_ = enabled;
        changed(Change::Enabled);
    }
}

void Control::setVisible(bool visible) {
    if (visible_ != visible) {
        visible_ = visible;
        changed(Change::Visible);
    }
}

void Control::setAppearance(int appearance) {
    appearance_ = appearance;
    changed(Change::Look);
}

bool Control::beginUserRequest() {
    if (!enabled_ || !visible_) {
        return false;
    }
    if (focus_ != nullptr) {
        focus_->enter();
    }
    // Leaving the other control may have shown a message, and the host may have switched this one off meanwhile.
    return enabled_ && visible_;
}

UserRequest Button::userClick() {
    if (!beginUserRequest()) {
        return UserRequest::NotUsable;
    }
    press();
    return UserRequest::Done;
}

void Label::setCaption(std::string caption) {
    if (caption_ != caption) {
        caption_ = std::move(caption);
        changed(Change::Text);
    }
}

void TextBox::setText(std::string text) {
    if (text_ != text) {
        text_ = std::move(text);
        changed(Change::Text);
    }
}

namespace {

// As an edit window keeps lines: each ends with CR LF.
std::string withWindowLineEnds(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    char previous = '\0';
    for (const char c : text) {
        if (c == '\n' && previous != '\r') {
            out.push_back('\r');
        }
        out.push_back(c);
        previous = c;
    }
    return out;
}

}  // namespace

UserRequest TextBox::userType(std::string_view text) {
    if (!beginUserRequest()) {
        return UserRequest::NotUsable;
    }
    auto typed = withWindowLineEnds(text::withoutNonXmlCharacters(text));
    if (typed != text_) {
        setText(std::move(typed));
        if (onChange) {
            onChange();
        }
    }
    return UserRequest::Done;
}

void TextBox::moveTo(float left, float top) {
    left_ = left;
    top_ = top;
    changed(Change::Position);
}

}  // namespace vrn::controls
