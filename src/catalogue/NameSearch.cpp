#include "catalogue/NameSearch.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "errors/Error.h"
#include "text/Lists.h"

namespace vrn::catalogue {

namespace {

// Calls `meet` with every piece of the text that may be one of these names.
template <typename Meet>
void forEachPiece(std::string_view text, const NameShapes& wanted, Meet&& meet) {
    for (std::size_t length = 1; length <= std::min(longestPlainName, text.size()); ++length) {
        for (std::size_t begin = 0; wanted.have(length) && begin + length <= text.size(); ++begin) {
            if (const auto piece = text.substr(begin, length); wanted.mayHave(piece)) {
                meet(piece);
            }
        }
    }
}

std::vector<std::size_t> walk(std::string remaining, const MacroIndex& macros) {
    std::vector<std::size_t> selected;
    for (std::size_t i = 0; i < macros.names().size(); ++i) {
        const auto& name = macros.names()[i];
        if (!name) {
            errors::throwObjectNotSet();
        }
        if (text::contains(remaining, *name)) {
            selected.push_back(i);
            text::replaceAll(remaining, *name, "");
        }
        if (remaining.starts_with(';')) {
            remaining.erase(0, 1);
        }
        if (remaining.empty()) {
            break;
        }
    }
    return selected;
}

// No name holds a separator, so each item of the text is searched for itself; taking a name out may form another one, which counts
// when it comes later in the catalogue.
std::vector<std::size_t> selectPiecewise(std::vector<std::string> items, const MacroIndex& macros) {
    std::map<std::size_t, std::vector<std::size_t>> waiting;  // items by the position of the macro whose name they hold
    const auto look = [&](std::size_t item, std::size_t from) {
        forEachPiece(items[item], macros.nameShapes(), [&](std::string_view piece) {
            if (const auto position = macros.position(piece); position && *position >= from) {
                waiting[*position].push_back(item);
            }
        });
    };
    for (std::size_t item = 0; item < items.size(); ++item) {
        look(item, 0);
    }
    std::vector<std::size_t> selected;
    while (!waiting.empty()) {
        const auto first = waiting.extract(waiting.begin());
        const auto& name = *macros.names()[first.key()];
        bool occurs = false;
        for (const auto item : first.mapped()) {
            // An item may have lost the name since, or wait for it twice.
            if (text::contains(items[item], name)) {
                occurs = true;
                text::replaceAll(items[item], name, "");
                look(item, first.key() + 1);
            }
        }
        if (occurs) {
            selected.push_back(first.key());
        }
    }
    return selected;
}

}  // namespace

std::vector<std::size_t> macrosNamedIn(const std::string& names, const MacroIndex& macros) {
    auto items = text::split(names, ";");
    const bool shortItems = std::all_of(items.begin(), items.end(),
                                        [](const std::string& item) { return item.size() <= longestPlainName; });
    if (!shortItems || !macros.namesArePlain()) {
        return walk(names, macros);
    }
    return selectPiecewise(std::move(items), macros);
}

std::string withoutContainedNames(const std::vector<std::string>& names) {
    const std::unordered_set<std::string_view> known(names.begin(), names.end());
    NameShapes shapes;
    for (const auto& name : names) {
        if (isPlainName(name)) {
            shapes.add(name);
        }
    }
    std::unordered_set<std::string_view> contained;
    std::string list;
    for (const auto& name : names) {
        const bool isContained = isPlainName(name) ? contained.contains(name) : text::contains(list, name);
        if (isContained) {
            continue;
        }
        list += (list.empty() ? "" : ";") + name;
        forEachPiece(name, shapes, [&](std::string_view piece) {
            if (const auto found = known.find(piece); found != known.end()) {
                contained.insert(*found);
            }
        });
    }
    return list;
}

}  // namespace vrn::catalogue
