#include "XmlText.h"

namespace vrn::samples {

std::string escaped(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            case '\'':
                out += "&apos;";
                break;
            default:
                out += c;
        }
    }
    return out;
}

XmlText::XmlText() : text_("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") {}

XmlText& XmlText::open(std::string_view name) {
    indent();
    text_.append("<").append(name).append(">\n");
    path_.emplace_back(name);
    return *this;
}

XmlText& XmlText::close() {
    const std::string name = path_.back();
    path_.pop_back();
    indent();
    text_.append("</").append(name).append(">\n");
    return *this;
}

XmlText& XmlText::leaf(std::string_view name, std::string_view text, std::string_view attributes) {
    indent();
    text_.append("<").append(name);
    if (!attributes.empty()) {
        text_.append(" ").append(attributes);
    }
    text_.append(">").append(escaped(text)).append("</").append(name).append(">\n");
    return *this;
}

void XmlText::indent() { text_.append(2 * path_.size(), ' '); }

}  // namespace vrn::samples
