#include "text/Ansi.h"

#include <algorithm>

namespace vrn::text {

namespace {

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

bool equalInAnsi(std::string_view a, std::string_view b) {
    // Equal texts are equal in any code page, and pure ASCII is its own conversion: most calls end here.
    if (a == b) {
        return true;
    }
    if (isAscii(a) && isAscii(b)) {
        return false;
    }
    return toAnsi(a) == toAnsi(b);
}

}  // namespace vrn::text
