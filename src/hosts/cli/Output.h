// Text for a reader at a terminal, or for a pipe: colours where they are wanted, columns that line up.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vrn::cli {

/// Marks up words, or does not.
class Style {
  public:
    explicit Style(bool colour) noexcept : colour_(colour) {}
    [[nodiscard]] std::string bold(std::string_view text) const { return marked("1", text); }
    [[nodiscard]] std::string dim(std::string_view text) const { return marked("2", text); }
    [[nodiscard]] std::string red(std::string_view text) const { return marked("31", text); }
    [[nodiscard]] std::string green(std::string_view text) const { return marked("32", text); }
    [[nodiscard]] std::string yellow(std::string_view text) const { return marked("33", text); }
    [[nodiscard]] std::string cyan(std::string_view text) const { return marked("36", text); }

  private:
    [[nodiscard]] std::string marked(std::string_view code, std::string_view text) const;
    bool colour_;
};

/// How many columns of a terminal the text takes: one a character, two a wide one, none for marks and for markup.
[[nodiscard]] std::size_t displayWidth(std::string_view text);

/// The text with blanks behind it up to a width.
[[nodiscard]] std::string padded(std::string text, std::size_t width);

/// Control characters as a reader can see them, so that no text of a document moves the cursor.
[[nodiscard]] std::string printable(std::string_view text);

/// Rows whose columns line up; no blanks at line ends.
class Table {
  public:
    explicit Table(std::string indent = {}) : indent_(std::move(indent)) {}
    void add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
    [[nodiscard]] bool empty() const noexcept { return rows_.empty(); }
    [[nodiscard]] std::string text() const;

  private:
    std::string indent_;
    std::vector<std::vector<std::string>> rows_;
};

/// "1 method", "2 methods".
[[nodiscard]] std::string counted(std::size_t count, std::string_view what);

}  // namespace vrn::cli
