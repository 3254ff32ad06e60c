#include "sandbox/database/Tokenizer.h"

#include "automation/Members.h"
#include "sandbox/database/Errors.h"

#include <array>

namespace sandbox {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isNameStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '#' ||
           static_cast<unsigned char>(c) >= 0x80;
}
bool isNamePart(char c) { return isNameStart(c) || isDigit(c) || c == '$' || c == '@'; }

class Cutter {
public:
    explicit Cutter(std::string_view text) : text_(text) {}

    std::vector<Token> cut() {
        std::vector<Token> tokens;
        while (skipBlanks(), at_ < text_.size()) {
            const std::size_t begin = at_;
            Token token = next();
            token.begin = begin;
            token.end = at_;
            tokens.push_back(std::move(token));
        }
        tokens.push_back({Token::Sort::end, "", false, text_.size(), text_.size()});
        return tokens;
    }

private:
    char at(std::size_t ahead) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }

    void skipBlanks() {
        while (at_ < text_.size()) {
            const char c = at(0);
            if (c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v') {
                ++at_;
            } else if (c == '-' && at(1) == '-') {
                while (at_ < text_.size() && at(0) != '\n') ++at_;
            } else if (c == '/' && at(1) == '*') {
                const std::size_t close = text_.find("*/", at_ + 2);
                if (close == std::string_view::npos) fail(kSyntaxError, "Missing end comment mark '*/'.");
                at_ = close + 2;
            } else {
                return;
            }
        }
    }

    Token next() {
        const char c = at(0);
        if ((c == 'N' || c == 'n') && at(1) == '\'') {
            ++at_;
            Token token = quoted(Token::Sort::text, '\'');
            token.wide = true;
            return token;
        }
        if (c == '\'') return quoted(Token::Sort::text, '\'');
        if (c == '[') return quoted(Token::Sort::quoted, ']');
        if (c == '"') return quoted(Token::Sort::quoted, '"');
        if (isNameStart(c)) return name(Token::Sort::word);
        if (c == '@') return name(Token::Sort::variable);
        if (isDigit(c) || (c == '.' && isDigit(at(1)))) return number();
        return symbol();
    }

    Token quoted(Token::Sort sort, char quote) {
        Token token{sort};
        for (++at_; at_ < text_.size(); ++at_) {
            if (text_[at_] == quote) {
                if (at(1) != quote) {
                    ++at_;
                    return token;
                }
                ++at_;
            }
            token.text += text_[at_];
        }
        fail(kSyntaxError, "Unclosed quotation mark before the character string '" + token.text + "'.");
    }

    Token name(Token::Sort sort) {
        const std::size_t begin = at_++;
        while (at_ < text_.size() && isNamePart(text_[at_])) ++at_;
        return {sort, std::string(text_.substr(begin, at_ - begin))};
    }

    Token number() {
        const std::size_t begin = at_;
        Token token{Token::Sort::whole};
        while (isDigit(at(0))) ++at_;
        if (at(0) == '.') {
            token.sort = Token::Sort::decimal;
            ++at_;
            while (isDigit(at(0))) ++at_;
        }
        const std::size_t sign = at(1) == '+' || at(1) == '-' ? 1 : 0;
        if ((at(0) == 'e' || at(0) == 'E') && isDigit(at(1 + sign))) {
            token.sort = Token::Sort::real;
            at_ += 1 + sign;
            while (isDigit(at(0))) ++at_;
        }
        token.text = text_.substr(begin, at_ - begin);
        return token;
    }

    Token symbol() {
        static constexpr std::array<std::string_view, 6> kDouble{"<>", "<=", ">=", "!=", "!<", "!>"};
        for (std::string_view two : kDouble)
            if (text_.substr(at_, 2) == two) {
                at_ += 2;
                return {Token::Sort::symbol, std::string(two)};
            }
        static constexpr std::string_view kSingle = "()+-*/%,.=<>;&|^~";
        if (kSingle.find(at(0)) == std::string_view::npos)
            fail(kSyntaxError, std::string("Incorrect syntax near '") + at(0) + "'.");
        return {Token::Sort::symbol, std::string(1, text_[at_++])};
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

} // namespace

bool Token::is(std::string_view word) const {
    return (sort == Sort::word || sort == Sort::symbol) && automation::sameName(text, word);
}

std::vector<Token> tokenize(std::string_view statement) { return Cutter(statement).cut(); }

} // namespace sandbox
