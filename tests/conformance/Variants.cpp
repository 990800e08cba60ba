#include "conformance/Variants.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "attacks/Mutator.h"
#include "conformance/DocumentGenerator.h"
#include "errors/Error.h"
#include "generator/Random.h"
#include "support/Documents.h"
#include "text/TextFile.h"
#include "text/Unicode.h"

namespace vrn::test {

namespace {

using namespace std::string_view_literals;
using samples::Random;

// What no document has at that place, or none at all.
constexpr std::array insertions{"\0"sv,
                                "\x1B"sv,
                                "\xFF"sv,
                                "\xC3"sv,
                                "\xC0\x80"sv,
                                "\xED\xA0\x80"sv,
                                "\xEF\xBF\xBE"sv,
                                "\xF4\x90\x80\x80"sv,
                                "\xEF\xBB\xBF"sv,
                                "\xF0\x90\x80\x80"sv,
                                "<"sv,
                                ">"sv,
                                "&"sv,
                                "\""sv,
                                "'"sv,
                                "]]>"sv,
                                "<!--"sv,
                                "-->"sv,
                                "--"sv,
                                "<![CDATA["sv,
                                "<?xml version='1.0'?>"sv,
                                "<?XML x?>"sv,
                                "<?p"sv,
                                "<!DOCTYPE a [<!ENTITY x 'y'>]>"sv,
                                "<!ELEMENT a ANY>"sv,
                                "&#0;"sv,
                                "&#xD800;"sv,
                                "&#xFFFE;"sv,
                                "&#x110000;"sv,
                                "&#99999999999999999999;"sv,
                                "&#x41;"sv,
                                "&x;"sv,
                                "&amp"sv,
                                "</a>"sv,
                                "<a/>"sv,
                                "<p:a/>"sv,
                                "<a:b:c/>"sv,
                                "<:a/>"sv,
                                "<xmlns:a/>"sv,
                                "<a b='1' b='2'/>"sv,
                                "<a xmlns:p=''/>"sv,
                                "<a xmlns:p='u' xmlns:q='u' p:b='' q:b=''/>"sv,
                                "<a xmlns='http://www.w3.org/2000/xmlns/'/>"sv,
                                "<a xmlns:xmlns='u'/>"sv,
                                "<a xmlns:xml='u'/>"sv,
                                "<a xmlns:p='http://www.w3.org/XML/1998/namespace'/>"sv};

// Taken for what was there before: a declaration of an encoding; and what says how the bytes are laid out.
constexpr std::array encodingNames{"UTF-8"sv,  "utf8"sv,     "UTF-16"sv,        "UTF-16LE"sv,   "utf-16be"sv,
                                   "UCS-4"sv,  "UTF-32BE"sv, "ISO-8859-1"sv,    "ISO-8859-5"sv, "windows-1252"sv,
                                   "CP1251"sv, "US-ASCII"sv, "KOI8-R"sv,        "no-such"sv,    ""sv,
                                   "UTF-8 "sv, "UTF-7"sv,    "UTF-8//IGNORE"sv, "8859"sv,       "\xC3\xA9"sv};

template <typename List>
const auto& oneOf(Random& random, const List& list) {
    return list[random.below(std::size(list))];
}

std::string damaged(std::string bytes, Random& random) {
    const auto place = [&] { return random.below(bytes.size() + 1); };
    const auto range = [&] {
        const auto from = place();
        return bytes.substr(from, random.below(40));
    };
    for (auto changes = 1 + random.below(3); changes > 0; --changes) {
        const auto at = place();
        switch (random.below(7)) {
            case 0:
                bytes.resize(at);
                break;
            case 1:
                if (at < bytes.size()) {
                    bytes[at] = static_cast<char>(static_cast<unsigned char>(bytes[at]) ^ (1U << random.below(8)));
                }
                break;
            case 2:
                bytes.insert(at, range());
                break;
            case 3:
                bytes.erase(at, random.below(40));
                break;
            case 4:
                bytes.insert(at, 1, static_cast<char>(random.below(256)));
                break;
            default:
                bytes.insert(at, oneOf(random, insertions));
                break;
        }
    }
    return bytes;
}

std::string wide(std::string_view text, std::size_t size, bool bigEndian) {
    std::string out;
    const auto add = [&](std::uint32_t unit) {
        for (std::size_t i = 0; i < size; ++i) {
            const auto shift = 8 * (bigEndian ? size - 1 - i : i);
            out += static_cast<char>(unit >> shift & 0xFFU);
        }
    };
    if (size == 2) {
        for (const char16_t unit : text::toUtf16(text)) {
            add(unit);
        }
    } else {
        while (!text.empty()) {
            add(text::takeCodePoint(text));
        }
    }
    return out;
}

std::string narrow(std::string_view text) {
    std::string out;
    while (!text.empty()) {
        const char32_t c = text::takeCodePoint(text);
        out += c < 0x100 ? static_cast<char>(c) : '?';
    }
    return out;
}

// In some encoding, with a declaration of some encoding.
std::string inOtherEncoding(const std::string& text, Random& random) {
    std::string_view content = text;
    if (content.starts_with("\xEF\xBB\xBF")) {
        content.remove_prefix(3);
    }
    if (const auto declaration = text::declarationData(content)) {
        content.remove_prefix(content.find("?>") + 2);
    }
    std::string declared;
    if (!random.oneIn(6)) {
        declared = "<?xml version='1.0' encoding='" + std::string(oneOf(random, encodingNames)) + "'?>";
    }
    declared += content;
    const std::string mark = random.oneIn(2) ? "\xEF\xBB\xBF" : "";
    const bool bigEndian = random.oneIn(2);
    switch (random.below(6)) {
        case 0:
            return mark + declared;
        case 1:
        case 2:
            return wide(mark + declared, 2, bigEndian);
        case 3:
            return wide(mark + declared, 4, bigEndian);
        default:
            return narrow(declared);
    }
}

// A piece of markup in words that stay on one line.
std::string shown(std::string_view piece) {
    std::string out;
    for (const char c : piece) {
        const bool isPlain = c > ' ' && c < '\x7F';
        out += isPlain ? std::string(1, c) : "\\" + std::to_string(static_cast<unsigned char>(c));
    }
    return out;
}

std::string numbered(std::string_view before, std::string_view after, std::size_t count) {
    std::string out;
    for (std::size_t i = 0; i < count; ++i) {
        out.append(before).append(std::to_string(i)).append(after);
    }
    return out;
}

void addLimits(std::vector<Variant>& all) {
    for (const std::size_t depth : {999, 1000, 1001, 100000}) {
        const auto start = repeated("<a>", depth);
        const auto name = "depth " + std::to_string(depth);
        all.push_back({name, start + "x" + repeated("</a>", depth)});
        all.push_back({name + ", without an end", start});
    }
    for (const std::size_t count : {999, 1000, 1001, 2000, 2001, 5000}) {
        all.push_back({std::to_string(count) + " attributes", "<a" + numbered("\n a", "='&lt;'", count) + "/>"});
        all.push_back({std::to_string(count) + " declarations", "<a" + numbered(" xmlns:p", "='u'", count) + "/>"});
        all.push_back({std::to_string(count) + " declarations with attributes",
                       "<a" + numbered(" xmlns:p", "='u'", count) + numbered(" p", ":b='x'", count / 2) + "/>"});
    }
    for (const std::size_t count : {99999, 100000}) {
        all.push_back({std::to_string(count) + " names", "<a>" + numbered("<b", "/>", count) + "</a>"});
    }
}

void addLargeTexts(std::vector<Variant>& all) {
    constexpr std::size_t much = 200000;
    for (const std::string_view piece : {"x"sv, "\xF0\x9F\x98\x80"sv, " "sv, "\r\n"sv, "\r"sv, "]]"sv}) {
        const auto large = repeated(piece, much / piece.size());
        const auto name = "much of " + shown(piece);
        all.push_back({name + " as text", "<a>" + large + "</a>"});
        all.push_back({name + " as text, then a fault", "<a>" + large + "<"});
        all.push_back({name + " as a value", "<a b='" + large + "'/>"});
        all.push_back({name + " as a value without an end", "<a b='" + large});
        all.push_back({name + " as CDATA", "<a><![CDATA[" + large + "]]></a>"});
        all.push_back({name + " as a comment", "<!--" + large + "--><a/>"});
        all.push_back({name + " as an instruction", "<a/><?p " + large + "?>"});
        all.push_back({name + " before the root", large + "<a/>"});
    }
    const std::string name(100000, 'n');
    all.push_back({"long names", "<" + name + ":a xmlns:" + name + "='" + name + "' " + name + ":" + name + "=''/>"});
    all.push_back({"many sections", "<a>" + repeated("<![CDATA[x]]>", 50000) + "</a>"});
    all.push_back(
        {"many references", "<a b='" + repeated("&#9;&lt;", 50000) + "'>" + repeated("&#13;&amp;", 50000) + "</a>"});
    all.push_back({"many comments without an end", "<a>" + repeated("<!--", 50000)});
    all.push_back({"nothing", ""});
}

void addBorders(std::vector<Variant>& all) {
    constexpr std::size_t piece = 32768;
    for (const std::string_view token :
         {"\r\n"sv, "\xF0\x9F\x98\x80"sv, "&#x1F600;"sv, "<![CDATA[\r\n]]>"sv, "<b c=' \r\n'/>"sv, "<!--\r\n-->"sv,
          "<?p \r\n?>"sv, "]]>"sv, "&x;"sv, "<p:b/>"sv, "<!DOCTYPE a>"sv, "\xC3\xC3"sv}) {
        for (std::size_t before = 0; before <= token.size(); ++before) {
            const std::string start(piece - 3 - before, 'x');
            all.push_back({"a border after " + std::to_string(before) + " bytes of " + shown(token),
                           "<a>" + start + std::string(token) + "<b/></a>"});
        }
    }
}

}  // namespace

Variant variant(const std::vector<std::string>& files, std::uint64_t seed) {
    Random random(seed);
    const auto file = [&] { return oneOf(random, files); };
    const auto fileAsText = [&] { return text::decodeXmlFile(file()); };
    const auto generated = [&] { return generatedDocument(random.next()).text; };
    const auto changed = [&] {
        const auto text = fileAsText();
        return Mutator(text, random.next()).next();
    };
    switch (random.below(9)) {
        case 0:
        case 1:
            return {"generated", generated()};
        case 2:
            return {"generated, damaged", damaged(generated(), random)};
        case 3:
            return {"generated, in an encoding", inOtherEncoding(generated(), random)};
        case 4:
            return {"file, damaged", damaged(file(), random)};
        case 5:
            return {"file, its text damaged", damaged(fileAsText(), random)};
        case 6:
            return {"file, in an encoding", inOtherEncoding(fileAsText(), random)};
        case 7:
            return {"file, damaged in an encoding", damaged(inOtherEncoding(fileAsText(), random), random)};
        default:
            return {"file, changed", changed()};
    }
}

std::vector<Variant> limits() {
    std::vector<Variant> all;
    addLimits(all);
    addLargeTexts(all);
    addBorders(all);
    return all;
}

}  // namespace vrn::test
