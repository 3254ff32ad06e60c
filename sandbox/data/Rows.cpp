#include "sandbox/data/Rows.h"

namespace sandbox {

Literal::Literal(const std::string& text) : text_("N'") {
    for (const char c : text) {
        if (c == '\'') text_ += c;
        text_ += c;
    }
    text_ += '\'';
}

Literal Literal::plain(std::string literal) { return Literal(std::move(literal), Plain()); }

Rows::Rows(const Execute& execute, std::string_view table, std::string_view columns)
    : execute_(execute), beginning_("insert into " + std::string(table) + " (" + std::string(columns) + ") values ") {}

void Rows::add(std::initializer_list<Literal> cells) {
    pending_ += count_ == 0 ? "(" : ",(";
    bool first = true;
    for (const Literal& cell : cells) {
        if (!first) pending_ += ',';
        pending_ += cell.text();
        first = false;
    }
    pending_ += ')';
    if (++count_ == kRowsInOne) flush();
}

void Rows::flush() {
    if (count_ == 0) return;
    execute_(beginning_ + pending_);
    pending_.clear();
    count_ = 0;
}

} // namespace sandbox
