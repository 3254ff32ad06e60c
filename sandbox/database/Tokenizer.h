// Cuts statements of the server's dialect into tokens.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sandbox {

struct Token {
    enum class Sort {
        word,     ///< keyword or name as written
        text,     ///< 'text' or N'text', doubled quotes made single
        whole,    ///< 12
        decimal,  ///< 1.5
        real,     ///< 1e3, as a person may scan where a number is read
        variable, ///< @name, with its "@"
        symbol,   ///< an operator or punctuation mark
        end,
    };
    Sort sort = Sort::end;
    std::string text;
    bool wide = false;     ///< N'text'
    std::size_t begin = 0; ///< where it stands in the statement
    std::size_t end = 0;
    int parameter = 0; ///< from 1: the token's place among the statement's plain values; 0 for none

    /// A keyword or symbol, without case.
    bool is(std::string_view word) const;
};

/// Where a token stands, without its text.
struct TokenPlace {
    Token::Sort sort = Token::Sort::end;
    bool wide = false; ///< N'text'
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// The first token at or behind `from`; comments and blanks are passed over. Errors as `tokenize`.
TokenPlace nextToken(std::string_view statement, std::size_t from);

/// What the token says: without its quotes, and doubled quotes made single.
std::string tokenText(std::string_view statement, const TokenPlace& place);

/// Comments and blanks are passed over; the last token is of the sort `end`.
/// Errors: -2147217900 for a character that no statement has, and for a quote without its end.
std::vector<Token> tokenize(std::string_view statement);

} // namespace sandbox
