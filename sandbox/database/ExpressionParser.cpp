// The reading of expressions, from the loosest binding to the closest.
#include "sandbox/database/Errors.h"
#include "sandbox/database/Parser.h"

namespace sandbox {
namespace {

using Form = Expression::Form;

ExpressionPtr make(Form form, std::string name = "") {
    auto expression = std::make_unique<Expression>();
    expression->form = form;
    expression->name = std::move(name);
    return expression;
}

template <class... Parts> ExpressionPtr makeOf(Form form, std::string name, Parts... parts) {
    auto expression = make(form, std::move(name));
    (expression->parts.push_back(std::move(parts)), ...);
    return expression;
}

} // namespace

struct Parser::Depth {
    explicit Depth(Parser& parser) : parser_(parser) {
        if (++parser_.depth_ > kDeepest) {
            --parser_.depth_;
            fail(kSyntaxError, "The statement is nested too deeply.");
        }
    }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;
    ~Depth() { --parser_.depth_; }
    Parser& parser_;
};

void Parser::countOperator() {
    if (++operators_ > kMostOperators) fail(kSyntaxError, "The statement has too many operators.");
}

ExpressionPtr Parser::expression() {
    Depth depth(*this);
    auto left = conjunction();
    while (accept("or")) {
        countOperator();
        auto right = conjunction();
        left = makeOf(Form::logical, "OR", std::move(left), std::move(right));
    }
    return left;
}

ExpressionPtr Parser::conjunction() {
    auto left = comparison();
    while (accept("and")) {
        countOperator();
        auto right = comparison();
        left = makeOf(Form::logical, "AND", std::move(left), std::move(right));
    }
    return left;
}

ExpressionPtr Parser::comparison() {
    auto left = sum();
    for (std::string_view symbol : {"=", "<>", "<", ">", "<=", ">="})
        if (accept(symbol)) {
            auto right = sum();
            return makeOf(Form::compare, std::string(symbol), std::move(left), std::move(right));
        }
    if (accept("is")) {
        auto test = makeOf(Form::isNull, "", std::move(left));
        test->negated = accept("not");
        expect("null");
        return test;
    }
    const bool negated = peek().is("not") && (peek(1).is("like") || peek(1).is("in"));
    if (negated) take();
    ExpressionPtr test;
    if (accept("like")) {
        auto pattern = sum();
        test = makeOf(Form::like, "", std::move(left), std::move(pattern));
    } else if (accept("in")) {
        expect("(");
        if (peek().is("select")) {
            test = makeOf(Form::inQuery, "", std::move(left));
            test->select = select();
        } else {
            test = makeOf(Form::inList, "", std::move(left));
            do test->parts.push_back(sum());
            while (accept(","));
        }
        expect(")");
    } else {
        return left;
    }
    test->negated = negated;
    return test;
}

ExpressionPtr Parser::sum() {
    auto left = unary();
    while (peek().is("+") || peek().is("-")) {
        countOperator();
        std::string symbol = take().text;
        auto right = unary();
        left = makeOf(Form::arithmetic, std::move(symbol), std::move(left), std::move(right));
    }
    return left;
}

ExpressionPtr Parser::unary() {
    Depth depth(*this);
    if (accept("-")) return makeOf(Form::negate, "", unary());
    return primary();
}

ExpressionPtr Parser::primary() {
    const Token token = peek();
    switch (token.sort) {
    case Token::Sort::whole: {
        take();
        auto number = make(Form::whole, token.text);
        number->parameter = token.parameter;
        return number;
    }
    case Token::Sort::decimal: take(); return make(Form::decimal, token.text);
    case Token::Sort::real: take(); return make(Form::real, token.text);
    case Token::Sort::variable: take(); return make(Form::variable, token.text);
    case Token::Sort::text: {
        take();
        auto text = make(Form::text, token.text);
        text->wide = token.wide;
        text->parameter = token.parameter;
        return text;
    }
    default: break;
    }
    if (accept("(")) {
        if (peek().is("select")) {
            auto query = make(Form::subquery);
            query->select = select();
            expect(")");
            return query;
        }
        auto inner = expression();
        expect(")");
        return inner;
    }
    if (accept("null")) return make(Form::null);
    if (accept("case")) return caseOf();
    if (accept("convert")) return conversion();
    if (accept("current_timestamp")) return make(Form::call, "getdate");
    if (accept("right")) return functionCall(token.text); // reserved as a join's word
    std::string first = name();
    if (peek().is("(")) return functionCall(std::move(first));
    if (!accept(".")) return make(Form::column, std::move(first));
    auto column = make(Form::column, name());
    column->qualifier = std::move(first);
    return column;
}

ExpressionPtr Parser::caseOf() {
    auto whole = make(Form::caseOf);
    if (!peek().is("when")) {
        whole->hasSubject = true;
        whole->parts.push_back(expression());
    }
    do {
        expect("when");
        whole->parts.push_back(expression());
        expect("then");
        whole->parts.push_back(expression());
    } while (peek().is("when"));
    if (accept("else")) {
        whole->hasElse = true;
        whole->parts.push_back(expression());
    }
    expect("end");
    return whole;
}

ExpressionPtr Parser::functionCall(std::string name) {
    auto call = make(Form::call, std::move(name));
    expect("(");
    if (accept("*")) {
        call->star = true;
    } else if (!peek().is(")")) {
        do call->parts.push_back(expression());
        while (accept(","));
    }
    expect(")");
    return call;
}

ExpressionPtr Parser::conversion() {
    auto whole = make(Form::convert);
    expect("(");
    expect("int");
    expect(",");
    whole->parts.push_back(expression());
    expect(")");
    return whole;
}

} // namespace sandbox
