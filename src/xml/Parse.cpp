// expat reads, this fills the tree. What expat does not say itself: layout white space never becomes a node, texts stay views on
// the source where they stand there as they are read, and what could cost more than linear time or deep recursion is refused.
#include "xml/Parse.h"

#include <expat.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <exception>
#include <string>

#include "text/Unicode.h"
#include "xml/Names.h"
#include "xml/Place.h"

namespace vrn::xml {

namespace {

// Real documents stay far below these limits.
constexpr std::size_t maximumDepth = 1000;
constexpr std::size_t maximumAttributes = 1000;
constexpr std::size_t maximumNames = 100000;

// Parts namespace, local name and prefix in the names that expat reports; no document can hold it.
constexpr char separator = '\1';

// expat doubles its buffer until the text and the context that it keeps fit, and fails beyond what an int counts.
constexpr std::size_t maximumText = 1UL << 29U;

struct SplitName {
    std::string_view uri;
    std::string_view local;
    std::string_view prefix;
};

// "local", "uri|local" or "uri|local|prefix".
SplitName splitName(std::string_view reported) noexcept {
    SplitName name;
    const auto first = reported.find(separator);
    if (first == std::string_view::npos) {
        name.local = reported;
        return name;
    }
    const auto second = reported.find(separator, first + 1);
    name.uri = reported.substr(0, first);
    name.local = reported.substr(first + 1, second == std::string_view::npos ? second : second - first - 1);
    name.prefix = second == std::string_view::npos ? std::string_view() : reported.substr(second + 1);
    return name;
}

class Load {
  public:
    Load(Tree& tree, std::string_view text);

    bool run();

  private:
    // expat's handlers. None lets an exception out.
    template <typename Work>
    void guarded(Work&& work) noexcept;
    static Load& of(void* user) noexcept { return *static_cast<Load*>(user); }
    void setHandlers() noexcept;

    void startElement(const char* reported, const char** attributes);
    void endElement();
    void declareNamespace(const char* prefix, const char* uri);
    struct Piece {
        std::string_view text;
        std::size_t at = 0;
        bool isReference = false;
    };
    [[nodiscard]] Piece pieceOf(std::string_view reported) const noexcept;
    void characters(std::string_view reported);
    void beginText(std::size_t from, std::size_t to);
    void startCData();
    void endCData();
    void declaration();
    void add(NodeData& node);
    void closeText();

    [[nodiscard]] const Name* nameOf(const char* reported);
    [[nodiscard]] std::size_t offset() const noexcept {
        return static_cast<std::size_t>(std::max<XML_Index>(XML_GetCurrentByteIndex(parser_.get()), 0));
    }
    [[nodiscard]] std::string_view event() const noexcept {
        return source_.substr(offset(), static_cast<std::size_t>(XML_GetCurrentByteCount(parser_.get())));
    }
    [[nodiscard]] std::string reasonOf(XML_Error code);
    [[nodiscard]] std::string openElement();
    void refuse(std::size_t where, int code, const char* reason) noexcept;

    Tree& tree_;
    std::string_view source_;
    std::shared_ptr<XML_ParserStruct> parser_;  ///< holds the source, for as long as the tree does
    Branch* open_;
    std::size_t depth_ = 0;

    std::array<const Name*, 256> known_{};  ///< plain names by length, first and last character

    // The declarations of the element whose start tag is being read.
    struct Declaration {
        const Name* name;
        std::string_view uri;
    };
    std::vector<Declaration> declarations_;

    // The run of character data that is being read: a view on the source, or a copy once it is not what stands there. Empty as
    // long as it looks like layout.
    std::string_view run_;
    std::string copied_;
    std::size_t runOffset_ = 0;
    bool inRun_ = false;
    bool isCopied_ = false;
    bool isMeant_ = false;  ///< holds more than layout
    bool inCData_ = false;

