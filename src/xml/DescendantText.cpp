#include "xml/DescendantText.h"

#include <algorithm>

#include "text/Unicode.h"

namespace vrn::xml {

void DescendantText::addCData(std::string_view content) {
    keepFrom_ = std::min(keepFrom_, text_.size());
    text_ += content;
    keepTo_ = text_.size();
}

std::string DescendantText::trimmed() && {
    std::size_t end = text_.size();
    while (end > keepTo_ && text::isXmlSpace(text_[end - 1])) {
        --end;
    }
    text_.resize(end);
    std::size_t start = 0;
    while (start < std::min(end, keepFrom_) && text::isXmlSpace(text_[start])) {
        ++start;
    }
    text_.erase(0, start);
    return std::move(text_);
}

}  // namespace vrn::xml
