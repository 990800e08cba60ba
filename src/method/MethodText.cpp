#include "method/MethodText.h"

namespace vrn::method {

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
