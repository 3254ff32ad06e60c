#include "sandbox/database/Tokenizer.h"

#include "automation/Ascii.h"
#include "automation/Members.h"
#include "sandbox/database/Errors.h"

namespace sandbox {
namespace {

using automation::isDigit;

bool isNameStart(char c) { return automation::isLetter(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80; }
bool isNamePart(char c) { return isNameStart(c) || isDigit(c); }

/// Doubled quotes made single.
std::string unquoted(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        result += text[i];
        if (text[i] == '\'') ++i;
    }
    return result;
}

class Cutter {
public:
    Cutter(std::string_view text, std::size_t from) : text_(text), at_(from) {}

    TokenPlace next() {
        skipBlanks();
        TokenPlace place{Token::Sort::end, false, at_, at_};
        if (at_ < text_.size()) place.sort = pass(place.wide);
        place.end = at_;
        return place;
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
            } else {
                return;
            }
        }
    }

    Token::Sort pass(bool& wide) {
        const char c = at(0);
        wide = (c == 'N' || c == 'n') && at(1) == '\'';
        if (wide) ++at_;
        if (at(0) == '\'') return text();
        if (isNameStart(c)) return name(Token::Sort::word);
        if (c == '@') return name(Token::Sort::variable);
        if (isDigit(c) || (c == '.' && isDigit(at(1)))) return number();
        return symbol();
    }

    Token::Sort text() {
        const std::size_t begin = at_;
        for (++at_; at_ < text_.size(); ++at_) {
            if (text_[at_] != '\'') continue;
            if (at(1) != '\'') {
                ++at_;
                return Token::Sort::text;
            }
            ++at_;
        }
        fail(kSyntaxError,
             "Unclosed quotation mark before the character string '" + unquoted(text_.substr(begin + 1)) + "'.");
    }

    Token::Sort name(Token::Sort sort) {
        ++at_;
        while (at_ < text_.size() && isNamePart(text_[at_])) ++at_;
        return sort;
    }

    Token::Sort number() {
        Token::Sort sort = Token::Sort::whole;
        while (isDigit(at(0))) ++at_;
        if (at(0) == '.') {
            sort = Token::Sort::decimal;
            ++at_;
            while (isDigit(at(0))) ++at_;
        }
        const std::size_t sign = at(1) == '+' || at(1) == '-' ? 1 : 0;
        if ((at(0) == 'e' || at(0) == 'E') && isDigit(at(1 + sign))) {
            sort = Token::Sort::real;
            at_ += 1 + sign;
            while (isDigit(at(0))) ++at_;
        }
        return sort;
    }

    Token::Sort symbol() {
        for (std::string_view two : {"<>", "<=", ">="})
            if (text_.substr(at_, 2) == two) {
                at_ += 2;
                return Token::Sort::symbol;
            }
        static constexpr std::string_view kSingle = "()+-*,.=<>";
        if (kSingle.find(at(0)) == std::string_view::npos)
            fail(kSyntaxError, std::string("Incorrect syntax near '") + at(0) + "'.");
        ++at_;
        return Token::Sort::symbol;
    }

    std::string_view text_;
    std::size_t at_;
};

} // namespace

bool Token::is(std::string_view word) const {
    return (sort == Sort::word || sort == Sort::symbol) && automation::sameName(text, word);
}

TokenPlace nextToken(std::string_view statement, std::size_t from) { return Cutter(statement, from).next(); }

std::string tokenText(std::string_view statement, const TokenPlace& place) {
    std::string_view text = statement.substr(place.begin, place.end - place.begin);
    if (place.sort != Token::Sort::text) return std::string(text);
    text.remove_prefix(place.wide ? 2 : 1);
    text.remove_suffix(1);
    return unquoted(text);
}

std::vector<Token> tokenize(std::string_view statement) {
    std::vector<Token> tokens;
    std::size_t at = 0;
    do {
        const TokenPlace place = nextToken(statement, at);
        at = place.end;
        tokens.push_back({place.sort, tokenText(statement, place), place.wide, place.begin, place.end});
    } while (tokens.back().sort != Token::Sort::end);
    return tokens;
}

} // namespace sandbox
