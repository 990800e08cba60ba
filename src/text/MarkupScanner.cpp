#include "text/MarkupScanner.h"

namespace vrn::text {

namespace {

std::size_t behind(std::string_view text, std::string_view mark, std::size_t from) noexcept {
    const std::size_t found = text.find(mark, from);
    return found == std::string_view::npos ? text.size() : found + mark.size();
}

}  // namespace

MarkupScanner::Place MarkupScanner::placeAt(std::size_t offset) noexcept {
    for (std::size_t end = endOfPlace(); end <= offset && end < text_.size(); end = endOfPlace()) {
        start_ = end;
        enterNext();
    }
    return place_;
}

// Where the next place begins. A tag without its attribute values is several places; each begins with its first byte.
std::size_t MarkupScanner::endOfPlace() const noexcept {
    std::size_t end = std::string_view::npos;
    switch (place_) {
        case Place::Text:
            end = text_.find('<', start_);
            break;
        case Place::Tag:
            end = text_.find_first_of("\"'>", start_);
            end = end == std::string_view::npos ? end : end + 1;
            break;
        case Place::AttributeValue:
            end = text_.find(quote_, start_);
            break;
        case Place::CData:
            return behind(text_, "]]>", start_);
        case Place::Comment:
            return behind(text_, "-->", start_ + 4);
        case Place::Instruction:
            return behind(text_, "?>", start_ + 2);
    }
    return end == std::string_view::npos ? text_.size() : end;
}

void MarkupScanner::enterNext() noexcept {
    const std::string_view rest = text_.substr(start_);
    if (place_ == Place::Tag) {
        const char last = text_[start_ - 1];
        quote_ = last;
        place_ = last == '>' ? Place::Text : Place::AttributeValue;
    } else if (place_ == Place::AttributeValue) {
        ++start_;  // the closing quote
        place_ = Place::Tag;
    } else if (place_ != Place::Text) {
        place_ = Place::Text;
    } else if (rest.starts_with("<!--")) {
        place_ = Place::Comment;
    } else if (rest.starts_with("<![CDATA[")) {
        place_ = Place::CData;
    } else {
        place_ = rest.starts_with("<?") ? Place::Instruction : Place::Tag;
    }
}

}  // namespace vrn::text
