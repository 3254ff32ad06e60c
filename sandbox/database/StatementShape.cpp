#include "sandbox/database/StatementShape.h"

#include "sandbox/database/Parser.h"

#include <charconv>

namespace sandbox {
namespace {

constexpr std::size_t kMostDigits = 9;

bool isPlainValue(Token::Sort sort, std::size_t length) {
    return sort == Token::Sort::text || (sort == Token::Sort::whole && length <= kMostDigits);
}

} // namespace

StatementShape shapeOf(std::string_view statement) {
    // Characters that no token begins with.
    constexpr char kText = '\1', kWideText = '\2', kNumber = '\3';
    StatementShape shape;
    shape.key.reserve(statement.size());
    for (TokenPlace place = nextToken(statement, 0); place.sort != Token::Sort::end;
         place = nextToken(statement, place.end)) {
        const std::string_view raw = statement.substr(place.begin, place.end - place.begin);
        if (!isPlainValue(place.sort, raw.size())) {
            shape.key += raw;
            shape.key += ' ';
        } else if (place.sort == Token::Sort::text) {
            shape.key += place.wide ? kWideText : kText;
            shape.values.emplace_back(tokenText(statement, place));
        } else {
            std::int64_t number = 0;
            std::from_chars(raw.data(), raw.data() + raw.size(), number);
            shape.key += kNumber;
            shape.values.emplace_back(number);
        }
    }
    return shape;
}

Statement parseWithParameters(std::string_view statement) {
    std::vector<Token> tokens = tokenize(statement);
    int count = 0;
    for (Token& token : tokens)
        if (isPlainValue(token.sort, token.end - token.begin)) token.parameter = ++count;
    return Parser(std::move(tokens)).statement();
}

} // namespace sandbox
