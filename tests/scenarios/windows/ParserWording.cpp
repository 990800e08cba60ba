// Code, reason and place of a parse error are MSXML's own here, and which of them are filled depends on its version. The
// record of a prohibited DTD is the editor's: it stays.
#include "scenarios/ParserWording.h"

namespace vrn::test {

std::string withoutParserWording(std::string reply) {
    // As JSON writes them.
    const std::string first = R"(\r\nError:   )";
    const std::string last = "URL:     ";
    for (auto at = reply.find(first); at != std::string::npos; at = reply.find(first, at + 1)) {
        const auto end = reply.find(last, at);
        if (end != std::string::npos && reply.substr(at, end - at).find("DTD is prohibited.") == std::string::npos) {
            reply.erase(at, end - at);
        }
    }
    return reply;
}

}  // namespace vrn::test
