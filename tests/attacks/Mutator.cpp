#include "attacks/Mutator.h"

#include <array>
#include <string_view>

namespace vrn::test {

namespace {

constexpr std::array<std::string_view, 12> atBorders{"<!--c-->", "<?p i?>", "<![CDATA[]]>", "<![CDATA[x]]>",
                                                     "&#32;",    " ",       "\r\n\t",       "x",
                                                     "&#13;",    "&amp;",   "<x/>",         "<x xmlns=\"urn:x\">y</x>"};
constexpr std::array<std::string_view, 8> declarations{" xmlns=\"\"",
                                                       " xmlns=\"urn:x\"",
                                                       " xmlns=\"http://www.w3.org/2000/09/xmldsig#\"",
                                                       " xmlns:p=\"urn:p\"",
                                                       " xmlns:ds=\"http://www.w3.org/2000/09/xmldsig#\"",
                                                       " xml:id=\"a\"",
                                                       " Id=\"a\"",
                                                       " xml:space=\"preserve\""};
constexpr std::array<std::string_view, 6> prologs{
    "<?xml version=\"1.0\" encoding=\"UTF-16\"?>",
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>",
    "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>",
    "<?xml version=\"1.0\"?>",
    "",
    "<?xml version=\"1.0\"?><!DOCTYPE Method [<!ENTITY e \"x\"><!ATTLIST Method a CDATA \"d\">]>"};

bool isSignaturesOwn(std::string_view tag) {
    for (const std::string_view name :
         {"<Signature", "<SignedInfo", "<Reference", "<Transform", "<Digest", "<KeyInfo"}) {
        if (tag.starts_with(name)) {
            return true;
        }
    }
    return false;
}

}  // namespace

Mutator::Mutator(const std::string& document, std::uint64_t seed) : original_(piecesOf(document)), random_(seed) {}

std::string Mutator::next() {
    Pieces pieces = original_;
    for (auto changes = 1 + below(3); changes > 0; --changes) {
        change(pieces);
    }
    return textOf(pieces);
}

Mutator::Pieces Mutator::piecesOf(const std::string& text) {
    Pieces pieces;
    for (std::size_t at = 0; at < text.size();) {
        auto end = text.find('<', at);
        if (end == at) {
            const bool isCData = text.compare(at, 9, "<![CDATA[") == 0;
            end = isCData ? text.find("]]>", at) + 3 : text.find('>', at) + 1;
            Piece piece{text.substr(at, end - at)};
            const bool isTag = piece.text[1] != '!' && piece.text[1] != '?';
            piece.isEnd = isTag && (piece.text[1] == '/' || piece.text.ends_with("/>"));
            piece.isStart = isTag && piece.text[1] != '/';
            pieces.push_back(std::move(piece));
        } else {
            end = end == std::string::npos ? text.size() : end;
            pieces.push_back({text.substr(at, end - at)});
        }
        at = end;
    }
    return pieces;
}

std::string Mutator::textOf(const Pieces& pieces) {
    std::string text;
    for (const auto& piece : pieces) {
        text += piece.text;
    }
    return text;
}

// Every second time one of the signature's own.
std::size_t Mutator::someStart(const Pieces& pieces) {
    std::vector<std::size_t> starts;
    std::vector<std::size_t> own;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (pieces[i].isStart) {
            starts.push_back(i);
            if (isSignaturesOwn(pieces[i].text)) {
                own.push_back(i);
            }
        }
    }
    return !own.empty() && below(2) == 0 ? oneOf(own) : oneOf(starts);
}

Mutator::Range Mutator::elementAt(const Pieces& pieces, std::size_t start) {
    int depth = 0;
    for (std::size_t i = start; i < pieces.size(); ++i) {
        depth += pieces[i].isStart ? 1 : 0;
        depth -= pieces[i].isEnd ? 1 : 0;
        if (depth == 0) {
            return {start, i + 1};
        }
    }
    return {start, pieces.size()};
}

void Mutator::change(Pieces& pieces) {
    switch (below(10)) {
        case 0:
        case 1:
        case 2:
            return insertAtBorder(pieces);
        case 3:
        case 4:
        case 5:
            return moveElement(pieces);
        case 6:
            return takeOut(pieces);
        case 7:
            return declareAnew(pieces);
        case 8:
            return below(2) == 0 ? changeCharacter(pieces) : rewriteText(pieces);
        default:
            return lieAboutEncoding(pieces);
    }
}

void Mutator::insertAtBorder(Pieces& pieces) {
    const auto at = static_cast<std::ptrdiff_t>(below(pieces.size() + 1));
    const auto inserted = piecesOf(std::string(oneOf(atBorders)));
    pieces.insert(pieces.begin() + at, inserted.begin(), inserted.end());
}

// To another place, or doubled there; sometimes within an element of another name.
void Mutator::moveElement(Pieces& pieces) {
    const auto range = elementAt(pieces, someStart(pieces));
    const auto from = pieces.begin() + static_cast<std::ptrdiff_t>(range.begin);
    Pieces element(from, pieces.begin() + static_cast<std::ptrdiff_t>(range.end));
    if (below(2) == 0) {
        pieces.erase(from, pieces.begin() + static_cast<std::ptrdiff_t>(range.end));
    }
    if (below(3) == 0) {
        element.insert(element.begin(), Piece{"<Object>", true, false});
        element.push_back({"</Object>", false, true});
    }
    const auto at = static_cast<std::ptrdiff_t>(below(pieces.size() + 1));
    pieces.insert(pieces.begin() + at, element.begin(), element.end());
}

void Mutator::takeOut(Pieces& pieces) {
    const auto range = elementAt(pieces, someStart(pieces));
    if (range.end - range.begin < pieces.size() / 2) {
        pieces.erase(pieces.begin() + static_cast<std::ptrdiff_t>(range.begin),
                     pieces.begin() + static_cast<std::ptrdiff_t>(range.end));
    }
}

void Mutator::declareAnew(Pieces& pieces) {
    auto& tag = pieces[someStart(pieces)].text;
    tag.insert(tag.find_first_of(" />", 1), oneOf(declarations));
}

void Mutator::changeCharacter(Pieces& pieces) {
    auto& text = pieces[below(pieces.size())].text;
    if (text.empty()) {
        return;  // a prolog that was taken away
    }
    text[below(text.size())] = oneOf(std::string_view("aZ09+/= <>&\"'"));
}

// The same characters, written otherwise.
void Mutator::rewriteText(Pieces& pieces) {
    auto& piece = pieces[below(pieces.size())];
    if (piece.text.empty() || piece.text.front() == '<' || piece.text.find('&') != std::string::npos) {
        return;
    }
    const auto at = below(piece.text.size());
    const auto character = static_cast<unsigned char>(piece.text[at]);
    if (character >= 0x80) {
        return;
    }
    const std::array<std::string, 3> forms{"&#" + std::to_string(character) + ";",
                                           "<![CDATA[" + std::string(1, piece.text[at]) + "]]>",
                                           "<!--c-->" + std::string(1, piece.text[at])};
    piece.text.replace(at, 1, oneOf(forms));
}

void Mutator::lieAboutEncoding(Pieces& pieces) {
    Piece prolog{std::string(oneOf(prologs))};
    if (below(4) == 0) {
        prolog.text.insert(0, "\xEF\xBB\xBF");
    }
    if (pieces.front().text.starts_with("<?xml")) {
        pieces.front() = prolog;
    } else {
        pieces.insert(pieces.begin(), prolog);
    }
}

}  // namespace vrn::test
