// Reads the server's dialect: tokens in, syntax trees out.
#pragma once

#include "sandbox/database/Ast.h"
#include "sandbox/database/Tokenizer.h"

#include <string_view>

namespace sandbox {

/// Walks over tokens. The reading of expressions and selects is shared by statements and definitions.
/// All errors are -2147217900 and name the place.
class Parser {
public:
    explicit Parser(std::vector<Token> tokens) : tokens_(std::move(tokens)) {}

    Statement statement();
    ExpressionPtr expression();
    std::unique_ptr<Select> select();
    SqlType type();

    const Token& peek(std::size_t ahead = 0) const;
    Token take();
    bool accept(std::string_view word);
    void expect(std::string_view word);
    std::string name();
    /// One or more names in brackets.
    std::vector<std::string> names();
    int wholeNumber();
    bool atEnd() const { return peek().sort == Token::Sort::end; }
    void expectEnd();
    [[noreturn]] void refuse() const;

private:
    std::unique_ptr<Select> selectCore();
    SelectItem item();
    void sources(Select& into);
    Source source();
    std::string aliasOrNothing();
    Insert insert();
    Update update();
    Delete deletion();
    ProcedureCall call();

    ExpressionPtr conjunction();
    ExpressionPtr comparison();
    ExpressionPtr sum();
    ExpressionPtr unary();
    ExpressionPtr primary();
    ExpressionPtr caseOf();
    ExpressionPtr functionCall(std::string name);
    ExpressionPtr conversion();

    /// Brackets and subqueries nest no deeper than this, so that no statement exhausts the stack.
    static constexpr int kDeepest = 60;
    /// A chain of operators is as deep a tree as brackets are.
    static constexpr int kMostOperators = 500;
    struct Depth;
    void countOperator();

    std::vector<Token> tokens_;
    std::size_t at_ = 0;
    int depth_ = 0;
    int operators_ = 0;
};

/// One whole statement. Error -2147217900 when there is more or less than that.
Statement parseStatement(std::string_view text);

} // namespace sandbox
