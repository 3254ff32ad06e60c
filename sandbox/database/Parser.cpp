#include "sandbox/database/Parser.h"

#include "automation/Members.h"
#include "sandbox/database/Errors.h"

#include <array>
#include <charconv>

namespace sandbox {
namespace {

/// Words that end an expression or a source, and so are never an alias written without "as".
bool isReserved(const Token& token) {
    static constexpr std::array<std::string_view, 36> kReserved{
        "from", "where", "group", "having", "order", "union", "intersect", "except", "on", "inner",   "left", "right",
        "full", "cross", "join",  "and",    "or",    "not",   "like",      "in",     "is", "between", "when", "then",
        "else", "end",   "as",    "asc",    "desc",  "set",   "values",    "select", "by", "exists",  "case", "with"};
    for (std::string_view word : kReserved)
        if (token.is(word)) return true;
    return false;
}

} // namespace

const Token& Parser::peek(std::size_t ahead) const {
    return at_ + ahead < tokens_.size() ? tokens_[at_ + ahead] : tokens_.back();
}

Token Parser::take() {
    Token token = peek();
    if (at_ + 1 < tokens_.size()) ++at_;
    return token;
}

bool Parser::accept(std::string_view word) {
    if (!peek().is(word)) return false;
    take();
    return true;
}

void Parser::expect(std::string_view word) {
    if (!accept(word)) refuse();
}

void Parser::expectEnd() {
    if (!atEnd()) refuse();
}

void Parser::refuse() const {
    if (atEnd()) fail(kSyntaxError, "Incorrect syntax: the statement ends too early.");
    fail(kSyntaxError, "Incorrect syntax near '" + peek().text + "'.");
}

std::string Parser::name() {
    if (peek().sort != Token::Sort::word || isReserved(peek())) refuse();
    return take().text;
}

std::vector<std::string> Parser::names() {
    std::vector<std::string> list;
    expect("(");
    do list.push_back(name());
    while (accept(","));
    expect(")");
    return list;
}

int Parser::wholeNumber() {
    if (peek().sort != Token::Sort::whole) refuse();
    int number = 0;
    const std::string& text = peek().text;
    if (std::from_chars(text.data(), text.data() + text.size(), number).ec != std::errc()) refuse();
    take();
    return number;
}

SqlType Parser::type() {
    const Token word = take();
    SqlType type = typeNamed(word.text);
    if (word.sort != Token::Sort::word || type.kind == Kind::unknown)
        fail(kSyntaxError, "'" + word.text + "' is not a type that is known here.");
    if (!accept("(")) return type;
    type.size = accept("max") ? 0 : wholeNumber();
    if (accept(",")) type.scale = wholeNumber();
    expect(")");
    if (type.kind == Kind::decimal && (type.size < 1 || type.size > 38 || type.scale > type.size))
        fail(kSyntaxError, "A decimal has 1 to 38 digits.");
    return type;
}

Statement Parser::statement() {
    Statement result;
    if (peek().is("select"))
        result = select();
    else if (peek().is("insert"))
        result = insert();
    else if (peek().is("update"))
        result = update();
    else if (peek().is("delete"))
        result = deletion();
    else
        result = call();
    expectEnd();
    return result;
}

std::unique_ptr<Select> Parser::select() {
    auto first = selectCore();
    while (accept("intersect")) first->intersected.push_back(selectCore());
    if (accept("order")) {
        expect("by");
        do first->orderBy.push_back(expression());
        while (accept(","));
    }
    return first;
}

std::unique_ptr<Select> Parser::selectCore() {
    expect("select");
    auto core = std::make_unique<Select>();
    core->distinct = accept("distinct");
    if (accept("top")) core->top = wholeNumber();
    do core->items.push_back(item());
    while (accept(","));
    if (accept("from")) sources(*core);
    if (accept("where")) core->where = expression();
    if (accept("group")) {
        expect("by");
        do core->groupBy.push_back(expression());
        while (accept(","));
    }
    return core;
}

SelectItem Parser::item() {
    SelectItem item;
    if (accept("*")) return item;
    item.expression = expression();
    item.alias = accept("as") ? name() : aliasOrNothing();
    return item;
}

std::string Parser::aliasOrNothing() {
    if (peek().sort == Token::Sort::word && !isReserved(peek())) return take().text;
    return "";
}

void Parser::sources(Select& into) {
    into.sources.push_back(source());
    while (true) {
        if (accept(",")) {
            into.sources.push_back(source());
        } else if (accept("inner")) {
            expect("join");
            into.sources.push_back(source());
            expect("on");
            into.sources.back().on = expression();
        } else {
            return;
        }
    }
}

Source Parser::source() {
    Source source;
    if (accept("(")) {
        source.select = select();
        expect(")");
        source.alias = name();
        return source;
    }
    source.table = name();
    source.alias = aliasOrNothing();
    if (source.alias.empty()) source.alias = source.table;
    return source;
}

Insert Parser::insert() {
    expect("insert");
    expect("into");
    Insert insert;
    insert.table = name();
    if (peek().is("(")) insert.columns = names();
    expect("values");
    do {
        expect("(");
        auto& row = insert.rows.emplace_back();
        do row.push_back(expression());
        while (accept(","));
        expect(")");
    } while (accept(","));
    return insert;
}

Update Parser::update() {
    expect("update");
    Update update;
    update.table = name();
    expect("set");
    do {
        std::string column = name();
        expect("=");
        update.assignments.emplace_back(std::move(column), expression());
    } while (accept(","));
    if (accept("where")) update.where = expression();
    return update;
}

Delete Parser::deletion() {
    expect("delete");
    Delete deletion;
    deletion.table = name();
    if (accept("where")) deletion.where = expression();
    return deletion;
}

ProcedureCall Parser::call() {
    ProcedureCall call;
    call.name = name();
    if (atEnd()) return call;
    do call.arguments.push_back(expression());
    while (accept(","));
    return call;
}

Statement parseStatement(std::string_view text) { return Parser(tokenize(text)).statement(); }

} // namespace sandbox
