// The work that no editor can avoid: the XML library alone on the same documents.
#pragma once

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <memory>
#include <string>
#include <vector>

#include "DocumentSets.h"

namespace vrn::bench {

using BareDocument = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;

[[nodiscard]] inline BareDocument bareParse(const std::string& text) {
    constexpr int options = XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    return {xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, "UTF-8", options), &xmlFreeDoc};
}

/// The documents of a load: the method counts twice, it is the baseline too.
[[nodiscard]] inline std::vector<BareDocument> bareLoad(const DocumentSet& set) {
    std::vector<BareDocument> documents;
    for (const auto* const text : {&set.objects, &set.macros, &set.configuration, &set.method, &set.method}) {
        documents.push_back(bareParse(*text));
    }
    return documents;
}

/// Parses and serialises one text; the size of what came out.
[[nodiscard]] inline int bareRoundTrip(const std::string& text) {
    const auto document = bareParse(text);
    xmlChar* out = nullptr;
    int size = 0;
    xmlDocDumpMemoryEnc(document.get(), &out, &size, "UTF-8");
    xmlFree(out);
    return size;
}

}  // namespace vrn::bench
