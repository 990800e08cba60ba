#include "conformance/DocumentGenerator.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "generator/Random.h"
#include "text/Lists.h"
#include "text/Unicode.h"

namespace vrn::test {

namespace {

// As it is written in an attribute with either kind of quotes.
struct Namespace {
    std::string_view uri;
    std::string_view standIn;  ///< an absolute URI with nothing to escape that sorts among the others as `uri` does
};

constexpr std::string_view xmlNamespace = "http://www.w3.org/XML/1998/namespace";

// Sorted by either column, as the namespace of "xml:" is in between: attributes are in the order of their namespaces.
constexpr std::array<Namespace, 16> namespaces{
    {{"#fragment", "AA:0"},
     {"../up", "AB:0"},
     {"//host/path", "AC:0"},
     {"?query", "AD:0"},
     {"HTTP://example.org/", "HTTP://example.org/"},
     {"http://example.org", "http://example.org"},
     {"http://example.org/", "http://example.org/"},
     {"http://example.org/%7Ea", "http://example.org/%7Ea"},
     {"http://example.org/?a=1&amp;b=2", "http://example.org/?0"},
     {"http://example.org/~a", "http://example.org/~a"},
     {"http://www.w3.org/2000/09/xmldsig#", "http://www.w3.org/2000/09/xmldsig#"},
     {"urn:a", "urn:a"},
     {"urn:b", "urn:b"},
     {"with blank", "w1:0"},
     {"z&quot;&lt;", "z1:0"},
     {"\xC3\xA9t\xC3\xA9", "zz:0"}}};
constexpr bool sorts(std::string_view Namespace::*column) {
    return std::is_sorted(namespaces.begin(), namespaces.end(),
                          [column](const Namespace& a, const Namespace& b) { return a.*column < b.*column; });
}
constexpr bool isBeforeXml(std::string_view uri) { return uri < xmlNamespace; }
static_assert(sorts(&Namespace::uri) && sorts(&Namespace::standIn));
static_assert(std::all_of(namespaces.begin(), namespaces.end(),
                          [](const Namespace& n) { return isBeforeXml(n.uri) == isBeforeXml(n.standIn); }));

// Letters that the fourth and the fifth edition of XML 1.0 both have.
constexpr std::array<std::string_view, 9> prefixes{"p",  "q",        "P",        "_x",          "p-1",
                                                   "p.", "\xC3\xA9", "\xD0\x96", "\xE6\xB0\xB4"};
constexpr std::array<std::string_view, 10> localNames{
    "a", "b", "A", "_", "x-1.y", "xmlns", "xml", "\xC3\xA9t\xC3\xA9", "\xCE\xA9", "\xED\x95\x9C"};
constexpr std::array<std::string_view, 4> xmlAttributes{"xml:lang", "xml:space", "xml:base", "xml:other"};
constexpr std::array<std::string_view, 8> layouts{" ", "\n", "\r\n", "\r", "\t", "  \n ", "\n\n", " \r \n"};
constexpr std::array<std::string_view, 24> textPieces{"word",
                                                      "a b",
                                                      "\"quoted'",
                                                      "> ",
                                                      "\xC3\xA9\xCE\xA9\xE6\xB0\xB4",
                                                      "e\xCC\x81",
                                                      "\xF0\x9F\x98\x80",
                                                      "\xC2\xA0",
                                                      "\xC2\x85\xE2\x80\xA8",
                                                      "\xEF\xBB\xBF\xEF\xBF\xBD",
                                                      "\x7F",
                                                      "&amp;",
                                                      "&lt;",
                                                      "&gt;",
                                                      "&quot;&apos;",
                                                      "]]&gt;",
                                                      "&#13;",
                                                      "&#xD;&#10;",
                                                      "&#9;",
                                                      "&#32;",
                                                      "&#0065;",
                                                      "&#x1F600;",
                                                      "&#xE9;",
                                                      "&amp;lt;"};
constexpr std::array<std::string_view, 12> cdataPieces{"word",    "<x y='&amp;'>",   "&#13;", "]] ", "]",
                                                       " ",       "\xC3\xA9\r",      "\r\n",  "\t",  "<!-- c -->",
                                                       "<?p i?>", "\xF0\x9F\x98\x80"};
constexpr std::array<std::string_view, 8> commentPieces{" c ",  "-x", "<a>",          "&amp;",
                                                        "\r\n", "\r", "\xE6\xB0\xB4", "]]>"};
constexpr std::array<std::string_view, 7> instructionPieces{"data ", "?", "x>", "&lt;", "\r\n", "\xC3\xA9", "<"};

class Writer {
  public:
    explicit Writer(std::uint64_t seed) : random_(seed) {}

