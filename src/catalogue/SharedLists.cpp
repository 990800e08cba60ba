#include "catalogue/SharedLists.h"

#include <string_view>

#include "text/Lists.h"

namespace vrn::catalogue {

namespace {

// One list after another; an empty list adds nothing, an empty front list leaves its separator.
void appendList(std::string& list, const std::string& more) {
    if (!more.empty()) {
        list += ";" + more;
    }
}

}  // namespace

std::string TypeNames::text() const {
    if (!objects) {
        return {};
    }
    std::string list = *objects;
    appendList(list, *userDefined);
    if (freeText) {
        appendList(list, *freeText);
    }
    return list;
}

std::vector<std::string> itemsOf(const std::vector<TypeNames>& types) {
    std::string list;
    for (const auto& names : types) {
        if (const auto objects = names.text(); !text::contains(list, objects)) {
            list += ";" + objects;
        }
    }
    const auto begin = list.find_first_not_of(';');
    if (begin == std::string::npos) {
        return {};
    }
    return text::split(std::string_view(list).substr(begin, list.find_last_not_of(';') - begin + 1), ";");
}

}  // namespace vrn::catalogue
