// The fingerprint of a method's timing.
#include <algorithm>
#include <set>
#include <utility>

#include "catalogue/Indexes.h"
#include "method/Format.h"
#include "method/MethodWriter.h"
#include "method/ParameterIndexes.h"
#include "method/Verification.h"
#include "text/Lists.h"

namespace vrn::method {

namespace {

// The first parenthesised argument of an atom that only waits; "" for any other atom.
std::string waitArgument(const std::string& atom) {
    if (!text::contains(atom, "SET_BUSY") && !text::contains(atom, "WAIT_OVL")) {
        return {};
    }
    const auto open = atom.find('(');
    const auto close = open == std::string::npos ? open : atom.find(')', open);
    return close == std::string::npos ? std::string() : atom.substr(open, close - open + 1);
}

// The listed positions that the step has, once each: the lines of all embedded macros are searched, the step has few values.
std::vector<std::string> positionsWithin(const std::vector<std::string>& indexes, std::ptrdiff_t items) {
    std::vector<bool> listed(static_cast<std::size_t>(items));
    for (const auto& index : indexes) {
        if (const auto position = std::stol(index); position < items) {
            listed[static_cast<std::size_t>(position)] = true;
        }
    }
    std::vector<std::string> positions;
    for (std::size_t i = 0; i < listed.size(); ++i) {
        if (listed[i]) {
            positions.push_back(std::to_string(i));
        }
    }
    return positions;
}

// The step without the values at these positions.
std::string withoutValues(const std::string& step, const std::vector<std::string>& indexes) {
    const auto open = step.find('(');
    const auto close = step.rfind(')');
    if (open == std::string::npos || close == std::string::npos) {
        return step;
    }
    const auto items = std::count(step.begin() + static_cast<std::ptrdiff_t>(open), step.end(), ',') + 1;
    const auto positions = positionsWithin(indexes, items);
    if (positions.empty()) {
        return step;
    }
    // The routine wants an item list that ends with its separator, and takes it away but where the last value itself is cut.
    auto reduced = RemoveParamIndexFromMacroValues(step.substr(0, close) + ",)", positions);
    if (positions.back() == std::to_string(items - 1) && reduced.ends_with(",)")) {
        reduced.erase(reduced.size() - 2, 1);
    }
    return reduced;
}

}  // namespace

std::string AddTimingInformationID(EditorState& state, const xml::Document& method, MethodSigner& signer) noexcept {
    return standardHandler(state, "AddTimingInformationID ", [&] {
        xml::Document reduced;
        reduced.load(method);
        const auto root = reduced.documentElement();
        if (const auto version = root.child(format::version.name())) {
            root.removeChild(version);
        }
        std::set<std::string> arguments;
        for (const auto& atom : catalogue::childrenNamed(root.child(format::atoms.name()), format::atom.name())) {
            if (auto argument = waitArgument(atom.text()); !argument.empty()) {
                arguments.insert(std::move(argument));
            }
        }
        std::vector<std::string> indexes;
        if (!arguments.empty()) {
            const MacroDataLines lines(reduced);
            for (const auto& argument : arguments) {
                const auto positions = PositionsInMacroData(lines, argument, 1);
                indexes.insert(indexes.end(), positions.begin(), positions.end());
            }
        }
        if (const auto step = root.selectSingleNode(format::step.belowRoot())) {
            step.setText(withoutValues(step.text(), indexes));
        }
        return signer.fingerprint(reduced);
    });
}

}  // namespace vrn::method
