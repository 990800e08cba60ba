#include "shell/VRN_MethodEditor.h"

#include <utility>

#include "audit/AuditTrail.h"
#include "catalogue/CxmlValuesHandler.h"
#include "catalogue/Validation.h"
#include "editing/Selection.h"
#include "editing/SequenceEditing.h"
#include "editing/ValueMenu.h"
#include "method/DocumentSet.h"
#include "method/Enabling.h"
#include "method/MethodWriter.h"
#include "method/Timestamps.h"
#include "text/Ansi.h"

namespace vrn::shell {

namespace {

constexpr int gridRowHeight = 175;  // the grid's default, in its own units

}  // namespace

VRN_MethodEditor::VRN_MethodEditor(services::Services services) : state_(std::make_unique<method::EditorState>()) {
    state_->services = services::withEmbeddedDefaults(std::move(services));
    // What every procedure relies on. Short of memory for it there is no editor, rather than one that fails later.
    state_->xmlValues = std::make_shared<catalogue::CxmlValuesHandler>(state_->services);
    UserControl_Initialize();
    wireControls();
    wireGrid();
}

VRN_MethodEditor::~VRN_MethodEditor() = default;

void VRN_MethodEditor::UserControl_Initialize() noexcept {
    method::standardHandler(*state_, "UserControl_Initialize ", [&] {
        font_ = fontRuleFor(state_->services.locale->systemDefaultLcid());
        state_->cmdDefCycle.setVisible(false);
        state_->cmdDefCycle.setEnabled(false);
        state_->txtToolTip.setVisible(false);
        state_->lblCycleDateChanged.setVisible(false);
        state_->grdMacro.setHeader("Parameter", "Value");
        state_->grdMacro.setDefaultRowHeight(gridRowHeight);
        method::CleanGrdMacro(*state_);
    });
}

void VRN_MethodEditor::wireControls() {
    auto& state = *state_;
    state.txtMethodDescription.onChange = [&state] { state.IsChanged = true; };
    state.lstMethodMacroList.onClick = [&state] { editing::lstMethodMacroList_Click(state); };
    state.lstMethodMacroList.onMouseDown = [&state](int button, int shift, float x, float y) {
        editing::lstMethodMacroList_MouseDown(state, button, shift, x, y);
    };
    state.cboSelectedMacro.onClick = [&state] { editing::cboSelectedMacro_Click(state); };
    state.cboSyringe.onUserChange = [&state] { editing::cboSyringe_click(state); };
    state.cmdInsert.onClick = [&state] { editing::cmdInsert_Click(state); };
    state.cmdReplace.onClick = [&state] { editing::cmdReplace_Click(state); };
    state.cmdDelete.onClick = [&state] { editing::cmdDelete_Click(state); };
    state.cmdDefCycle.onClick = [&state] { editing::cmdDefCycle_Click(state); };
}

void VRN_MethodEditor::wireGrid() {
    auto& state = *state_;
    state.grdMacro.onSetEditText = [&state](int row, std::string& text) {
        catalogue::grdMacro_OnSetEditText(state, row, text);
    };
    state.grdMacro.onValidate = [&state] { return catalogue::grdMacro_OnValidate(state); };
    state.grdMacro.onMouseDown = [&state](int position) { editing::grdMacro_OnMouseDown(state, position); };
    state.grdMacro.onMouseMove = [&state](int row) {
        // The event procedure passes failures on; here, at the control's border, they become the event.
        method::standardHandler(state, "grdMacro_OnMouseMove ", [&] { editing::grdMacro_OnMouseMove(state, row); });
    };
    state.fraArgument.onMouseMove = [&state] { editing::HideToolTip(state); };
    state.fraMethodEditor.onMouseMove = [&state] { editing::HideToolTip(state); };
    state.mnuUserIndex.onChoose = [&state](int index) { editing::mnuIndexItem_Click(state, index); };
}

void VRN_MethodEditor::refreshControls() noexcept {
    method::standardHandler(*state_, "refreshControls ", [&] {
        for (auto* const control : state_->controlCollection) {
            const auto kind = control->kind();
            if (kind == controls::ControlKind::TextBox || kind == controls::ControlKind::Frame) {
                // Going to flat and back forces the border to be drawn again.
                control->setAppearance(0);
                control->setAppearance(1);
                control->repaint();
            }
        }
        state_->grdMacro.repaint();
        state_->fraMethodEditor.repaint();
    });
}

void VRN_MethodEditor::SetXmlDocuments(std::string_view domMacros, std::string_view domlatestKex,
                                       std::string_view domMethod, std::string_view domConfig) noexcept {
    method::SetXmlDocuments(*state_, domMacros, domlatestKex, domMethod, domConfig);
}

std::optional<xml::Document> VRN_MethodEditor::GetMethodXml() noexcept { return method::GetMethodXml(*state_); }

bool VRN_MethodEditor::MethodIsChanged() {
    state_->IsChanged = false;
    // The build takes what the user has entered and sets the flag for it. Where no document comes of it, that is the answer:
    // a host that asks before it closes must not lose an entry that could not be stored.
    if (const auto built = method::BuildMethod(*state_)) {
        const auto& baseline = state_->domMethodBaseline;
        state_->IsChanged = !baseline.equals(*built) && !text::equalInAnsi(baseline.xml(), built->xml());
    }
    return state_->IsChanged;
}

void VRN_MethodEditor::MethodIsChanged(bool value) noexcept {
    state_->IsChanged = value;
    state_->booBaselineLoaded = value;
}

void VRN_MethodEditor::DisableMethod(bool value) { method::DisableMethod(*state_, value); }

void VRN_MethodEditor::DisableDescription(bool value) {
    state_->txtMethodDescription.setEnabled(!value);
    if (!value) {
        method::UpdateCycleDateLabel(*state_, state_->domMethod);
    }
}

void VRN_MethodEditor::DisableSyringe(bool value) {
    errors::rethrowing("vrnMethodEditor.VRN_MethodEditor.Let.ChangeSyrSize ", [&] {
        state_->booDisableSyringe = value;
        state_->cboSyringe.setEnabled(!value);
    });
}

std::string VRN_MethodEditor::AuditTrail() noexcept { return audit::AuditTrail(*state_); }

void VRN_MethodEditor::onMethodEditorError(errors::MethodEditorErrorEvent::Handler handler) {
    state_->MethodEditorError.connect(std::move(handler));
}

}  // namespace vrn::shell
