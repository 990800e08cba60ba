// Encodings as the system's code pages. What a page makes of a byte is taken only where it is exact: the system's own idea of
// strictness lets undefined bytes through as control characters and writes letters that look alike.
#include "text/Converter.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "text/Unicode.h"
#include "text/windows/Wide.h"

namespace vrn::text {

struct Converter::Impl {
    UINT codePage = 0;
    std::size_t longest = 1;  ///< bytes of a character
    bool fromUtf8 = false;
};

namespace {

constexpr UINT asciiPage = 20127;

struct NamedPage {
    std::string_view name;
    UINT codePage;
};

// Those without shift states. Names with a number are read by `numberedPage`.
constexpr std::array<NamedPage, 20> namedPages{{{"us-ascii", asciiPage}, {"ascii", asciiPage}, {"latin1", 28591},
                                                {"latin2", 28592},       {"koi8-r", 20866},    {"koi8-u", 21866},
                                                {"macintosh", 10000},    {"tis-620", 874},     {"shift_jis", 932},
                                                {"sjis", 932},           {"windows-31j", 932}, {"euc-jp", 20932},
                                                {"gb2312", 936},         {"gbk", 936},         {"gb18030", 54936},
                                                {"big5", 950},           {"euc-kr", 949},      {"ks_c_5601-1987", 949},
                                                {"johab", 1361},         {"iso_8859-1", 28591}}};

std::optional<UINT> numberBehind(std::string_view name, std::string_view prefix) {
    UINT number = 0;
    const char* const end = name.data() + name.size();
    if (!name.starts_with(prefix)) {
        return std::nullopt;
    }
    const auto [stop, error] = std::from_chars(name.data() + prefix.size(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

// Pages whose characters have one or two bytes each, and no state between them.
bool isPlainPage(UINT page) noexcept { return (page >= 37 && page < 2000) || page == 10000; }

UINT numberedPage(std::string_view name) {
    if (const auto part = numberBehind(name, "iso-8859-"); part && *part >= 1 && *part <= 16) {
        return 28590 + *part;
    }
    for (const std::string_view prefix : {"windows-", "cp", "ibm", "cp-"}) {
        if (const auto page = numberBehind(name, prefix); page && isPlainPage(*page)) {
            return *page;
        }
    }
    return 0;
}

UINT codePageOf(std::string_view name) {
    const auto named = std::find_if(namedPages.begin(), namedPages.end(),
                                    [&name](const NamedPage& page) { return page.name == name; });
    return named != namedPages.end() ? named->codePage : numberedPage(name);
}

// The EBCDIC pages do not; the conversions below take it for granted.
bool keepsAscii(UINT page) {
    std::wstring wide(asciiText.size(), L'\0');
    const int count = MultiByteToWideChar(page, 0, asciiText.data(), static_cast<int>(asciiText.size()), wide.data(),
                                          static_cast<int>(wide.size()));
    return count == static_cast<int>(wide.size()) && fromWide(wide) == asciiText;
}

bool isDefined(UINT codePage, char32_t c) noexcept {
    const bool isIso = codePage > 28590 && codePage < 28610;
    const bool isControl = c >= 0x80 && c < 0xA0;
    const bool isPrivate = c >= 0xE000 && c <= 0xF8FF;
    return c != 0xFFFD && !isPrivate && (!isControl || isIso);
}

constexpr bool isAscii(char c) noexcept { return static_cast<unsigned char>(c) < 0x80; }

// The character that the first bytes are, which become `taken`; nothing when they are none.
std::optional<char32_t> decode(UINT codePage, std::size_t longest, std::string_view bytes, std::size_t& taken) {
    taken = 1;
    if (isAscii(bytes.front())) {
        return static_cast<unsigned char>(bytes.front());
    }
    std::array<wchar_t, 4> wide{};
    for (; codePage != asciiPage && taken <= std::min(longest, bytes.size()); ++taken) {
        const int count = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(taken),
                                              wide.data(), static_cast<int>(wide.size()));
        if (count > 0) {
            const std::string utf8 = fromWide({wide.data(), static_cast<std::size_t>(count)});
            std::string_view rest(utf8);
            const char32_t c = takeCodePoint(rest);
            return rest.empty() && isDefined(codePage, c) ? std::optional(c) : std::nullopt;
        }
    }
    return std::nullopt;
}

// The bytes of one character; empty when the page does not have it.
std::string encode(UINT codePage, std::size_t longest, char32_t c, std::string_view utf8) {
    const std::wstring wide = toWide(utf8);
    std::array<char, 8> bytes{};
    const int count = WideCharToMultiByte(codePage, 0, wide.data(), static_cast<int>(wide.size()), bytes.data(),
                                          static_cast<int>(bytes.size()), nullptr, nullptr);
    std::string out(bytes.data(), static_cast<std::size_t>(std::max(count, 0)));
    std::size_t taken = 0;
    const bool exact = !out.empty() && decode(codePage, longest, out, taken) == c && taken == out.size();
    return exact ? out : std::string();
}

}  // namespace

void Converter::Delete::operator()(Impl* impl) const noexcept { delete impl; }

Converter Converter::toUtf8(const std::string& encoding) {
    Converter made;
    CPINFO info{};
    const UINT codePage = codePageOf(encoding);
    if (codePage != 0 && GetCPInfo(codePage, &info) != FALSE && keepsAscii(codePage)) {
        made.impl_.reset(new Impl{codePage, info.MaxCharSize, false});
    }
    return made;
}

Converter Converter::fromUtf8(const std::string& encoding) {
    Converter made = toUtf8(encoding);
    if (made) {
        made.impl_->fromUtf8 = true;
    }
    return made;
}

std::size_t Converter::convert(std::string_view input, std::string& out) const {
    std::string_view rest = input;
    while (!rest.empty()) {
        const auto plain = static_cast<std::size_t>(std::find_if_not(rest.begin(), rest.end(), isAscii) - rest.begin());
        out.append(rest, 0, plain);
        rest.remove_prefix(plain);
        if (rest.empty()) {
            break;
        }
        if (impl_->fromUtf8) {
            std::string_view behind = rest;
            const char32_t c = takeCodePoint(behind);
            const std::string_view character = rest.substr(0, rest.size() - behind.size());
            const std::string bytes =
                c == invalidCodePoint ? std::string() : encode(impl_->codePage, impl_->longest, c, character);
            if (bytes.empty()) {
                break;
            }
            out += bytes;
            rest = behind;
        } else {
            std::size_t taken = 0;
            const auto c = decode(impl_->codePage, impl_->longest, rest, taken);
            if (!c) {
                break;
            }
            appendCodePoint(out, *c);
            rest.remove_prefix(taken);
        }
    }
    return input.size() - rest.size();
}

// No page here has shift states.
void Converter::finish(std::string& /*out*/) const {}

}  // namespace vrn::text
