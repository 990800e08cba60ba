// The protocol of the scripted hosts: JSON lines in, checked requests to whoever carries them out, JSON lines out.
//
// Every host of the protocol carries out the same operations; what is at fault with a request, and the words for it, are
// the same in all of them. See docs/scripted-host.md.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "errors/Handlers.h"

namespace vrn::script {

/// Keys keep the order in which they are documented.
using Json = nlohmann::ordered_json;

/// A request that is at fault. What it says goes into the reply.
class BadRequest : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The control does not have what the request names.
[[noreturn]] void refuseEntry(const std::string& control);
/// The user can do nothing to the control.
[[noreturn]] void refuseUse(const std::string& control, bool visible);
/// There is no menu to choose from.
[[noreturn]] void refuseMenu();

/// What a host and its user can do. A request at fault is a `BadRequest`, a member's own failure an `errors::Error`.
class Operations {
  public:
    Operations() = default;
    virtual ~Operations() = default;
    Operations(const Operations&) = delete;
    Operations& operator=(const Operations&) = delete;

    virtual void SetXmlDocuments(const std::string& macros, const std::string& objects, const std::string& method,
                                 const std::string& config) = 0;
    virtual std::optional<std::string> GetMethodXml() = 0;
    virtual bool MethodIsChanged() = 0;
    virtual void MethodIsChanged(bool value) = 0;
    virtual void DisableMethod(bool value) = 0;
    virtual void DisableDescription(bool value) = 0;
    virtual void DisableSyringe(bool value) = 0;
    virtual std::string AuditTrail() = 0;
    virtual void refreshControls() = 0;

    /// `control` is the name of a list or combo box that can be selected in, `click`'s one of a button.
    virtual void select(const std::string& control, int index) = 0;
    virtual void select(const std::string& control, const std::string& text) = 0;
    virtual void click(const std::string& control) = 0;
    virtual void type(const std::string& text) = 0;
    virtual void edit(int row, const std::string& text, bool commit) = 0;
    /// The captions of the menu that is then shown; none when none is.
    virtual std::optional<std::vector<std::string>> menu(int row, int position) = 0;
    virtual void choose(int index) = 0;
    /// Takes away the menu, if one is shown.
    virtual void closeMenu() = 0;
    virtual Json state() = 0;

    /// The events since they were taken last.
    [[nodiscard]] Json takeEvents();

  protected:
    void reportError(const errors::MethodEditorErrorArguments& error);
    void reportMessageBox(const std::string& text, const std::string& title, std::int32_t flags);

  private:
    Json events_ = Json::array();
};

/// Carries out one request and gives its reply, without line end. Never fails.
[[nodiscard]] std::string answer(Operations& operations, std::string_view line) noexcept;

/// Answers every line of `in` with a line of `out`, until the end of input.
void answerLines(Operations& operations, std::istream& in, std::ostream& out);

}  // namespace vrn::script
