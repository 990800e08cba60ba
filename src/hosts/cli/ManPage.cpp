// The manual page, in the language of man(7).
#include <array>
#include <cstdio>

#include "hosts/cli/Help.h"
#include "text/Lists.h"
#include "text/Unicode.h"

namespace vrn::cli {

namespace {

// Characters as roff takes them for themselves: dashes that can be copied, no requests at line starts.
std::string roffText(std::string_view text) {
    std::string out(text.starts_with('.') ? "\\&" : "");
    while (!text.empty()) {
        const char32_t c = text::takeCodePoint(text);
        if (c == U'\\') {
            out += "\\e";
        } else if (c == U'-') {
            out += "\\-";
        } else if (c == U'\'') {
            out += "\\(aq";
        } else if (c < 0x80) {
            out += static_cast<char>(c);
        } else {
            std::array<char, 16> number{};
            (void)std::snprintf(number.data(), number.size(), "\\[u%04X]", static_cast<unsigned>(c));
            out += number.data();
        }
    }
    return out;
}

// One line, with `code`, **strong** and [text](target) turned into what roff has for them.
std::string inlineMarks(std::string_view text) {
    std::string out;
    const auto marked = [&](std::string_view mark) {
        const auto end = text.find(mark, mark.size());
        if (!text.starts_with(mark) || end == std::string_view::npos) {
            return false;
        }
        out += "\\fB" + roffText(text.substr(mark.size(), end - mark.size())) + "\\fR";
        text.remove_prefix(end + mark.size());
        return true;
    };
    const auto linked = [&] {
        const auto middle = text.find("](");
        const auto end = text.find(')', middle == std::string_view::npos ? 0 : middle);
        const bool isLink = text.starts_with('[') && middle != std::string_view::npos &&
                            end != std::string_view::npos &&
                            text.substr(1, middle - 1).find('[') == std::string_view::npos;
        if (isLink) {
            out += roffText(text.substr(1, middle - 1));
            text.remove_prefix(end + 1);
        }
        return isLink;
    };
    while (!text.empty()) {
        if (marked("`") || marked("**") || linked()) {
            continue;
        }
        const auto next = text.find_first_of("`*[", 1);
        const auto plain = text.substr(0, next);
        // A period within the line begins no request.
        out += out.empty() ? roffText(plain) : roffText("x" + std::string(plain)).substr(1);
        text.remove_prefix(plain.size());
    }
    return out;
}

std::vector<std::string> cellsOf(std::string_view row) {
    row.remove_prefix(1);
    row.remove_suffix(row.ends_with('|') ? 1 : 0);
    std::vector<std::string> cells;
    for (const auto& cell : text::split(row, "|")) {
        cells.emplace_back(text::trimBlanks(cell));
    }
    return cells;
}

class Writer {
  public:
    std::string write(const std::string& text) {
        for (const auto& line : text::split(text, "\n")) {
            add(line);
        }
        setVerbatim(false);
        return std::move(out_);
    }

  private:
    void setVerbatim(bool verbatim) {
        if (verbatim != isVerbatim_) {
            isVerbatim_ = verbatim;
            out_ += verbatim ? ".nf\n" : ".fi\n";
        }
    }

    void add(const std::string& line) {
        if (line.starts_with("```")) {
            isFenced_ = !isFenced_;
            setVerbatim(isFenced_);
        } else if (isFenced_) {
            out_ += roffText(line) + "\n";
        } else if (line.starts_with('|')) {
            addRow(line);
        } else {
            header_.clear();
            addText(line);
        }
    }

    void addText(const std::string& line) {
        const bool continuesItem = isInItem_ && line.starts_with(' ');
        isInItem_ = line.starts_with("- ") || continuesItem;
        setVerbatim(line.starts_with(' ') && !continuesItem);
        if (line.empty()) {
            out_ += ".PP\n";
        } else if (line.starts_with('#')) {
            const auto heading = std::string_view(line).substr(line.find_first_not_of("# "));
            out_ += ".PP\n\\fB" + roffText(heading) + "\\fR\n.PP\n";
        } else if (line.starts_with("- ")) {
            out_ += ".IP \\(bu 2\n" + inlineMarks(std::string_view(line).substr(2)) + "\n";
        } else if (continuesItem) {
            out_ += inlineMarks(text::trimBlanks(line)) + "\n";
        } else {
            out_ += (isVerbatim_ ? roffText(line) : inlineMarks(line)) + "\n";
        }
    }

