#include "conformance/Suite.h"

#include "conformance/Reading.h"
#include "errors/Error.h"

namespace vrn::test {

namespace {

void collect(const xml::Node& parent, const std::filesystem::path& base, std::vector<ConformanceCase>& cases) {
    for (const auto& node : parent.childNodes()) {
        if (node.name() == "TESTCASES") {
            collect(node, base / node.attribute("xml:base").value_or(""), cases);
        } else if (node.name() == "TEST") {
            cases.push_back({node.attribute("ID").value_or(""), node.attribute("TYPE").value_or(""),
                             node.attribute("VERSION").value_or("1.0"), node.attribute("EDITION").value_or(""),
                             node.attribute("NAMESPACE") != "no", base / node.attribute("URI").value_or("")});
        }
    }
}

// After what begins at `at` and ends with the mark.
std::size_t after(const std::string& text, std::string_view mark, std::size_t at) {
    const auto found = text.find(mark, at);
    return found == std::string::npos ? text.size() : found + mark.size();
}

std::size_t endOfDoctype(const std::string& text, std::size_t at) {
    int brackets = 0;
    while (at < text.size()) {
        const auto rest = std::string_view(text).substr(at);
        if (rest.starts_with("<!--")) {
            at = after(text, "-->", at + 4);
        } else if (rest.starts_with("<?")) {
            at = after(text, "?>", at);
        } else if (rest.front() == '"' || rest.front() == '\'') {
            at = after(text, rest.substr(0, 1), at + 1);
        } else {
            brackets += rest.front() == '[' ? 1 : rest.front() == ']' ? -1 : 0;
            ++at;
            if (rest.front() == '>' && brackets == 0) {
                return at;
            }
        }
    }
    return at;
}

}  // namespace

std::vector<ConformanceCase> conformanceCases(const std::filesystem::path& folder) {
    xml::Document list;
    if (!list.loadXML(withoutDoctype(textOf(folder / "cleaned" / "xmlconf-flattened.xml")))) {
        throw errors::Error(errors::number::invalidProcedureCall, "the suite's list: " + list.parseError().reason);
    }
    std::vector<ConformanceCase> cases;
    collect(list.documentElement(), folder / "xmlconf", cases);
    return cases;
}

std::string withoutDoctype(const std::string& text) {
    auto at = text.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
    while (at < text.size()) {
        const auto rest = std::string_view(text).substr(at);
        if (rest.starts_with("<!DOCTYPE")) {
            return text.substr(0, at) + text.substr(endOfDoctype(text, at + 2));
        }
        if (rest.starts_with("<!--")) {
            at = after(text, "-->", at + 4);
        } else if (rest.starts_with("<?")) {
            at = after(text, "?>", at);
        } else {
            break;
        }
        at = text.find_first_not_of(" \t\r\n", at);
    }
    return text;
}

}  // namespace vrn::test