    GeneratedDocument document();

  private:
    // What a prefix means, "" for the default; null for no namespace.
    using Scope = std::map<std::string_view, const Namespace*>;

    template <typename List>
    const auto& oneOf(const List& list) {
        return list[random_.below(std::size(list))];
    }
    void put(std::string_view written) {
        made_.text += written;
        made_.forPeer += written;
    }
    void layout(std::size_t oneIn = 2) {
        if (random_.oneIn(oneIn)) {
            made_.text += oneOf(layouts);
        }
    }
    template <typename List>
    void putSome(const List& pieces, std::size_t most) {
        for (auto count = random_.below(most + 1); count > 0; --count) {
            put(oneOf(pieces));
        }
    }

    void padding();
    void beside();
    void element(Scope scope, std::size_t depth);
    void content(const Scope& scope, std::size_t depth);
    void characters();
    void cdata();
    void comment();
    void instruction();

    // What a start tag has, in the order in which it is written.
    struct Item {
        std::string name;
        const Namespace* declared = nullptr;
        std::string value;
    };
    void declare(Scope& scope, std::vector<Item>& items);
    const Namespace* newMeaning(const Scope& scope, std::string_view prefix);
    void addAttributes(const Scope& scope, std::vector<Item>& items);
    std::string attributeValue(char quote);
    std::string_view boundPrefix(const Scope& scope);
    void putItem(const Item& item);

