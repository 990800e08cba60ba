#include "method/DocumentSet.h"

#include <array>
#include <functional>
#include <optional>

#include "catalogue/CxmlValuesHandler.h"
#include "catalogue/ParameterGrid.h"
#include "method/Enabling.h"
#include "method/Format.h"
#include "method/MethodReader.h"
#include "method/MethodText.h"
#include "method/Timestamps.h"
#include "method/Verification.h"

namespace vrn::method {

namespace {

void clearScreen(EditorState& state) {
    state.grdMacro.discardEdit();
    state.mnuUserIndex.close();
    state.txtMethodDescription.setText({});
    state.strAtomLine.clear();
    state.cboSyringe.clear();
    state.cboSelectedMacro.clear();
    ResetSequence(state);
    CleanGrdMacro(state);
    ChangeGridTopRow(state);
    state.arrObjectPositions.assign(1, 0);
    state.strArgumentNames.assign(1, {});
}

// A document that cannot be parsed is shown to the user and disables the method; the others are loaded all the same.
bool reportParseError(EditorState& state, const xml::Document& document, std::string_view heading) {
    if (document.parseError().errorCode == 0) {
        return false;
    }
    messageBox(state, parseErrorReport(heading, document.parseError()), errors::styleError);
    DisableMethod(state, true);
    return true;
}

// One of the three documents around a method: taken over from its text, or kept when there is none. Hosts hand the same ones over
// with every method. Nothing changes these documents: one of the same text stays, with all that was looked up in it.
void takeDocument(EditorState& state, xml::Document& member, const std::optional<std::string_view>& text,
                  std::string_view heading) {
    if (text && (text->empty() || member.source() != *text)) {
        state.xmlValues->forget(member);
        member = xml::Document();
        if (!text->empty()) {
            member.loadXML(*text);
        }
    }
    reportParseError(state, member, heading);
}

void requireCatalogues(EditorState& state) {
    if (state.domMacros.hasChildNodes() && state.domlatestKex.hasChildNodes()) {
        return;
    }
    DisableMethod(state, true);
    state.MethodEditorError.raise(errors::emptyCatalogues, "Macros xml and/or Object List xml is empty",
                                  "SetXmlDocuments ");
}

void showEmptyMethod(EditorState& state) {
    state.domMethod.loadXML(format::emptyMethod());
    reportParseError(state, state.domMethod, "Error parsing method xml");
    catalogue::FillMacros(state);
    catalogue::fillSyringesize(state);
    EnableStepButtons(state, false);
}

void showVerified(EditorState& state, const VerificationResult& verification) {
    if (verification.code != 0) {
        state.MethodEditorError.raise(errors::vrnMethEdErrorInvalidXML, verification.errorText, "SetXmlDocuments ");
    } else if (verification.version == MethodVersion::Unsupported) {
        // Shown and then filled like a verified one: what a later version writes is readable as a rule.
        messageBox(state, "Unsupported document version :" + verification.unsupportedVersion, errors::styleInformation);
    }
}

void showMethod(EditorState& state, const std::function<bool()>& superseded) {
    const auto verification = VerifyLoadedMethod(state);
    showVerified(state, verification);
    if (superseded()) {
        return;
    }
    if (verification.code != 0) {
        state.domMethod = xml::Document();
    } else if (!state.booDisable) {
        state.cmdDefCycle.setEnabled(true);
    }
    state.cboSyringe.clear();
    state.lstMethodMacroList.clear();
    catalogue::fillSyringesize(state);
    catalogue::FillMacros(state);
    FillMethod(state);
}

void takeMethod(EditorState& state, std::string_view domMethod, const std::function<bool()>& superseded) {
    state.xmlValues->forget(state.domMethodBaseline);
    state.domMethod = xml::Document();
    state.domMethodBaseline = xml::Document();
    if (domMethod.empty()) {
        showEmptyMethod(state);
        return;
    }
    // Parsed once: method and baseline are one document until something is written into the method.
    state.domMethod.loadXML(domMethod);
    state.domMethodBaseline = state.domMethod;
    if (!reportParseError(state, state.domMethod, "Error parsing method xml")) {
        showMethod(state, superseded);
    }
}

// The texts of the documents around a method; none of one that stays.
struct SetTexts {
    std::optional<std::string_view> macros;
    std::optional<std::string_view> objectList;
    std::optional<std::string_view> configuration;
};

void takeDocuments(EditorState& state, const SetTexts& set, std::string_view domMethod) noexcept {
    standardHandler(state, "SetXmlDocuments ", [&] {
        // Messages and events reach the host, which may hand over other documents from there: the load begun last counts.
        const auto load = ++state.lngLoads;
        const auto superseded = [&state, load] { return state.lngLoads != load; };
        const std::array<std::function<void()>, 7> steps{
            [&] {
                DisableMethod(state, false);
                clearScreen(state);
                if (set.macros) {
                    state.xmlValues->forgetLastQuestion();
                }
            },
            [&] { takeDocument(state, state.domlatestKex, set.objectList, "Error parsing Latest_KEX.xml"); },
            [&] { takeDocument(state, state.domMacros, set.macros, "Error parsing Macro xml"); },
            [&] { requireCatalogues(state); },
            [&] { takeDocument(state, state.domConfig, set.configuration, "Error parsing config xml"); },
            [&] { takeMethod(state, domMethod, superseded); },
            [&] { UpdateCycleDateLabel(state, state.domMethod); },
        };
        for (const auto& step : steps) {
            step();
            if (superseded()) {
                return;
            }
        }
    });
}

}  // namespace

void SetXmlDocuments(EditorState& state, std::string_view domMacros, std::string_view domlatestKex,
                     std::string_view domMethod, std::string_view domConfig) noexcept {
    takeDocuments(state, {domMacros, domlatestKex, domConfig}, domMethod);
}

void SetMethod(EditorState& state, std::string_view domMethod) noexcept { takeDocuments(state, {}, domMethod); }

}  // namespace vrn::method