    std::exception_ptr failure_;
    bool refused_ = false;
    std::size_t refusedAt_ = 0;
    int refusedCode_ = 0;
    const char* refusedReason_ = "";
};

Load::Load(Tree& tree, std::string_view text)
    : tree_(tree), parser_(XML_ParserCreateNS("UTF-8", separator), XML_ParserFree), open_(&tree.document) {
    // The text goes straight into the parser's buffer, where it stays: one copy serves both. One byte more, since expat wants none
    // for an empty text.
    void* const buffer = parser_ == nullptr ? nullptr : XML_GetBuffer(parser_.get(), static_cast<int>(text.size()) + 1);
    if (buffer == nullptr) {
        throw std::bad_alloc();
    }
    std::memcpy(buffer, text.data(), text.size());
    source_ = tree.source = {static_cast<const char*>(buffer), text.size()};
    tree.sourceOwner = parser_;
    tree.expectNames(64);  // as many as a method has
    XML_SetReturnNSTriplet(parser_.get(), XML_TRUE);
    XML_SetUserData(parser_.get(), this);
    setHandlers();
}

template <typename Work>
void Load::guarded(Work&& work) noexcept {
    if (failure_ || refused_) {
        return;  // expat may finish the event that it was stopped in
    }
    try {
        work();
    } catch (...) {
        failure_ = std::current_exception();
        XML_StopParser(parser_.get(), XML_FALSE);
    }
}

void Load::setHandlers() noexcept {
    const XML_Parser parser = parser_.get();
    XML_SetElementHandler(
        parser,
        [](void* user, const XML_Char* name, const XML_Char** attributes) {
            of(user).guarded([&] { of(user).startElement(name, attributes); });
        },
        [](void* user, const XML_Char* /*name*/) { of(user).guarded([&] { of(user).endElement(); }); });
    XML_SetStartNamespaceDeclHandler(parser, [](void* user, const XML_Char* prefix, const XML_Char* uri) {
        of(user).guarded([&] { of(user).declareNamespace(prefix, uri); });
    });
    XML_SetCharacterDataHandler(parser, [](void* user, const XML_Char* text, int length) {
        of(user).guarded([&] { of(user).characters({text, static_cast<std::size_t>(length)}); });
    });
    XML_SetCdataSectionHandler(
        parser, [](void* user) { of(user).guarded([&] { of(user).startCData(); }); },
        [](void* user) { of(user).guarded([&] { of(user).endCData(); }); });
    XML_SetCommentHandler(parser, [](void* user, const XML_Char* text) {
        of(user).guarded([&] {
            Load& load = of(user);
            load.add(*load.tree_.newLeaf(NodeKind::Comment, load.tree_.keep(text)));
        });
    });
    XML_SetProcessingInstructionHandler(parser, [](void* user, const XML_Char* target, const XML_Char* data) {
        of(user).guarded([&] {
            Tree& tree = of(user).tree_;
            of(user).add(*tree.newLeaf(NodeKind::ProcessingInstruction, tree.keep(data), tree.plainName(target)));
        });
    });
    XML_SetXmlDeclHandler(parser, [](void* user, const XML_Char* /*version*/, const XML_Char* /*encoding*/,
                                     int /*standalone*/) { of(user).guarded([&] { of(user).declaration(); }); });
    XML_SetStartDoctypeDeclHandler(parser, [](void* user, const XML_Char* /*name*/, const XML_Char* /*system*/,
                                              const XML_Char* /*publicId*/, int /*hasSubset*/) {
        Load& load = of(user);
        load.refuse(std::min(load.source_.rfind("<!DOCTYPE", load.offset()), load.offset()), ParseError::dtdProhibited,
                    "DTD is prohibited.");
    });
}

void Load::refuse(std::size_t where, int code, const char* reason) noexcept {
    if (!refused_) {
        refused_ = true;
        refusedAt_ = where;
        refusedCode_ = code;
        refusedReason_ = reason;
        XML_StopParser(parser_.get(), XML_FALSE);
    }
}

bool Load::run() {
    // In one piece: after every piece but the last, expat counts the lines of what it has read.
    const XML_Status status = XML_ParseBuffer(parser_.get(), static_cast<int>(source_.size()), XML_TRUE);
    if (failure_) {
        std::rethrow_exception(failure_);
    }
    if (refused_) {
        tree_.error = parseErrorAt(source_, refusedAt_, refusedCode_, refusedReason_);
        return false;
    }
    if (status == XML_STATUS_OK) {
        return true;
    }
    const XML_Error code = XML_GetErrorCode(parser_.get());
    if (code == XML_ERROR_NO_MEMORY) {
        throw std::bad_alloc();
    }
    tree_.error = parseErrorAt(source_, offset(), static_cast<int>(code), reasonOf(code));
    return false;
}

// In the words of somebody who looks at the text; expat's own are for whoever knows the grammar.
std::string Load::reasonOf(XML_Error code) {
    switch (code) {
        case XML_ERROR_NO_ELEMENTS:
            return source_.find('<') == std::string_view::npos || open_ == &tree_.document
                       ? "There is no root element"
                       : "The text ends within the element " + openElement();
        case XML_ERROR_INVALID_TOKEN:
            return "This is not well-formed";
        case XML_ERROR_SYNTAX:
            return "This cannot stand here";
        case XML_ERROR_UNCLOSED_TOKEN:
            return "What begins here has no end";
        case XML_ERROR_TAG_MISMATCH:
            return "The end tag does not match the start tag of " + openElement();
        case XML_ERROR_DUPLICATE_ATTRIBUTE:
            return "An attribute is there twice";
        case XML_ERROR_JUNK_AFTER_DOC_ELEMENT:
            return "Nothing but comments and instructions may follow the root element";
        case XML_ERROR_UNDEFINED_ENTITY:
            return "The entity is not defined";
        case XML_ERROR_BAD_CHAR_REF:
            return "XML does not have the character of this reference";
        case XML_ERROR_UNBOUND_PREFIX:
            return "A namespace prefix is not declared";
        default: {
            std::string reason = XML_ErrorString(code);
            reason.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(reason.front())));
            return reason;
        }
    }
}

