// What the tool prints, for a reader at a terminal or for a program: colours where they are wanted, columns that line up, names of
// files, limits of parameters, JSON.
#pragma once

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace vrn::catalogue {
struct Parameter;
}

namespace vrn::cli {

/// Keys keep the order in which they are documented, texts are UTF-8.
using Json = nlohmann::ordered_json;
/// The value as text, for what is put together from pieces.
[[nodiscard]] std::string jsonText(const Json& value);
/// The value on one line, with line end.
[[nodiscard]] std::string jsonLine(const Json& value);

/// What the command line calls the standard input, and where it means that, the standard output.
inline constexpr std::string_view standardInput = "-";
/// The name of a file as UTF-8 text on one line: bytes that are not UTF-8 and control characters become "\xNN". Inside the tool a
/// name is what the system calls the file, byte for byte.
[[nodiscard]] std::string displayName(std::string_view path);
/// The name as a URI: of the scheme "file" when it is absolute, else a reference relative to the current folder.
[[nodiscard]] std::string uriOf(std::string_view path);
/// Why a file or folder cannot be read, in the same words wherever that is reported.
[[nodiscard]] std::string unreadable(const std::error_code& error);

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

/// The text with blanks after it up to a width.
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

/// What a parameter takes: "1 to 10, default 5", "one of: Tray 1, Tray 2", "any text". With `full` lists are not shortened.
[[nodiscard]] std::string limitsText(const catalogue::Parameter& parameter, bool full);
/// Adds unit, range, default, types and list of a parameter to an object.
void addLimits(Json& json, const catalogue::Parameter& parameter);

/// "1 method", "2 methods".
[[nodiscard]] std::string counted(std::size_t count, std::string_view what);

}  // namespace vrn::cli
