// Rows on their way into a table: several to a statement, values as literals.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace sandbox {

/// One literal of a statement.
class Literal {
public:
    Literal(int number) : text_(std::to_string(number)) {}
    Literal(const char* text) : Literal(std::string(text)) {}
    Literal(const std::string& text);
    Literal(std::nullptr_t) : text_("null") {}
    /// Taken as it is: decimals, for example.
    static Literal plain(std::string literal);

    const std::string& text() const { return text_; }

private:
    struct Plain {};
    Literal(std::string literal, Plain) : text_(std::move(literal)) {}

    std::string text_;
};

class Rows {
public:
    using Execute = std::function<void(const std::string& statement)>;

    /// `columns` parted by commas. Call flush() at the end.
    Rows(const Execute& execute, std::string_view table, std::string_view columns);

    void add(std::initializer_list<Literal> cells);
    void flush();

private:
    static constexpr int kRowsInOne = 50;

    const Execute& execute_;
    std::string beginning_;
    std::string pending_;
    int count_ = 0;
};

} // namespace sandbox
