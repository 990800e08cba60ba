// All working data of one editor. There is no separate model: documents, the sequence, the parameter model of the shown macro,
// flags and child controls live side by side, and every procedure reads and writes them directly.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "controls/Control.h"
#include "controls/Grid.h"
#include "controls/ItemList.h"
#include "controls/Menu.h"
#include "errors/Handlers.h"
#include "services/Services.h"
#include "xml/Dom.h"

namespace vrn::catalogue {
class CxmlValuesHandler;
}

namespace vrn::method {

/// One step of the macro sequence.
struct MethodMacroEntry {
    std::string MacroName;
    /// One text per parameter in the catalogue's order; nothing when the step was read without values.
    std::optional<std::vector<std::string>> MacroValues;
};

/// One row of the parameter grid as validation sees it. A bound or default that the definition does not have is none.
struct MacroParam {
    std::string text;  ///< hint of the row
    std::optional<float> minimum;
    std::optional<float> maximum;
    std::optional<float> defaultValue;
    std::string field0;    ///< name with unit code, as the catalogue defines it
    bool anyText = false;  ///< the definition has a name only: every value will do
};

/// The one plain struct that every procedure works on.
struct EditorState {
    EditorState() = default;
    EditorState(const EditorState&) = delete;
    EditorState& operator=(const EditorState&) = delete;

    errors::MethodEditorErrorEvent MethodEditorError;
    services::Services services = services::embeddedServices();
    std::shared_ptr<catalogue::CxmlValuesHandler> xmlValues;  ///< the catalogue parser, for the editor's whole life

    // Documents.
    xml::Document domMethod;                    ///< the method as loaded
    xml::Document domMacros;                    ///< macro catalogue
    xml::Document domlatestKex;                 ///< object list
    xml::Document domConfig;                    ///< configuration
    xml::Document domMethodBaseline;            ///< the method as last handed over or taken back
    std::optional<xml::Document> domNewMethod;  ///< the method as the last read of the audit trail built it

    // Flags.
    bool IsChanged = false;
    bool booDisable = false;
    bool booDisableSyringe = false;
    bool booBaselineLoaded = false;
    bool booCycleDateChanged = false;
    bool booUpdating = false;           ///< a handler is rewriting list and grid
    bool booGridFromSequence = false;   ///< the grid shows a step
    bool booGridFromCatalogue = false;  ///< the grid shows a catalogue entry
    bool booListSelected = false;
    bool booMacroShown = false;
    /// The user changed a value since the grid was filled, and neither inserted nor replaced.
    bool booUnsavedEdits = false;

    std::uint32_t lngLoads = 0;  ///< how many loads have begun

    // The sequence: entry i is line i of the list. An empty sequence is one empty entry.
    std::vector<MethodMacroEntry> arrMethodMacros{1};
    std::vector<xml::Node> colMethodMacroValues;  ///< the steps as read; nothing reads it

    // Pieces of the method kept as XML text, and lists kept for it.
    std::string strAtomLine;
    std::string strSlConfig;
    std::string strUnits;  ///< units and object types of the macros that the last build used
    std::vector<std::string> strArgumentNames{1};

    // The parameter model of the shown macro: element k belongs to grid row k, element 0 to nothing.
    std::vector<MacroParam> arrMacroParams{1};
    std::vector<std::int16_t> arrObjectPositions{0};
    std::string strShownMacro;       ///< whose rows the grid holds
    std::int16_t intMouseRow = 0;    ///< the row under the mouse
    std::int32_t lngListMouseY = 0;  ///< twips

    // Child controls. The focus is the user's: whoever holds a pending edit is told before the user goes on elsewhere.
    controls::Focus focus;
    controls::Frame fraMethodEditor{"fraMethodEditor", nullptr};
    controls::Frame fraMethodDescription{"fraMethodDescription", &fraMethodEditor, "Description"};
    controls::TextBox txtMethodDescription{"txtMethodDescription", &fraMethodDescription, &focus};
    controls::Frame fraSyringe{"fraSyringe", &fraMethodEditor, "Syringe"};
    controls::ComboBox cboSyringe{"cboSyringe", &fraSyringe, &focus};
    controls::Frame fraMacroSequence{"fraMacroSequence", &fraMethodEditor, "Macro Sequence"};
    controls::ListBox lstMethodMacroList{"lstMethodMacroList", &fraMacroSequence, &focus};
    controls::Button cmdInsert{"cmdInsert", &fraMacroSequence, &focus, "&Insert "};
    controls::Button cmdReplace{"cmdReplace", &fraMacroSequence, &focus, "&Replace "};
    controls::Button cmdDelete{"cmdDelete", &fraMacroSequence, &focus, "&Delete "};
    controls::Frame fraAvailableCycles{"fraAvailableCycles", &fraMethodEditor, "Available Cycles"};
    controls::ComboBox cboSelectedMacro{"cboSelectedMacro", &fraAvailableCycles, &focus};
    controls::Button cmdDefCycle{"cmdDefCycle", &fraAvailableCycles, &focus, "Initial Cycle"};
    controls::Frame fraArgument{"fraArgument", &fraMethodEditor};
    controls::Grid grdMacro{"grdMacro", &fraArgument, &focus};
    controls::TextBox txtToolTip{"txtToolTip", &fraMethodEditor, &focus};
    controls::Label lblCycleDateChanged{"lblCycleDateChanged", &fraMethodEditor};
    controls::Menu mnuUserIndex{"mnuUserIndex"};

    /// The control collection, in its order.
    const std::vector<controls::Control*> controlCollection{&fraMethodEditor,
                                                            &fraMethodDescription,
                                                            &txtMethodDescription,
                                                            &fraSyringe,
                                                            &cboSyringe,
                                                            &fraMacroSequence,
                                                            &lstMethodMacroList,
                                                            &cmdInsert,
                                                            &cmdReplace,
                                                            &cmdDelete,
                                                            &fraAvailableCycles,
                                                            &cboSelectedMacro,
                                                            &cmdDefCycle,
                                                            &fraArgument,
                                                            &grdMacro,
                                                            &txtToolTip,
                                                            &lblCycleDateChanged,
                                                            &mnuUserIndex};
};

/// The standard handler for a procedure of this editor.
template <typename Body>
auto standardHandler(const EditorState& state, std::string_view procedure, Body&& body) noexcept {
    return errors::standardHandler(state.MethodEditorError, procedure, std::forward<Body>(body));
}

/// Shows a message with the editor's title.
inline void messageBox(const EditorState& state, std::string_view message, std::int32_t style) {
    errors::messageBox(*state.services.messageBox, 0, message, errors::messageBoxTitle, style);
}

/// Whether the sequence is the one empty entry that stands for none.
inline bool sequenceIsEmpty(const EditorState& state) { return state.lstMethodMacroList.count() == 0; }

}  // namespace vrn::method
