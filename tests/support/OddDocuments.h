// A document set full of what libraries treat differently when a document passes through them: white space at the ends of texts and
// alone, carriage returns, CDATA sections, ends of sections, comments within texts, characters beyond the basic plane.
#pragma once

#include <string>

#include "support/Documents.h"

namespace vrn::test {

inline std::string cdata(const std::string& text) { return "<![CDATA[" + text + "]]>"; }

/// Its method is of version 01, which is read as it stands.
inline DocumentTexts oddSet() {
    const auto blanks = cdata("  ");
    const auto oddMacro =
        macro(cdata(" ODD "),
              {"a&#13;b;1;0;9", cdata(" edge ") + "&#13;;x", blanks, cdata("]]") + "&gt;&#13;" + cdata(" "),
               "&#13;<!-- c -->a" + cdata("b "), "&#x1F600;&#13;&#13; &#x1F680;" + cdata("\t")},
              {blanks, cdata("\t"), cdata(" SET_BUSY(a) "), "&#32;", "x&#13;&#10;y"});
    const std::vector<std::string> lines{"&#32;",    blanks,    cdata("\t"), cdata(" a ") + "&#13;",
                                         "&#9;",     "b&#13;c", "&#13;",     "d &#10; e",
                                         "",         cdata(""), "&#xA0;",    "&amp;lt;",
                                         "&#x1F600;"};
    const std::string steps =
        element("MacroValues", cdata(" ODD (1, ,\t,&#13;,") + "]]&gt;,&#13;" + cdata(",  SL.a\t,SL.b)")) +
        element("MacroValues", cdata(" ODD ") + "(&#32;,&#13;,&#13;&#10;,,SL.&#x1F600;, )") +
        element("MacroValues", "PLAIN( )");
    return {catalogue(oddMacro + macro("PLAIN", {"Text"})),
            objectList(object("SYRINGE", cdata(" 10uL ")) + object("SYRINGE", blanks)),
            element("Method", element("VERSION", "01") + element("Description", elements("DescriptionLine", lines)) +
                                  element("Syringe", element("SyringeSize", cdata(" 10uL "))) +
                                  element("Macros", element("MacroVariable", steps))),
            configuration(category(cdata(" UL "), {"SL.a"}) + category(blanks, {"SL.b", cdata("SL.c ")}))};
}

}  // namespace vrn::test
