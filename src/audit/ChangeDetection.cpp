#include "audit/ChangeDetection.h"

#include <algorithm>

#include "audit/AuditTrail.h"
#include "method/Format.h"
#include "text/Lists.h"

namespace vrn::audit {

namespace format = method::format;

namespace {

std::string textOf(const std::optional<xml::Document>& method, const format::Element& element) {
    return method ? format::textOf(*method, element).value_or("") : std::string();
}

template <typename Reader>
void compareReadings(const method::EditorState& state, Reader&& reader, std::string& newText, bool& changed) {
    auto now = reader(state, state.domNewMethod);
    if (reader(state, std::optional(state.domMethodBaseline)) != now) {
        changed = true;
        newText = std::move(now);
    }
}

}  // namespace

std::string Cycle_name(const method::EditorState& state, const std::optional<xml::Document>& method) noexcept {
    return method::standardHandler(state, "Cycle_name ",
                                   [&] { return std::string(format::comparedName(textOf(method, format::step))); });
}

std::string Syringe_size(const method::EditorState& state, const std::optional<xml::Document>& method) noexcept {
    return method::standardHandler(state, "Syringe_size ", [&] { return textOf(method, format::syringeSize); });
}

std::string Params_List(const method::EditorState& state, const std::optional<xml::Document>& method) noexcept {
    return method::standardHandler(state, "Params_List ",
                                   [&] { return format::comparedValues(textOf(method, format::step)); });
}

std::string Param_name(const method::EditorState& state, const xml::Node& line) noexcept {
    return method::standardHandler(state, "Param_name ",
                                   [&] { return line ? std::string(text::before(line.text(), ";")) : std::string(); });
}

void Cycle_name_changed(const method::EditorState& state, std::string& newName, bool& changed) noexcept {
    method::standardHandler(state, "Cycle_name_changed ",
                            [&] { compareReadings(state, Cycle_name, newName, changed); });
}

void Syringe_size_changed(const method::EditorState& state, std::string& newSize, bool& changed) noexcept {
    method::standardHandler(state, "Syringe_size_changed ",
                            [&] { compareReadings(state, Syringe_size, newSize, changed); });
}

void Update_param_changes(const method::EditorState& state, const xml::Document& audit) noexcept {
    method::standardHandler(state, "Update_param_changes ", [&] {
        Compare_params(state, audit, Params_List(state, state.domMethodBaseline),
                       Params_List(state, state.domNewMethod));
    });
}

void Compare_params(const method::EditorState& state, const xml::Document& audit, const std::string& oldList,
                    const std::string& newList) noexcept {
    method::standardHandler(state, "Compare_params ", [&] {
        const auto oldItems = text::split(oldList, ",");
        const auto newItems = text::split(newList, ",");
        if (newItems.empty()) {
            return;
        }
        // The line at the position of the value: lines and values are walked together.
        auto line = state.domNewMethod ? state.domNewMethod->selectSingleNode(format::cycleLine.path) : xml::Node();
        for (std::size_t i = 0; i < std::max(oldItems.size(), newItems.size()); ++i) {
            if (i >= newItems.size()) {
                errors::throwSubscriptOutOfRange();
            }
            const bool changed = i >= oldItems.size() || newItems[i] != oldItems[i];
            if (changed && !newItems[i].empty()) {
                Add_Param_To_MethodAuditTrail(state, audit, Param_name(state, line), newItems[i]);
            }
            if (line) {
                line = line.nextOfSameName();
            }
        }
    });
}

}  // namespace vrn::audit
