#include "audit/AuditTrail.h"

#include "audit/ChangeDetection.h"
#include "method/Format.h"
#include "method/MethodWriter.h"
#include "method/Timestamps.h"
#include "text/Ansi.h"

namespace vrn::audit {

namespace {

constexpr std::string_view rootName = "MethodAuditTrail";

// The root's child of this name; it and the root are made when they are missing.
xml::Node childOfRoot(const method::EditorState& state, const xml::Document& audit, std::string_view element) {
    const auto path = std::string(rootName) + "/" + std::string(element);
    if (auto found = audit.selectSingleNode(path)) {
        return found;
    }
    if (!audit.selectSingleNode(rootName)) {
        Create_Node(state, audit, rootName);
    }
    const auto fragment = audit.createDocumentFragment();
    (void)fragment.appendChild(audit.createElement(element));
    (void)audit.documentElement().appendChild(fragment);
    return audit.selectSingleNode(path);
}

void addCycle(const method::EditorState& state, const xml::Document& audit) {
    std::string newName;
    bool changed = false;
    Cycle_name_changed(state, newName, changed);
    if (changed) {
        Add_Node_To_MethodAuditTrail(state, audit, "Cycle", "name", newName);
    }
    const auto oldDate = method::Timestamp(state, method::format::root.path, state.domMethodBaseline.node());
    const auto newDate = method::CatalogueTimestamp(state, state.cboSelectedMacro.text());
    if (!text::equalInAnsi(oldDate, newDate)) {
        Add_Node_To_MethodAuditTrail(state, audit, "Cycle", "date", newDate);
    }
}

void addSyringe(const method::EditorState& state, const xml::Document& audit) {
    std::string newSize;
    bool changed = false;
    Syringe_size_changed(state, newSize, changed);
    if (changed) {
        Add_Node_To_MethodAuditTrail(state, audit, "Syringe", "size", newSize);
    }
}

}  // namespace

std::string AuditTrail(method::EditorState& state) noexcept {
    return method::standardHandler(state, "AuditTrail ", [&] {
        state.domNewMethod = method::BuildMethod(state);
        const auto audit = Create_AuditTrail(state);
        if (!audit) {
            // Nothing to compare into, and nothing to serialise.
            errors::throwObjectNotSet();
        }
        addCycle(state, *audit);
        addSyringe(state, *audit);
        Update_param_changes(state, *audit);
        return audit->xml();
    });
}

std::string AuditTrailAgainst(method::EditorState& state, const xml::Document& baseline) noexcept {
    state.domMethodBaseline = baseline;
    return AuditTrail(state);
}

std::optional<xml::Document> Create_AuditTrail(const method::EditorState& state) noexcept {
    return method::standardHandler(state, "Create_AuditTrail ", [&] {
        xml::Document audit;
        const auto declaration = audit.createProcessingInstruction("xml", R"(version="1.0" encoding="UTF-8")");
        (void)audit.node().insertBefore(declaration, audit.node().firstChild());
        (void)audit.node().appendChild(audit.createElement(rootName));
        return std::optional(std::move(audit));
    });
}

void Add_Node_To_MethodAuditTrail(const method::EditorState& state, const xml::Document& audit,
                                  std::string_view element, std::string_view attribute,
                                  std::string_view value) noexcept {
    method::standardHandler(state, "Add_Node_To_MethodAuditTrail ",
                            [&] { childOfRoot(state, audit, element).setAttribute(attribute, value); });
}

void Add_Param_To_MethodAuditTrail(const method::EditorState& state, const xml::Document& audit, std::string_view name,
                                   std::string_view value) noexcept {
    method::standardHandler(state, "Add_Param_To_MethodAuditTrail ", [&] {
        const auto parameters = childOfRoot(state, audit, "MethodParameters");
        const auto parameter = audit.createElement("Parameter");
        parameter.setAttribute("name", name);
        parameter.setAttribute("value", value);
        (void)parameters.appendChild(parameter);
    });
}

void Create_Node(const method::EditorState& state, const xml::Document& audit, std::string_view element) noexcept {
    method::standardHandler(state, "Create_Node ",
                            [&] { (void)audit.node().appendChild(audit.createElement(element)); });
}

}  // namespace vrn::audit
