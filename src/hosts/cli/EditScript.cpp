#include "hosts/cli/EditScript.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>

#include "hosts/cli/Output.h"
#include "text/Lists.h"
#include "text/Unicode.h"

namespace vrn::cli {

namespace {

struct Token {
    std::string text;
    bool isQuoted = false;
    bool isEquals = false;
    std::size_t column = 1;
};

class LineParser {
  public:
    LineParser(std::string place, std::size_t line, std::string_view text)
        : place_(std::move(place)), text_(text), line_(line) {
        requireText();
        for (skipBlanks(); at_ < text_.size() && text_[at_] != '#'; skipBlanks()) {
            tokens_.push_back(takeToken());
        }
    }

    std::optional<EditCommand> parse() {
        if (tokens_.empty()) {
            return std::nullopt;
        }
        using Verb = EditCommand::Verb;
        static const std::map<std::string, Verb> verbs{{"description", Verb::Description}, {"syringe", Verb::Syringe},
                                                       {"insert", Verb::Insert},           {"replace", Verb::Replace},
                                                       {"delete", Verb::Delete},           {"set", Verb::Set}};
        const auto verb = verbs.find(tokens_.front().text);
        if (verb == verbs.end()) {
            fail(tokens_.front(), "'" + tokens_.front().text +
                                      "' is no edit; there are insert, replace, delete, set, syringe and description");
        }
        ++next_;
        command_.verb = verb->second;
        command_.line = line_;
        parseArguments();
        if (next_ < tokens_.size()) {
            fail(tokens_[next_], "nothing more is expected here");
        }
        return std::move(command_);
    }

  private:
    [[noreturn]] void fail(const Token& token, const std::string& what) const { failAt(token.column, what); }
    [[noreturn]] void failAt(std::size_t column, const std::string& what) const {
        const auto shown = text::utf16Length(text_.substr(0, column - 1)) + 1;
        throw Fault(place_ + ":" + std::to_string(line_) + ":" + std::to_string(shown) + ": " + what);
    }

    // What is no text would otherwise go missing on its way into the method.
    void requireText() const {
        for (auto rest = text_; !rest.empty();) {
            const auto column = text_.size() - rest.size() + 1;
            const char32_t c = text::takeCodePoint(rest);
            if (c == text::invalidCodePoint) {
                failAt(column, "this is not UTF-8: save the script as UTF-8, or as UTF-16 with a byte order mark");
            }
            if (c == 0) {
                failAt(column, "a NUL is no text; UTF-16 needs a byte order mark");
            }
            if (!text::isXmlCharacter(c)) {
                failAt(column, "a method cannot hold this control character");
            }
        }
    }

    void skipBlanks() {
        while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t')) {
            ++at_;
        }
    }

    Token takeToken() {
        Token token;
        token.column = at_ + 1;
        if (text_[at_] == '=') {
            ++at_;
            token.isEquals = true;
        } else if (text_[at_] == '"') {
            takeQuoted(token);
        } else {
            const auto end = std::min(text_.find_first_of(" \t=\"#", at_), text_.size());
            token.text = text_.substr(at_, end - at_);
            at_ = end;
        }
        return token;
    }

    void takeQuoted(Token& token) {
        token.isQuoted = true;
        for (++at_; at_ < text_.size() && text_[at_] != '"'; ++at_) {
            if (text_[at_] == '\\' && at_ + 1 < text_.size()) {
                ++at_;
                if (text_[at_] != '"' && text_[at_] != '\\') {
                    failAt(at_ + 1, R"(only \" and \\ can be written with a backslash)");
                }
            }
            token.text += text_[at_];
        }
        if (at_ == text_.size()) {
            fail(token, "the closing quote is missing");
        }
        ++at_;
    }

    const Token& take(const char* what) {
        if (next_ == tokens_.size() || tokens_[next_].isEquals) {
            failAt(next_ == tokens_.size() ? text_.size() + 1 : tokens_[next_].column,
                   std::string(what) + " is expected here");
        }
        return tokens_[next_++];
    }

    std::size_t takeStep() {
        const auto& token = take("the number of a step");
        std::size_t number = 0;
        const auto* const end = token.text.data() + token.text.size();
        const auto [stopped, error] = std::from_chars(token.text.data(), end, number);
        if (error != std::errc() || stopped != end || number == 0) {
            fail(token, "'" + token.text + "' is not the number of a step");
        }
        return number;
    }

