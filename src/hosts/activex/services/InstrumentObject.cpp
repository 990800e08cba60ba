#include "hosts/activex/services/InstrumentObject.h"

namespace vrn::activex {

namespace {

// "Empty" is how a script says that it has nothing to say.
bool isNothing(const com::Variant& value) {
    const auto type = value.get().vt;
    return type == VT_EMPTY || type == VT_NULL || ((type & VT_ARRAY) != 0 && value.get().parray == nullptr);
}

}  // namespace

void InstrumentObject::UnitInfo(const std::string& unitCode, std::string& unitText, std::int32_t& unitFactor) {
    const com::Variant code(unitCode);
    com::Variant text(std::string_view{});
    com::Variant factor(std::int32_t{1});
    object_.call(L"UnitInfo", {code.get(), com::byReference(text), com::byReference(factor)});
    unitText = isNothing(text) ? std::string() : com::textOf(text);
    unitFactor = isNothing(factor) ? 1 : com::numberOf(factor);
}

void InstrumentObject::UnitPair(const std::string& code, std::string& first, std::string& second) {
    const com::Variant key(code);
    com::Variant one(first);
    com::Variant two(second);
    object_.call(L"UnitPair", {key.get(), com::byReference(one), com::byReference(two)});
    first = isNothing(one) ? std::string() : com::textOf(one);
    second = isNothing(two) ? std::string() : com::textOf(two);
}

std::optional<std::vector<std::string>> InstrumentObject::ObjectNames(const std::string& key) {
    const com::Variant category(key);
    const auto names = object_.call(L"ObjectNames", {category.get()});
    if (isNothing(names)) {
        return std::nullopt;
    }
    return com::textsOf(names);
}

}  // namespace vrn::activex
