#include "hosts/activex/form/TextPaint.h"

#include <algorithm>
#include <string>
#include <vector>

namespace vrn::activex {

namespace {

constexpr std::wstring_view ellipsis = L"...";

// The ends of the characters of a line, from its beginning.
std::vector<int> endsOf(HDC metrics, std::wstring_view line) {
    std::vector<int> ends(line.size());
    SIZE size{};
    if (!line.empty()) {
        GetTextExtentExPointW(metrics, line.data(), static_cast<int>(line.size()), 0, nullptr, ends.data(), &size);
    }
    return ends;
}

int widthOf(HDC metrics, std::wstring_view line) {
    const auto ends = endsOf(metrics, line);
    return ends.empty() ? 0 : ends.back();
}

std::wstring withoutMnemonics(std::wstring_view text) {
    std::wstring plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'&' && i + 1 < text.size()) {
            ++i;
        }
        plain.push_back(text[i]);
    }
    return plain;
}

std::wstring shortened(HDC metrics, std::wstring_view line, int width) {
    if (widthOf(metrics, line) <= width) {
        return std::wstring(line);
    }
    const auto ends = endsOf(metrics, line);
    const int left = width - widthOf(metrics, ellipsis);
    const auto fitting = std::upper_bound(ends.begin(), ends.end(), left) - ends.begin();
    return std::wstring(line.substr(0, static_cast<std::size_t>(fitting))).append(ellipsis);
}

// How much of a paragraph goes into a line: whole words, or as much as fits of a word that is longer than the line.
std::size_t lengthOfLine(HDC metrics, std::wstring_view paragraph, int width) {
    const auto ends = endsOf(metrics, paragraph);
    const auto fitting = static_cast<std::size_t>(std::upper_bound(ends.begin(), ends.end(), width) - ends.begin());
    if (fitting == paragraph.size()) {
        return fitting;
    }
    const auto blank = paragraph.find_last_of(L' ', fitting);
    return blank == std::wstring_view::npos || blank == 0 ? std::max<std::size_t>(fitting, 1) : blank;
}

std::vector<std::wstring_view> linesOf(HDC metrics, std::wstring_view text, int width) {
    std::vector<std::wstring_view> lines;
    for (std::size_t from = 0; from <= text.size();) {
        const auto end = std::min(text.find(L'\n', from), text.size());
        auto paragraph = text.substr(from, end - from);
        if (paragraph.ends_with(L'\r')) {
            paragraph.remove_suffix(1);
        }
        do {
            const auto length = lengthOfLine(metrics, paragraph, width);
            lines.push_back(paragraph.substr(0, length));
            paragraph.remove_prefix(length);
            if (paragraph.starts_with(L' ')) {
                paragraph.remove_prefix(1);
            }
        } while (!paragraph.empty());
        from = end + 1;
    }
    return lines;
}

// The places of the characters go with them, so that the line is as wide on every device that shows the metafile.
void drawLine(HDC context, HDC metrics, std::wstring_view line, POINT at, const RECT& clip) {
    auto steps = endsOf(metrics, line);
    for (std::size_t i = steps.size(); i > 1; --i) {
        steps[i - 1] -= steps[i - 2];
    }
    ExtTextOutW(context, at.x, at.y, ETO_CLIPPED, &clip, line.data(), static_cast<UINT>(line.size()), steps.data());
}

}  // namespace

bool isMetafile(HDC context) noexcept { return GetObjectType(context) == OBJ_METADC; }

void drawText(HDC context, HDC metrics, std::wstring_view text, RECT place, UINT format) {
    if (context == metrics) {
        DrawTextW(context, text.data(), static_cast<int>(text.size()), &place, format);
        return;
    }
    TEXTMETRICW font{};
    GetTextMetricsW(metrics, &font);
    const int width = static_cast<int>(place.right - place.left);
    const std::wstring shown = (format & DT_HIDEPREFIX) != 0 ? withoutMnemonics(text) : std::wstring(text);
    if ((format & DT_SINGLELINE) == 0) {
        for (const auto line : linesOf(metrics, shown, width)) {
            if (place.top >= place.bottom) {
                return;
            }
            drawLine(context, metrics, line, {place.left, place.top}, place);
            place.top += font.tmHeight;
        }
        return;
    }
    const auto line = (format & DT_END_ELLIPSIS) != 0 ? shortened(metrics, shown, width) : shown;
    POINT at{place.left, place.top};
    if ((format & DT_VCENTER) != 0) {
        at.y += (place.bottom - place.top - font.tmHeight) / 2;
    }
    if ((format & DT_CENTER) != 0) {
        at.x += (width - widthOf(metrics, line)) / 2;
    }
    drawLine(context, metrics, line, at, place);
}

}  // namespace vrn::activex
