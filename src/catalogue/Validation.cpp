#include "catalogue/Validation.h"

#include "catalogue/Configuration.h"
#include "catalogue/ParameterGrid.h"
#include "text/Lists.h"
#include "text/Numbers.h"
#include "text/Unicode.h"

namespace vrn::catalogue {

namespace {

const method::MacroParam& paramOf(const method::EditorState& state, int row) {
    if (row < 1 || std::cmp_greater_equal(row, state.arrMacroParams.size())) {
        errors::throwSubscriptOutOfRange();
    }
    return state.arrMacroParams[static_cast<std::size_t>(row)];
}

Verdict check(method::EditorState& state, int row, const std::string& value) {
    if (IsObjectPosition(state, row)) {
        return Verdict::Accepted;
    }
    // A copy: the report of a malformed configuration reaches the host, which may load another method there.
    const auto param = paramOf(state, row);
    return checkValue(state, param, value);
}

std::string defaultText(const method::MacroParam& param) {
    return param.defaultValue ? text::shortestText(*param.defaultValue) : std::string();
}

std::string boundText(const std::optional<float>& bound) { return bound ? text::shortestText(*bound) : std::string(); }

std::string notANumberMessage(const std::string& name) {
    return "Parameter '" + name + "' has incorrect value.\r\n" +
           "Please enter a Value within the range or select one item from the popup menu.";
}

std::string outOfRangeMessage(const method::EditorState& state, const std::string& name, const std::string& value,
                              const method::MacroParam& param) {
    return "In macro " + state.cboSelectedMacro.text() + ", the parameter '" + name + "' with value of '" + value +
           "' is out of range.\r\nThe valid range is (" + boundText(param.minimum) + "-" + boundText(param.maximum) +
           ") .";
}

}  // namespace

Verdict checkValue(method::EditorState& state, const method::MacroParam& param, const std::string& value) {
    if (param.anyText || text::contains(text::upperCase(value), "SL.") ||
        ControlUserDef_Obj(state, param.field0, value)) {
        return Verdict::Accepted;
    }
    const auto separator = state.services.locale->decimalSeparator();
    const auto number = text::parseNumber(text::replacedAll(value, ".", separator), separator);
    if (!number) {
        return Verdict::NotANumber;
    }
    const auto single = static_cast<float>(*number);
    const bool outside = (param.maximum && single > *param.maximum) || (param.minimum && single < *param.minimum);
    return outside ? Verdict::OutOfRange : Verdict::Accepted;
}

bool ValidateParams(method::EditorState& state) {
    return errors::rethrowing("vrnMethodEditor.VRN_MethodEditor.ValidateParams ", [&] {
        if (state.booDisable) {
            return false;
        }
        for (int row = 1; row < state.grdMacro.rowCount(); ++row) {
            const auto value = state.grdMacro.cellText(row, 1);
            const auto verdict = check(state, row, value);
            if (verdict == Verdict::Accepted) {
                continue;
            }
            // The message runs a message loop in which the host may load another method: what is needed is copied before.
            const auto param = paramOf(state, row);
            const auto name = state.grdMacro.cellText(row, 0);
            messageBox(
                state,
                verdict == Verdict::NotANumber ? notANumberMessage(name) : outOfRangeMessage(state, name, value, param),
                errors::styleError);
            if (state.grdMacro.cellText(row, 0) == name && state.grdMacro.cellText(row, 1) == value) {
                state.grdMacro.setCellText(row, 1, defaultText(param));
            }
            return false;
        }
        return true;
    });
}

bool grdMacro_OnValidate(method::EditorState& state) noexcept {
    return standardHandler(state, "grdMacro_OnValidate ", [&] {
        if (!state.grdMacro.pendingEdit()) {
            return true;
        }
        if (state.booDisable) {
            return false;
        }
        const auto edit = *state.grdMacro.pendingEdit();
        if (check(state, edit.row, edit.text) != Verdict::Accepted) {
            messageBox(state, "The entered value is out of range.", errors::styleError);
            return false;
        }
        if (!state.grdMacro.pendingEdit()) {
            // The host has taken the edit away meanwhile.
            return false;
        }
        if (state.grdMacro.cellText(edit.row, 1) != edit.text) {
            state.IsChanged = true;
            state.booUnsavedEdits = true;
        }
        return true;
    });
}

void grdMacro_OnSetEditText(method::EditorState& state, int row, std::string& text) noexcept {
    standardHandler(state, "grdMacro_OnSetEditText ", [&] {
        const auto separator = state.services.locale->decimalSeparator();
        if (separator != "." && !paramOf(state, row).anyText && text::parseNumber(text, separator)) {
            text::replaceAll(text, separator, ".");
        }
    });
}

}  // namespace vrn::catalogue
