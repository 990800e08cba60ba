// A look at an XML text before MSXML gets it: what layout it has, and what the port refuses though MSXML may not.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace vrn::xml {

/// Reads a text once. It judges nothing that MSXML judges: of a text that is not well-formed it makes one that is not either.
class SourceReader {
  public:
    struct Refusal {
        std::size_t offset = 0;
        int code = 0;
        std::string reason;
    };

    explicit SourceReader(std::string_view text);

    /// The text without character data that is raw white space and nothing else.
    [[nodiscard]] const std::string& withoutLayout() const noexcept { return kept_; }
    /// How deep its elements are.
    [[nodiscard]] std::size_t depth() const noexcept { return deepest_; }
    /// The first thing that the port refuses, if any.
    [[nodiscard]] const std::optional<Refusal>& refusal() const noexcept { return refusal_; }
    /// Whether the refusal is about what could cost too much, so that MSXML must not even see the text. Reading ended there.
    [[nodiscard]] bool isCostly() const noexcept { return isCostly_; }

  private:
    void readCharacters(std::size_t end);
    void readMarkup();
    void readComment();
    void readInstruction();
    void readStartTag();
    std::size_t readAttributes(std::size_t at);
    void readEndTag();
    void closeElement();
    void keepUpTo(std::size_t end);
    void addName(std::string_view name);
    void declare(std::string_view prefix, std::string_view uri);
    void requireDeclared(std::string_view name);
    void refuse(int code, std::string reason);
    void refuseCostly(std::size_t offset, int code, const char* reason);

    std::string_view text_;
    std::size_t at_ = 0;
    std::string kept_;
    std::size_t depth_ = 0;
    std::size_t deepest_ = 0;
    std::unordered_set<std::string_view> names_;
    struct Declaration {
        std::size_t depth;
        std::string_view prefix;
    };
    std::vector<Declaration> declarations_;
    std::vector<std::string_view> attributeNames_;  ///< of the start tag being read
    std::optional<Refusal> refusal_;
    bool isCostly_ = false;
};

}  // namespace vrn::xml
