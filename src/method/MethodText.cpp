#include "method/MethodText.h"

#include <array>
#include <utility>

#include "text/Lists.h"

namespace vrn::method {

namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 5> entities{
    {{"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\"", "&quot;"}, {"'", "&apos;"}}};

}  // namespace

std::string emptyMethodTemplate() {
    return std::string(methodDeclaration) +
           "<Method>\r\n<Description>\r\n<DescriptionLine>  </DescriptionLine>\r\n</Description>\r\n<Syringe>\r\n"
           "<SyringeSize> </SyringeSize>\r\n</Syringe>\r\n<Macros>\r\n<MacroVariable>\r\n <MacroValues> </MacroValues>\r\n"
           "</MacroVariable>\r\n<MacroData>\r\n<MacroName> </MacroName>\r\n<MacroLine> </MacroLine>\r\n</MacroData>\r\n"
           "</Macros>\r\n</Method>\r\n";
}

std::string ConvertDescription(std::string text) {
    for (const auto& [character, entity] : entities) {
        text::replaceAll(text, character, entity);
    }
    return text;
}

std::string ReverseDescription(std::string text) {
    // "&amp;" last, so that an escaped entity comes back as it was written.
    for (std::size_t i = 1; i < entities.size(); ++i) {
        text::replaceAll(text, entities.at(i).second, entities.at(i).first);
    }
    text::replaceAll(text, entities[0].second, entities[0].first);
    return text;
}

std::string parseErrorReport(std::string_view heading, const xml::ParseError& error) {
    std::string report(heading);
    report += "\r\nError:   " + std::to_string(error.errorCode);
    report += "\r\nReason:  " + error.reason;
    report += "\r\nFilePos: " + std::to_string(error.filepos);
    report += "\r\nLine:    " + std::to_string(error.line);
    report += "\r\nLinePos: " + std::to_string(error.linepos);
    report += "\r\nSrcText: " + error.srcText;
    report += "\r\nURL:     " + error.url;
    return report;
}

}  // namespace vrn::method