std::string Load::openElement() {
    const auto name = open_->name == nullptr ? std::string_view() : open_->name->qualified;
    return std::string(name) + ", line " + std::to_string(tree_.places.at(source_, open_->offset).line);
}

const Name* Load::nameOf(const char* reported) {
    // Documents have few names and use them often.
    const std::string_view whole = reported;
    const auto character = [](char c) { return static_cast<unsigned char>(c); };
    const Name*& known =
        known_[(whole.size() + character(whole.front()) * 5U + character(whole.back()) * 11U) % known_.size()];
    if (known != nullptr && known->local == whole) {
        return known;
    }
    const SplitName split = splitName(whole);
    const Name* const name = tree_.name(split.prefix, split.local, split.uri);
    if (tree_.nameCount() > maximumNames) {
        refuse(offset(), ParseError::limitExceeded, "Too many different names");
    }
    if (name->uri.empty()) {
        known = name;
    }
    return name;
}

void Load::declareNamespace(const char* prefix, const char* uri) {
    if (declarations_.size() >= maximumAttributes) {
        return refuse(offset(), ParseError::limitExceeded, "Too many namespace declarations in one element");
    }
    const Name* const name =
        prefix == nullptr ? tree_.name({}, "xmlns", xmlnsNamespace) : tree_.name("xmlns", prefix, xmlnsNamespace);
    declarations_.push_back({name, uri == nullptr ? std::string_view() : tree_.keep(uri)});
}

