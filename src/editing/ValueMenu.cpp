#include "editing/ValueMenu.h"

#include <optional>
#include <unordered_set>

#include "catalogue/CxmlValuesHandler.h"
#include "catalogue/ParameterDefinition.h"
#include "catalogue/ParameterGrid.h"
#include "text/Lists.h"
#include "text/Numbers.h"

namespace vrn::editing {

namespace {

constexpr std::string_view defaultMark = "Default: ";

// Entries once each, in the order in which they were added; empty ones are none.
class MenuItems {
  public:
    void addList(const std::string& list) {
        for (auto& item : text::split(list, ";")) {
            add(std::move(item));
        }
    }
    void add(std::string item) {
        if (!item.empty() && known_.insert(item).second) {
            items_.push_back(std::move(item));
        }
    }
    std::vector<std::string> take() { return std::move(items_); }

  private:
    std::vector<std::string> items_;
    std::unordered_set<std::string> known_;
};

void addUserDefinedNames(method::EditorState& state, MenuItems& items) {
    items.addList(state.xmlValues->SLObject("None"));
    items.addList(state.xmlValues->SLObject("FREE TEXT"));
}

void addObjectValues(method::EditorState& state, const catalogue::ParameterDefinition& definition, MenuItems& items) {
    for (std::size_t k = 1; k < definition.fields.size(); ++k) {
        items.addList(state.xmlValues->RetrieveValues(1, state.domlatestKex, state.domConfig, definition.fields[k]));
    }
    for (std::size_t k = 1; k < definition.fields.size(); ++k) {
        items.addList(state.xmlValues->SLObject(definition.fields[k]));
    }
    addUserDefinedNames(state, items);
}

void addPlainValues(method::EditorState& state, const catalogue::ParameterDefinition& definition, int row,
                    MenuItems& items) {
    // Tells the parser which configuration is meant; an empty key retrieves nothing.
    static_cast<void>(state.xmlValues->RetrieveValues(1, state.domlatestKex, state.domConfig, ""));
    items.addList(state.xmlValues->SLObject(catalogue::categoryKey(definition.fields[0])));
    addUserDefinedNames(state, items);
    const auto& param = state.arrMacroParams.at(static_cast<std::size_t>(row));
    if (param.defaultValue) {
        items.add(std::string(defaultMark) + text::shortestText(*param.defaultValue));
    }
}

// The definition of the parameter in a grid row, or none when the macro chosen in the catalogue has none for it.
std::optional<catalogue::ParameterDefinition> definitionOf(method::EditorState& state, int row) {
    const auto macro = state.xmlValues->macros(state.domMacros).find(state.cboSelectedMacro.text());
    const auto definitions = macro ? catalogue::definitionTexts(macro) : std::vector<std::string>();
    if (row < 1 || std::cmp_greater(row, definitions.size()) || row >= state.grdMacro.rowCount()) {
        return std::nullopt;
    }
    return catalogue::ParameterDefinition(definitions[static_cast<std::size_t>(row) - 1]);
}

std::vector<std::string> menuItems(method::EditorState& state, const catalogue::ParameterDefinition& definition,
                                   int row) {
    MenuItems items;
    if (catalogue::IsObjectPosition(state, row)) {
        addObjectValues(state, definition, items);
    } else {
        addPlainValues(state, definition, row, items);
    }
    return items.take();
}

}  // namespace

void grdMacro_OnMouseDown(method::EditorState& state, int position) noexcept {
    method::standardHandler(state, "grdMacro_OnMouseDown ", [&] {
        state.intMouseRow = static_cast<std::int16_t>(state.grdMacro.currentRow());
        const auto definition = definitionOf(state, state.intMouseRow);
        if (position < controls::Grid::menuFrom || position > controls::Grid::menuTo) {
            return;
        }
        state.mnuUserIndex.popUp(definition ? menuItems(state, *definition, state.intMouseRow)
                                            : std::vector<std::string>());
    });
}

void mnuIndexItem_Click(method::EditorState& state, int index) noexcept {
    method::standardHandler(state, "mnuIndexItem_Click ", [&] {
        const auto& caption = state.mnuUserIndex.captions().at(static_cast<std::size_t>(index));
        state.grdMacro.enterText(state.intMouseRow, text::replacedAll(caption, defaultMark, ""));
    });
}

void grdMacro_OnMouseMove(method::EditorState& state, int row) {
    errors::rethrowing("vrnMethodEditor.VRN_MethodEditor.grdMacro_OnMouseMove ", [&] {
        const bool overParameter = row >= 1 && row < state.grdMacro.rowCount();
        if (!overParameter) {
            state.txtToolTip.setVisible(false);
            return;
        }
        // While the menu is open its row is the one that counts.
        if (!state.mnuUserIndex.shown()) {
            state.intMouseRow = static_cast<std::int16_t>(row);
        }
        FillToolTipText(state, row);
    });
}

void FillToolTipText(method::EditorState& state, int row) {
    errors::rethrowing("vrnMethodEditor.VRN_MethodEditor.FillToolTipText ", [&] {
        const auto& hint = state.arrMacroParams.at(static_cast<std::size_t>(row)).text;
        state.txtToolTip.setText(hint);
        state.txtToolTip.setVisible(!hint.empty());
    });
}

void HideToolTip(method::EditorState& state) noexcept {
    method::standardHandler(state, "fraArgument_MouseMove ", [&] { state.txtToolTip.setVisible(false); });
}

}  // namespace vrn::editing
