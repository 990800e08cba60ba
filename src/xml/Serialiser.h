// XML text of a tree.
#pragma once

#include <string>
#include <string_view>

#include "xml/Dom.h"

namespace vrn::xml {

/// The node and all below it as XML text: no white space but the tree's, empty elements as `<a/>`, CR in text and CR,
/// LF, TAB in attributes as character references, and so the first character of a text that is white space only, so that a
/// parse gives an equal tree.
[[nodiscard]] std::string serialise(const Node& node);

/// Character data as it stands in XML text between tags: "&", "<", ">" and CR escaped, white-space-only text protected.
void appendEscapedText(std::string& out, std::string_view text);

/// A CDATA section; where the text holds "]]>" or CR it becomes more than one. A CR between other characters stands escaped in a
/// text with its neighbours: libraries drop layout, and some take what begins or ends with an escaped CR for it. A CR in
/// the white space at an end becomes LF.
void appendCData(std::string& out, std::string_view text);

/// A text as the content of an element, so that reading gives it back whichever library the document passes through: as
/// CDATA where its ends are white space, which reading would trim, and nothing for white space alone, which libraries drop.
void appendContent(std::string& out, std::string_view text);

}  // namespace vrn::xml