void Load::startElement(const char* reported, const char** attributes) {
    if (++depth_ > maximumDepth) {
        return refuse(offset(), ParseError::limitExceeded, "Elements are nested too deeply");
    }
    if (static_cast<std::size_t>(XML_GetSpecifiedAttributeCount(parser_.get())) > 2 * maximumAttributes) {
        return refuse(offset(), ParseError::limitExceeded, "Too many attributes in one element");
    }
    Branch* const element = tree_.newBranch(NodeKind::Element, nameOf(reported));
    Attribute* last = nullptr;
    for (const Declaration& declared : declarations_) {
        last = tree_.addAttribute(*element, last, declared.name, declared.uri);
    }
    declarations_.clear();
    for (; *attributes != nullptr; attributes += 2) {
        last = tree_.addAttribute(*element, last, nameOf(attributes[0]), tree_.keep(attributes[1]));
    }
    add(*element);
    open_ = element;
}

void Load::endElement() {
    closeText();
    --depth_;
    open_ = open_->parent;
}

void Load::declaration() {
    constexpr std::string_view opening = "<?xml";
    constexpr std::string_view closing = "?>";
    const std::string_view written = event();
    const auto data =
        text::trimXmlSpace(written.substr(opening.size(), written.size() - opening.size() - closing.size()));
    add(*tree_.newLeaf(NodeKind::ProcessingInstruction, data, tree_.plainName("xml")));
}

void Load::add(NodeData& node) {
    closeText();
    node.offset = static_cast<std::uint32_t>(offset());
    Tree::link(node, *open_, nullptr);
}

// Where a piece comes from. expat hands over text that is as it is written in place, line ends and what references stand for as
// characters of its own.
Load::Piece Load::pieceOf(std::string_view reported) const noexcept {
    if (tree_.isInSource(reported)) {
        return {reported, static_cast<std::size_t>(reported.data() - source_.data())};
    }
    const std::size_t at = offset();
    if (source_[at] == '&') {
        return {reported, at, true};
    }
    return {source_[at] == reported.front() ? source_.substr(at, reported.size()) : reported, at};
}

void Load::characters(std::string_view reported) {
    const Piece piece = pieceOf(reported);
    if (!inRun_) {
        inRun_ = true;
        runOffset_ = inCData_ ? runOffset_ : piece.at;
    }
    if (!isMeant_) {
        if (!piece.isReference && !inCData_ && std::all_of(reported.begin(), reported.end(), text::isXmlSpace)) {
            return;  // layout, if nothing else follows
        }
        beginText(inCData_ ? piece.at : runOffset_, piece.at);
    }
    if (!isCopied_ && piece.text.data() == run_.data() + run_.size()) {
        run_ = {run_.data(), run_.size() + piece.text.size()};
    } else {
        if (!isCopied_) {
            copied_ = run_;
            isCopied_ = true;
        }
        copied_ += piece.text;
    }
}

// The run is a text: what had looked like layout in front of it belongs to it, with its line ends as they are read.
void Load::beginText(std::size_t from, std::size_t to) {
    isMeant_ = true;
    run_ = source_.substr(from, to - from);
    if (run_.find('\r') != std::string_view::npos) {
        copied_ = withLineFeeds(run_);
        isCopied_ = true;
    }
}

// Text of white space alone was not meant unless it was written with references or as CDATA.
void Load::closeText() {
    if (isMeant_ || inCData_) {
        const std::string_view text = isCopied_ ? tree_.keep(copied_) : run_;
        Leaf* const leaf = tree_.newLeaf(inCData_ ? NodeKind::CData : NodeKind::Text, text);
        leaf->offset = static_cast<std::uint32_t>(runOffset_);
        Tree::link(*leaf, *open_, nullptr);
        run_ = {};
    }
    inRun_ = isCopied_ = isMeant_ = false;
}

void Load::startCData() {
    closeText();
    inCData_ = true;
    runOffset_ = offset();
}

void Load::endCData() {
    closeText();
    inCData_ = false;
}

}  // namespace

bool parse(std::string_view text, Tree& tree) {
    if (text.size() > maximumText) {
        tree.error = parseErrorAt(text.substr(0, 1), 0, ParseError::limitExceeded, "The text is too long");
        return false;
    }
    return Load(tree, text).run();
}

}  // namespace vrn::xml
