#include "hosts/cli/Positions.h"

#include <algorithm>
#include <optional>

#include "text/Unicode.h"

namespace vrn::cli {

namespace {

std::size_t behind(std::string_view text, std::string_view mark, std::size_t from) {
    const auto found = text.find(mark, from);
    return found == std::string_view::npos ? text.size() : found + mark.size();
}

/// The start tags of a well-formed text, in document order.
class TagReader {
  public:
    explicit TagReader(std::string_view text) : text_(text) {}

    struct Tag {
        std::string_view name;
        std::size_t depth = 0;  ///< 1 for the root
        Position position;
    };

    std::optional<Tag> next() {
        for (auto at = text_.find('<', at_); at != std::string_view::npos; at = text_.find('<', at_)) {
            const auto rest = text_.substr(at);
            if (rest.starts_with("<!--")) {
                at_ = behind(text_, "-->", at + 4);
            } else if (rest.starts_with("<![CDATA[")) {
                at_ = behind(text_, "]]>", at);
            } else if (rest.starts_with("<?")) {
                at_ = behind(text_, "?>", at);
            } else if (rest.starts_with("</")) {
                at_ = behind(text_, ">", at);
                --depth_;
            } else {
                return readTag(at);
            }
        }
        return std::nullopt;
    }

  private:
    Tag readTag(std::size_t at) {
        Tag tag;
        tag.name = text_.substr(at + 1, text_.find_first_of(" \t\r\n/>", at) - at - 1);
        tag.depth = ++depth_;
        tag.position = positionOf(at);
        // A ">" within a value ends nothing.
        auto end = text_.find_first_of("\"'>", at);
        while (end != std::string_view::npos && text_[end] != '>') {
            end = text_.find_first_of("\"'>", behind(text_, text_.substr(end, 1), end + 1));
        }
        at_ = std::min(end, text_.size() - 1) + 1;
        if (text_[at_ - 2] == '/') {
            --depth_;
        }
        return tag;
    }

    // Goes on from the last position asked for, so that long lines are counted once.
    Position positionOf(std::size_t at) {
        auto lineStart = counted_;
        for (auto i = counted_; i < at; ++i) {
            // LF, CR LF or CR.
            if (text_[i] == '\n' || (text_[i] == '\r' && text_[i + 1] != '\n')) {
                ++position_.line;
                position_.column = 1;
                lineStart = i + 1;
            }
        }
        position_.column += text::utf16Length(text_.substr(lineStart, at - lineStart));
        counted_ = at;
        return position_;
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::size_t depth_ = 0;
    std::size_t counted_ = 0;
    Position position_{1, 1};
};

/// The parts of a method that findings are about.
class Parts {
  public:
    explicit Parts(std::string_view text) {
        TagReader reader(text);
        std::vector<std::string_view> path;
        while (const auto tag = reader.next()) {
            path.resize(tag->depth - 1);
            path.push_back(tag->name);
            add(path, tag->position);
        }
    }

    [[nodiscard]] Position ofHead(std::string_view code) const {
        if (code.starts_with("signature-")) {
            return signature_.value_or(root_);
        }
        if (code.starts_with("version-")) {
            return version_.value_or(root_);
        }
        if (code.starts_with("syringe-")) {
            return syringe_.value_or(root_);
        }
        if (code == "atoms-differ") {
            return atoms_.value_or(root_);
        }
        if (code == "names-differ") {
            return names_.value_or(root_);
        }
        if (code == "cycles-differ") {
            return data_.value_or(root_);
        }
        return code.starts_with("sequence-") ? sequence_.value_or(root_) : Position();
    }
    /// Elements that `method::stepElements` numbers.
    [[nodiscard]] Position ofStep(std::optional<std::size_t> element) const {
        return element && *element < steps_.size() ? steps_[*element] : sequence_.value_or(root_);
    }
    [[nodiscard]] Position ofCycle(std::size_t number) const {
        return number < cycles_.size() ? cycles_[number] : root_;
    }

  private:
    void add(const std::vector<std::string_view>& path, Position position) {
        const auto name = path.back();
        const auto isIn = [&path](std::string_view first, std::string_view second) {
            return path[1] == first && path[2] == second;
        };
        if (path.size() == 1) {
            root_ = position;
        } else if (path.size() == 2) {
            takeFirst(version_, name == "VERSION", position);
            takeFirst(atoms_, name == "ATOMLINE", position);
            takeFirst(names_, name == "SLCONFIG", position);
            takeFirst(signature_, name == "Signature" || name.ends_with(":Signature"), position);
        } else if (path.size() == 3) {
            takeFirst(syringe_, isIn("Syringe", "SyringeSize"), position);
            inFirstSequence_ = takeFirst(sequence_, isIn("Macros", "MacroVariable"), position);
            inFirstData_ = takeFirst(data_, isIn("Macros", "MacroData"), position);
        } else if (path.size() == 4 && inFirstSequence_) {
            steps_.push_back(position);
        } else if (path.size() == 4 && inFirstData_ && name == "MacroName") {
            cycles_.push_back(position);
        }
    }

    static bool takeFirst(std::optional<Position>& place, bool matches, Position position) {
        const bool isFirst = matches && !place;
        if (isFirst) {
            place = position;
        }
        return isFirst;
    }

    Position root_;
    std::optional<Position> version_;
    std::optional<Position> syringe_;
    std::optional<Position> signature_;
    std::optional<Position> atoms_;
    std::optional<Position> names_;
    std::optional<Position> sequence_;
    std::optional<Position> data_;
    bool inFirstSequence_ = false;
    bool inFirstData_ = false;
    std::vector<Position> steps_;
    std::vector<Position> cycles_;
};

}  // namespace

void locate(std::vector<Finding>& findings, std::string_view text, const xml::Document& document) {
    if (findings.empty()) {
        return;
    }
    const Parts parts(text);
    const auto steps = method::stepElements(document);
    const auto cycles = method::embeddedCycles(document);
    for (auto& finding : findings) {
        if (!finding.file.empty()) {
            continue;  // it stands elsewhere
        }
        if (finding.step > 0) {
            finding.position = parts.ofStep(steps.at(finding.step - 1));
        } else if (const auto* const cycle = method::findCycle(cycles, finding.cycle)) {
            finding.position = parts.ofCycle(static_cast<std::size_t>(cycle - cycles.data()));
        } else {
            finding.position = parts.ofHead(finding.kind->code);
        }
    }
}

Position definitionPosition(std::string_view macros, std::size_t macro, std::size_t definition) {
    TagReader reader(macros);
    Position found;
    std::size_t macrosSeen = 0;
    std::size_t definitionsSeen = 0;
    bool isInVariables = false;
    while (const auto tag = reader.next()) {
        if (tag->depth == 2) {
            macrosSeen += tag->name == "Macro" ? 1 : 0;
            isInVariables = false;
        }
        if (macrosSeen > macro + 1) {
            break;
        }
        if (macrosSeen != macro + 1) {
            continue;
        }
        if (tag->depth == 2) {
            found = tag->position;
        } else if (tag->depth == 3) {
            isInVariables = tag->name == "Variables";
        } else if (tag->depth == 4 && isInVariables && definitionsSeen++ == definition) {
            return tag->position;
        }
    }
    return found;
}

}  // namespace vrn::cli