    samples::Random random_;
    GeneratedDocument made_;
    std::size_t elementsLeft_ = 40;
};

std::string qualified(std::string_view prefix, std::string_view local) {
    return (prefix.empty() ? std::string() : std::string(prefix) + ":") + std::string(local);
}

GeneratedDocument Writer::document() {
    if (random_.oneIn(8)) {
        put("\xEF\xBB\xBF");
    }
    if (random_.oneIn(3)) {
        put("<?xml version='1.0'");
        put(random_.oneIn(2) ? " encoding=\"UTF-8\"" : "");
        put(random_.oneIn(3) ? " standalone = 'yes' ?>" : "?>");
    }
    if (random_.oneIn(16)) {
        padding();
    }
    beside();
    element({}, 1);
    beside();
    return std::move(made_);
}

// So that what follows lies where one piece of the text that the parser gets ends and the next begins.
void Writer::padding() {
    constexpr std::size_t piece = 32768;
    const auto size = piece - random_.below(1200) - std::min(made_.text.size(), std::size_t{100});
    put("<!--" + std::string(size, 'c') + "-->");
}

void Writer::beside() {
    for (auto count = random_.below(4); count > 0; --count) {
        layout();
        random_.oneIn(2) ? comment() : instruction();
    }
    layout();
}

void Writer::element(Scope scope, std::size_t depth) {
    --elementsLeft_;
    std::vector<Item> items;
    declare(scope, items);
    addAttributes(scope, items);
    for (std::size_t i = items.size(); i > 1; --i) {
        std::swap(items[i - 1], items[random_.below(i)]);
    }
    const std::string_view prefix = random_.oneIn(3) ? std::string_view() : boundPrefix(scope);
    const auto name = qualified(prefix, oneOf(localNames));
    put("<" + name);
    for (const Item& item : items) {
        putItem(item);
    }
    put(random_.oneIn(4) ? oneOf(layouts) : "");
    if (random_.oneIn(6)) {
        return put("/>");
    }
    put(">");
    content(scope, depth);
    put("</" + name);
    put(random_.oneIn(6) ? "\r\n>" : ">");
}

void Writer::declare(Scope& scope, std::vector<Item>& items) {
    std::set<std::string_view> declared;
    for (auto count = random_.below(5); count > 0; --count) {
        const std::string_view prefix = random_.oneIn(3) ? std::string_view() : oneOf(prefixes);
        if (declared.insert(prefix).second) {
            const Namespace* const meaning = newMeaning(scope, prefix);
            scope[prefix] = meaning;
            items.push_back({prefix.empty() ? "xmlns" : qualified("xmlns", prefix), meaning, {}});
        }
    }
    if (random_.oneIn(40)) {
        items.push_back({"xmlns:xml", nullptr, "'" + std::string(xmlNamespace) + "'"});
    }
}

// Often what it means already; the default namespace may become none.
const Namespace* Writer::newMeaning(const Scope& scope, std::string_view prefix) {
    const auto known = scope.find(prefix);
    if (known != scope.end() && known->second != nullptr && random_.oneIn(3)) {
        return known->second;
    }
    return prefix.empty() && random_.oneIn(3) ? nullptr : &oneOf(namespaces);
}

void Writer::addAttributes(const Scope& scope, std::vector<Item>& items) {
    std::set<std::pair<const Namespace*, std::string_view>> names;
    for (auto count = random_.below(6); count > 0; --count) {
        const std::string_view prefix = random_.oneIn(3) ? std::string_view() : boundPrefix(scope);
        const std::string_view local = prefix.empty() && random_.oneIn(4) ? oneOf(xmlAttributes) : oneOf(localNames);
        const bool isDeclaration = prefix.empty() && local == "xmlns";
        const Namespace* const meaning = prefix.empty() ? nullptr : scope.at(prefix);
        if (!isDeclaration && names.insert({meaning, local}).second) {
            const char quote = random_.oneIn(2) ? '"' : '\'';
            items.push_back({qualified(prefix, local), nullptr, quote + attributeValue(quote) + quote});
        }
    }
}

std::string Writer::attributeValue(char quote) {
    std::string value;
    for (auto count = random_.below(4); count > 0; --count) {
        value += random_.oneIn(4) ? oneOf(layouts) : oneOf(textPieces);
    }
    text::replaceAll(value, std::string(1, quote), "&#x22;");
    return value;
}

// A prefix that has a namespace; "" when none has.
std::string_view Writer::boundPrefix(const Scope& scope) {
    std::vector<std::string_view> bound;
    for (const auto& [prefix, meaning] : scope) {
        if (!prefix.empty()) {
            bound.push_back(prefix);
        }
    }
    return bound.empty() ? std::string_view() : oneOf(bound);
}

void Writer::putItem(const Item& item) {
    put(random_.oneIn(5) ? oneOf(layouts) : " ");
    put(item.name);
    put(random_.oneIn(8) ? " =\n" : "=");
    if (!item.value.empty()) {
        put(item.value);
    } else {
        const std::string_view quote = random_.oneIn(2) ? "\"" : "'";
        put(quote);
        made_.text += item.declared == nullptr ? std::string_view() : item.declared->uri;
        made_.forPeer += item.declared == nullptr ? std::string_view() : item.declared->standIn;
        put(quote);
    }
}

void Writer::content(const Scope& scope, std::size_t depth) {
    constexpr std::size_t deepest = 9;
    bool afterCharacters = false;
    for (auto count = random_.below(depth < 3 ? 7 : 5); count > 0; --count) {
        const auto kind = random_.below(10);
        if (kind < 4) {
            if (!std::exchange(afterCharacters, true)) {
                characters();
            }
            continue;
        }
        afterCharacters = false;
        if (kind < 8 && depth < deepest && elementsLeft_ > 0) {
            element(scope, depth + 1);
        } else if (kind == 8) {
            cdata();
        } else {
            random_.oneIn(2) ? comment() : instruction();
        }
    }
}

// Layout, or a text with white space in it that is none.
void Writer::characters() {
    if (random_.oneIn(3)) {
        return layout(1);
    }
    std::string text;
    const auto maybeSpace = [&] { text += random_.oneIn(3) ? oneOf(layouts) : ""; };
    for (auto count = 1 + random_.below(3); count > 0; --count) {
        maybeSpace();
        text += oneOf(textPieces);
    }
    maybeSpace();
    put(text);
}

void Writer::cdata() {
    put("<![CDATA[");
    putSome(cdataPieces, 3);
    put("]]>");
}

void Writer::comment() {
    put("<!--");
    putSome(commentPieces, 3);
    put("-->");
}

void Writer::instruction() {
    put("<?");
    put(oneOf(prefixes));
    if (random_.oneIn(2)) {
        put(" ");
        putSome(instructionPieces, 3);
    }
    put("?>");
}

}  // namespace

GeneratedDocument generatedDocument(std::uint64_t seed) { return Writer(seed).document(); }

std::string withNamespaces(std::string text) {
    for (const Namespace& known : namespaces) {
        if (known.uri != known.standIn) {
            text::replaceAll(text, "=\"" + std::string(known.standIn) + "\"", "=\"" + std::string(known.uri) + "\"");
        }
    }
    return text;
}

}  // namespace vrn::test
