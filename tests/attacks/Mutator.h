// Changes to a signed document as somebody would try them who wants other content to pass for what was signed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "generator/Random.h"

namespace vrn::test {

/// Makes variants of one document, each by one to three random changes of its text: elements moved, doubled, nested and taken out,
/// above all those of the signature; comments, instructions, CDATA, references and texts at the borders of nodes;
/// namespaces declared anew; values changed; encodings that lie. The same seed gives the same variants on every system.
class Mutator {
  public:
    Mutator(const std::string& document, std::uint64_t seed);

    [[nodiscard]] std::string next();

  private:
    /// A tag, text or other piece of markup; elements know where they end.
    struct Piece {
        std::string text;
        bool isStart = false;
        bool isEnd = false;
    };
    using Pieces = std::vector<Piece>;
    struct Range {
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    static Pieces piecesOf(const std::string& text);
    static std::string textOf(const Pieces& pieces);
    [[nodiscard]] std::size_t below(std::size_t limit) { return random_.below(limit); }
    template <typename List>
    const auto& oneOf(const List& list) {
        return list[below(std::size(list))];
    }
    [[nodiscard]] std::size_t someStart(const Pieces& pieces);
    [[nodiscard]] static Range elementAt(const Pieces& pieces, std::size_t start);

    void change(Pieces& pieces);
    void insertAtBorder(Pieces& pieces);
    void moveElement(Pieces& pieces);
    void takeOut(Pieces& pieces);
    void declareAnew(Pieces& pieces);
    void changeCharacter(Pieces& pieces);
    void rewriteText(Pieces& pieces);
    void lieAboutEncoding(Pieces& pieces);

    Pieces original_;
    samples::Random random_;
};

}  // namespace vrn::test