    void parseArguments() {
        using Verb = EditCommand::Verb;
        switch (command_.verb) {
            case Verb::Description:
                parseDescription();
                break;
            case Verb::Syringe:
                command_.text = take("a syringe").text;
                break;
            case Verb::Insert:
                parseInsert();
                break;
            case Verb::Replace:
                command_.step = takeStep();
                command_.text = take("a macro").text;
                parseValues();
                break;
            case Verb::Delete:
                command_.step = takeStep();
                break;
            case Verb::Set:
                command_.step = takeStep();
                parseValues();
                if (command_.values.empty()) {
                    (void)take("a parameter");
                }
                break;
        }
    }

    void parseDescription() {
        command_.text = take("a text in quotes").text;
        while (next_ < tokens_.size()) {
            command_.text += text::crlf;
            command_.text += take("a text in quotes").text;
        }
    }

    void parseInsert() {
        command_.text = take("a macro").text;
        command_.step = EditCommand::atEnd;
        // "before" and "after" could be parameters; with "=" after them they are.
        const bool hasPlace = next_ < tokens_.size() && !tokens_[next_].isQuoted &&
                              (tokens_[next_].text == "before" || tokens_[next_].text == "after") &&
                              (next_ + 1 == tokens_.size() || !tokens_[next_ + 1].isEquals);
        if (hasPlace) {
            command_.isBefore = tokens_[next_++].text == "before";
            command_.step = takeStep();
        }
        parseValues();
    }

    void parseValues() {
        while (next_ < tokens_.size()) {
            const auto& parameter = take("a parameter");
            if (next_ == tokens_.size() || !tokens_[next_].isEquals) {
                failAt(parameter.column, "'" + parameter.text + "' needs a value: PARAMETER=VALUE");
            }
            ++next_;
            const auto& value = take("a value");
            // The method keeps values between parentheses and commas and has no way to write these.
            if (value.text.find_first_of(",()") != std::string::npos) {
                fail(value, "a method cannot hold a value with a comma or a parenthesis");
            }
            command_.values.push_back({parameter.text, value.text});
        }
    }

    std::string place_;
    std::string_view text_;
    std::size_t line_;
    std::size_t at_ = 0;
    std::vector<Token> tokens_;
    std::size_t next_ = 0;
    EditCommand command_;
};

std::string utf8OfUtf16(const std::string& place, std::string_view bytes, bool isBigEndian) {
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        units += static_cast<char16_t>(isBigEndian ? first << 8U | second : second << 8U | first);
    }
    auto text = text::fromUtf16(units);
    const auto back = text::toUtf16(text);
    const auto wrong = std::mismatch(units.begin(), units.end(), back.begin(), back.end()).first;
    if (wrong != units.end() || bytes.size() % 2 != 0) {
        throw Fault(place + ":" + std::to_string(std::count(units.begin(), wrong, u'\n') + 1) +
                    ": half a character of UTF-16");
    }
    return text;
}

// The script by its byte order mark; without one it has to be UTF-8, which each line checks.
std::string utf8Of(const std::string& place, std::string_view script) {
    if (script.starts_with("\xFF\xFE") || script.starts_with("\xFE\xFF")) {
        return utf8OfUtf16(place, script.substr(2), script.front() == '\xFE');
    }
    return std::string(script.substr(script.starts_with("\xEF\xBB\xBF") ? 3 : 0));
}

}  // namespace

const std::string_view editScriptHelp =
    "A script holds one edit a line; # begins a comment:\n"
    "  insert MACRO [before N | after N] [PARAMETER=VALUE ...]\n"
    "  replace N MACRO [PARAMETER=VALUE ...]\n"
    "  set N PARAMETER=VALUE [PARAMETER=VALUE ...]\n"
    "  delete N\n"
    "  syringe NAME\n"
    "  description \"LINE\" [\"LINE\" ...]\n"
    "N is a step's number as the lines above have left it; without a place insert puts the step last. What\n"
    "holds a blank, = or # stands in double quotes, with \\\" and \\\\ for these two. Parameters that are not\n"
    "given get their defaults. A script is UTF-8, or UTF-16 with a byte order mark.";

std::vector<EditCommand> parseEditScript(const std::string& name, std::string_view script) {
    std::vector<EditCommand> commands;
    std::size_t number = 0;
    for (const auto& whole : text::split(utf8Of(displayName(name), script), "\n")) {
        std::string_view line = whole;
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        if (auto command = LineParser(displayName(name), ++number, line).parse()) {
            commands.push_back(std::move(*command));
        }
    }
    return commands;
}

}  // namespace vrn::cli
