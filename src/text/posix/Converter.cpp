#include "text/Converter.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace vrn::text {

struct Converter::Impl {
    explicit Impl(iconv_t opened) : handle(opened) {}
    ~Impl() { iconv_close(handle); }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    iconv_t handle;
};

namespace {

const iconv_t unknown = reinterpret_cast<iconv_t>(-1);
constexpr std::size_t failure = static_cast<std::size_t>(-1);

// Windows writes its code page under the name of the standard that the page extends.
struct NamedPage {
    std::string_view name;
    const char* page;
};
constexpr std::array<NamedPage, 7> namedPages{{{"shift_jis", "CP932"},
                                               {"sjis", "CP932"},
                                               {"gb2312", "CP936"},
                                               {"big5", "CP950"},
                                               {"euc-kr", "CP949"},
                                               {"ks_c_5601-1987", "CP949"},
                                               {"johab", "CP1361"}}};

std::string systemName(const std::string& encoding) {
    const auto* const named = std::find_if(namedPages.begin(), namedPages.end(),
                                           [&encoding](const NamedPage& known) { return known.name == encoding; });
    return named != namedPages.end() ? named->page : encoding;
}

// Converts into `out` piece by piece; null input ends the text.
void convertAll(iconv_t handle, char** from, std::size_t* left, std::string& out) {
    std::array<char, 4096> buffer{};
    for (;;) {
        char* to = buffer.data();
        std::size_t room = buffer.size();
        const std::size_t result = iconv(handle, from, left, &to, &room);
        const bool outputFull = result == failure && errno == E2BIG;
        out.append(buffer.data(), buffer.size() - room);
        if (!outputFull) {
            return;
        }
    }
}

}  // namespace

void Converter::Delete::operator()(Impl* impl) const noexcept { delete impl; }

Converter Converter::toUtf8(const std::string& encoding) {
    Converter made;
    if (const iconv_t handle = iconv_open("UTF-8", systemName(encoding).c_str()); handle != unknown) {
        made.impl_.reset(new Impl(handle));
        std::string converted;
        if (made.convert(asciiText, converted) != asciiText.size() || converted != asciiText) {
            return {};
        }
    }
    return made;
}

Converter Converter::fromUtf8(const std::string& encoding) {
    Converter made;
    const iconv_t handle = toUtf8(encoding) ? iconv_open(systemName(encoding).c_str(), "UTF-8") : unknown;
    if (handle != unknown) {
        made.impl_.reset(new Impl(handle));
    }
    return made;
}

std::size_t Converter::convert(std::string_view input, std::string& out) const {
    char* from = const_cast<char*>(input.data());  // iconv's signature; it does not write there
    std::size_t left = input.size();
    convertAll(impl_->handle, &from, &left, out);
    return input.size() - left;
}

void Converter::finish(std::string& out) const { convertAll(impl_->handle, nullptr, nullptr, out); }

}  // namespace vrn::text
