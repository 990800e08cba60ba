#include "hosts/script/ScriptHost.h"

#include <algorithm>
#include <functional>

#include "hosts/script/Protocol.h"
#include "hosts/script/Snapshot.h"
#include "shell/VRN_MethodEditor.h"
#include "text/Ansi.h"

namespace vrn::script {

namespace {

using Tell = std::function<void(const std::string& text, const std::string& title, std::int32_t flags)>;

// Shows message boxes by telling of them.
class ToldMessageBox final : public errors::MessageBoxService {
  public:
    explicit ToldMessageBox(Tell tell) : tell_(std::move(tell)) {}
    std::int32_t MessageBoxExA(std::intptr_t /*hWnd*/, const std::string& text, const std::string& caption,
                               std::int32_t flags) override {
        tell_(text::fromAnsi(text), text::fromAnsi(caption), flags);
        return errors::buttonOk;
    }
    errors::ErrorState lastError() override { return {}; }
    void fallback(const std::string& text, const std::string& caption, std::int32_t style) override {
        tell_(text, caption, style);
    }

  private:
    Tell tell_;
};

void requireDone(controls::UserRequest outcome, const controls::Control& control) {
    if (outcome == controls::UserRequest::NotUsable) {
        refuseUse(control.name(), control.visible());
    }
    if (outcome == controls::UserRequest::NoSuchEntry) {
        refuseEntry(control.name());
    }
}

template <typename Control>
Control& named(const std::string& name, std::initializer_list<Control*> controls) {
    return **std::find_if(controls.begin(), controls.end(),
                          [&](const Control* control) { return control->name() == name; });
}

}  // namespace

class ScriptHost::Session final : public Operations {
  public:
    explicit Session(services::Services services) : editor_(withTold(std::move(services))) {
        editor_.onMethodEditorError([this](const errors::MethodEditorErrorArguments& error) { tellError(error); });
    }

    void SetXmlDocuments(const std::string& macros, const std::string& objects, const std::string& method,
                         const std::string& config) override {
        editor_.SetXmlDocuments(macros, objects, method, config);
    }
    std::optional<std::string> GetMethodXml() override {
        const auto method = editor_.GetMethodXml();
        return method ? std::optional(method->xml()) : std::nullopt;
    }
    bool MethodIsChanged() override { return editor_.MethodIsChanged(); }
    void MethodIsChanged(bool value) override { editor_.MethodIsChanged(value); }
    void DisableMethod(bool value) override { editor_.DisableMethod(value); }
    void DisableDescription(bool value) override { editor_.DisableDescription(value); }
    void DisableSyringe(bool value) override { editor_.DisableSyringe(value); }
    std::string AuditTrail() override { return editor_.AuditTrail(); }
    void refreshControls() override { editor_.refreshControls(); }

    void select(const std::string& control, int index) override {
        auto& list = listNamed(control);
        requireDone(list.userSelect(index), list);
    }
    void select(const std::string& control, const std::string& text) override {
        auto& list = listNamed(control);
        requireDone(list.userSelect(list.indexOf(text)), list);
    }
    void click(const std::string& control) override {
        auto& ui = editor_.state();
        auto& button =
            named<controls::Button>(control, {&ui.cmdInsert, &ui.cmdReplace, &ui.cmdDelete, &ui.cmdDefCycle});
        requireDone(button.userClick(), button);
    }
    void type(const std::string& text) override {
        auto& box = editor_.state().txtMethodDescription;
        requireDone(box.userType(text), box);
    }
    void edit(int row, const std::string& text, bool commit) override {
        auto& grid = editor_.state().grdMacro;
        requireDone(grid.userEdit(row, text, commit), grid);
    }
    std::optional<std::vector<std::string>> menu(int row, int position) override {
        auto& ui = editor_.state();
        requireDone(ui.grdMacro.userMouseDown(row, position), ui.grdMacro);
        return ui.mnuUserIndex.shown() ? std::optional(ui.mnuUserIndex.captions()) : std::nullopt;
    }
    void choose(int index) override {
        auto& popup = editor_.state().mnuUserIndex;
        if (!popup.shown()) {
            refuseMenu();
        }
        requireDone(popup.userChoose(index), popup);
    }
    void closeMenu() override { editor_.state().mnuUserIndex.close(); }
    Json state() override { return snapshot(editor_.state()); }

  private:
    services::Services withTold(services::Services services) {
        services.messageBox =
            std::make_shared<ToldMessageBox>([this](const std::string& text, const std::string& title,
                                                    std::int32_t flags) { tellMessageBox(text, title, flags); });
        return services;
    }

    controls::ItemList& listNamed(const std::string& name) {
        auto& ui = editor_.state();
        return named<controls::ItemList>(name, {&ui.lstMethodMacroList, &ui.cboSelectedMacro, &ui.cboSyringe});
    }

    shell::VRN_MethodEditor editor_;
};

ScriptHost::ScriptHost(services::Services services) : session_(std::make_unique<Session>(std::move(services))) {}

ScriptHost::~ScriptHost() = default;

std::string ScriptHost::handle(std::string_view line) noexcept { return answer(*session_, line); }

void ScriptHost::run(std::istream& in, std::ostream& out) { answerLines(*session_, in, out); }

}  // namespace vrn::script
