#include "hosts/script/ScriptHost.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "catalogue/ParameterGrid.h"
#include "shell/VRN_MethodEditor.h"
#include "text/Ansi.h"

namespace vrn::script {

namespace {

// Shows a message box as an event of the reply.
class ReportedMessageBox final : public errors::MessageBoxService {
  public:
    using Report = std::function<void(const std::string& text, const std::string& title, std::int32_t flags)>;
    explicit ReportedMessageBox(Report report) : report_(std::move(report)) {}
    std::int32_t MessageBoxExA(std::intptr_t /*hWnd*/, const std::string& text, const std::string& caption,
                               std::int32_t flags) override {
        report_(text::fromAnsi(text), text::fromAnsi(caption), flags);
        return errors::buttonOk;
    }
    errors::ErrorState lastError() override { return {}; }
    void fallback(const std::string& text, const std::string& caption, std::int32_t style) override {
        report_(text, caption, style);
    }

  private:
    Report report_;
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

Json listJson(const controls::ItemList& list) {
    return {{"items", list.items()}, {"index", list.listIndex()}, {"enabled", list.enabled()}};
}

Json gridJson(const method::EditorState& state) {
    Json rows = Json::array();
    for (int row = 1; row < state.grdMacro.rowCount(); ++row) {
        const auto* const cells = state.grdMacro.row(row);
        const auto index = static_cast<std::size_t>(row);
        rows.push_back(
            {{"name", cells->name},
             {"value", cells->value},
             {"object", catalogue::IsObjectPosition(state, row)},
             {"hint", index < state.arrMacroParams.size() ? state.arrMacroParams[index].text : std::string()},
             {"items", cells->items()}});
    }
    return {{"enabled", state.grdMacro.enabled()}, {"rows", std::move(rows)}};
}

Json sequenceJson(const method::EditorState& state) {
    Json sequence = Json::array();
    for (const auto& entry : state.arrMethodMacros) {
        const bool hasValues = entry.MacroValues && !entry.MacroValues->empty();
        sequence.push_back(
            {{"MacroName", entry.MacroName}, {"MacroValues", hasValues ? Json(*entry.MacroValues) : Json()}});
    }
    return sequence;
}

// What a user could see and a debugger could read of an editor.
Json snapshot(const method::EditorState& state) {
    const auto enabled = [](const controls::Control& control) { return Json{{"enabled", control.enabled()}}; };
    return {{"IsChanged", state.IsChanged},
            {"booDisable", state.booDisable},
            {"booBaselineLoaded", state.booBaselineLoaded},
            {"booCycleDateChanged", state.booCycleDateChanged},
            {"txtMethodDescription",
             {{"text", state.txtMethodDescription.text()}, {"enabled", state.txtMethodDescription.enabled()}}},
            {"cboSyringe", listJson(state.cboSyringe)},
            {"cboSelectedMacro", listJson(state.cboSelectedMacro)},
            {"lstMethodMacroList", listJson(state.lstMethodMacroList)},
            {"cmdInsert", enabled(state.cmdInsert)},
            {"cmdReplace", enabled(state.cmdReplace)},
            {"cmdDelete", enabled(state.cmdDelete)},
            {"cmdDefCycle", {{"enabled", state.cmdDefCycle.enabled()}, {"visible", state.cmdDefCycle.visible()}}},
            {"lblCycleDateChanged",
             {{"text", state.lblCycleDateChanged.caption()}, {"visible", state.lblCycleDateChanged.visible()}}},
            {"grdMacro", gridJson(state)},
            {"arrMethodMacros", sequenceJson(state)},
            {"strAtomLine", state.strAtomLine}};
}

class ScriptHost final : public Operations {
  public:
    explicit ScriptHost(services::Services services) : editor_(withReportedBoxes(std::move(services))) {
        editor_.onMethodEditorError([this](const errors::MethodEditorErrorArguments& error) { reportError(error); });
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
    services::Services withReportedBoxes(services::Services services) {
        services.messageBox =
            std::make_shared<ReportedMessageBox>([this](const std::string& text, const std::string& title,
                                                        std::int32_t flags) { reportMessageBox(text, title, flags); });
        return services;
    }

    controls::ItemList& listNamed(const std::string& name) {
        auto& ui = editor_.state();
        return named<controls::ItemList>(name, {&ui.lstMethodMacroList, &ui.cboSelectedMacro, &ui.cboSyringe});
    }

    shell::VRN_MethodEditor editor_;
};

}  // namespace

std::unique_ptr<Operations> makeScriptHost(services::Services services) {
    return std::make_unique<ScriptHost>(std::move(services));
}

}  // namespace vrn::script