    // A row of a table becomes an entry under its first cell, the others after the names of their columns.
    void addRow(const std::string& line) {
        setVerbatim(false);
        const auto cells = cellsOf(line);
        if (header_.empty()) {
            header_ = cells;
            return;
        }
        if (cells.empty() || cells.front().starts_with("---")) {
            return;
        }
        out_ += ".TP\n" + inlineMarks(cells.front()) + "\n";
        bool isFirst = true;
        for (std::size_t i = 1; i < cells.size(); ++i) {
            if (!cells[i].empty()) {
                out_ += isFirst ? "" : ".br\n";
                out_ += i < header_.size() ? inlineMarks(header_[i] + ": " + cells[i]) : inlineMarks(cells[i]);
                out_ += "\n";
                isFirst = false;
            }
        }
    }

    std::string out_;
    std::vector<std::string> header_;
    bool isVerbatim_ = false;
    bool isFenced_ = false;
    bool isInItem_ = false;
};

std::string bold(const std::string& text) { return "\\fB" + roffText(text) + "\\fR"; }
std::string italic(const std::string& text) { return "\\fI" + roffText(text) + "\\fR"; }

std::string sentence(const std::string& text) { return text.empty() || text.ends_with('.') ? text : text + "."; }

std::string optionEntry(const OptionHelp& option) {
    std::vector<std::string> names;
    for (const auto& name : option.names) {
        names.push_back(option.isPositional ? italic(name) : bold(name));
    }
    std::string entry = ".TP\n" + text::join(names, ", ");
    if (!option.isPositional && !option.metavar.empty()) {
        entry += " " + italic(option.metavar);
    }
    entry += "\n" + roffText(sentence(option.description)) + "\n";
    if (!option.choices.empty()) {
        entry += "One of " + roffText(text::join(option.choices, ", ")) + ".\n";
    }
    return option.defaultValue.empty() ? entry : entry + "[default: " + roffText(option.defaultValue) + "]\n";
}

std::string synopsis(const ToolHelp& tool, const CommandHelp& command) {
    std::string line = ".PP\n" + bold(tool.name + " " + command.name) + " [" + italic("OPTIONS") + "]";
    for (const auto& option : command.options) {
        if (option.isPositional) {
            const auto name = italic(option.names.front()) + (option.isRepeated ? "..." : "");
            line += option.isRequired ? " " + name : " [" + name + "]";
        }
    }
    return line + "\n";
}

}  // namespace

std::string roffParagraphs(const std::string& text) { return Writer().write(text); }

std::string manPage(const ToolHelp& tool, const std::string& version) {
    std::string page = ".TH " + tool.name + R"( 1 "" ")" + tool.name + " " + version + R"(" "User commands")" + "\n";
    page += ".SH NAME\n" + tool.name + " \\- method editor for laboratory sampling instruments, without windows\n";
    page += ".SH SYNOPSIS\n" + bold(tool.name) + " " + italic("COMMAND") + " [" + italic("OPTIONS") + "] ...\n";
    page += ".SH DESCRIPTION\n" + roffParagraphs(tool.summary) + ".PP\n" + roffParagraphs(tool.footer);
    page += ".SH OPTIONS\n";
    for (const auto& option : tool.options) {
        page += optionEntry(option);
    }
    page += ".SH COMMANDS\n";
    for (const auto& command : tool.commands) {
        page += ".SS " + command.name + "\n" + roffText(sentence(command.summary)) + "\n" + synopsis(tool, command);
        for (const auto& option : command.options) {
            page += optionEntry(option);
        }
        page += ".PP\n" + roffParagraphs(command.footer);
    }
    return page;
}

}  // namespace vrn::cli
