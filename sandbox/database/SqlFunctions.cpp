#include "sandbox/database/SqlFunctions.h"

#include "basic/Text.h"
#include "sandbox/database/Cell.h"
#include "sandbox/database/Errors.h"
#include "sandbox/database/ServerTime.h"
#include "sandbox/database/SqliteCell.h"

#include <memory>
#include <new>
#include <utility>

namespace sandbox {
namespace {

using Raised = std::optional<automation::RunTimeError>;

/// The arguments of one call.
class Call {
public:
    Call(sqlite3_context* context, sqlite3_value** values) : context_(context), values_(values) {}

    bool isNull(int i) const { return sqlite3_value_type(values_[i]) == SQLITE_NULL; }
    Cell cell(int i) const { return cellFrom(values_[i]); }
    std::string_view text(int i) const {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(values_[i]));
        if (!bytes) throw std::bad_alloc();
        return {bytes, static_cast<std::size_t>(sqlite3_value_bytes(values_[i]))};
    }
    std::int64_t number(int i) const { return sqlite3_value_int64(values_[i]); }
    int small(int i) const {
        return static_cast<int>(std::clamp<std::int64_t>(number(i), -1'000'000'000, 1'000'000'000));
    }
    SqlType type(int i) const { return {static_cast<Kind>(number(i))}; }

    void result(const Cell& cell) const { setResult(context_, cell); }

private:
    sqlite3_context* context_;
    sqlite3_value** values_;
};

void report(sqlite3_context* context) {
    auto& raised = *static_cast<Raised*>(sqlite3_user_data(context));
    try {
        throw;
    } catch (const automation::RunTimeError& error) {
        raised = error;
        sqlite3_result_error(context, error.what(), -1);
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    } catch (const std::exception& error) {
        sqlite3_result_error(context, error.what(), -1);
    }
}

using Body = Cell (*)(const Call&);

/// A decimal as its column keeps it.
basic::Digits stored(std::string_view text) { return parseDecimal(text).value_or(basic::Digits()); }

/// NULL in any argument gives NULL, as in all of the server's functions that are registered with this.
template <Body body> void strict(sqlite3_context* context, int count, sqlite3_value** values) {
    try {
        const Call call(context, values);
        for (int i = 0; i < count; ++i)
            if (call.isNull(i)) return sqlite3_result_null(context);
        call.result(body(call));
    } catch (...) {
        report(context);
    }
}

template <Body body> void plain(sqlite3_context* context, int, sqlite3_value** values) {
    try {
        const Call call(context, values);
        call.result(body(call));
    } catch (...) {
        report(context);
    }
}

SqlType targetType(const Call& call) {
    SqlType type{static_cast<Kind>(call.number(2)), call.small(3), call.small(4)};
    if (type.kind == Kind::text) type.fixed = std::exchange(type.scale, 0) != 0;
    return type;
}

Cell convertTo(const Call& call) { return convertCell(call.cell(0), call.type(1), targetType(call)); }
Cell put(const Call& call) { return storeCell(call.cell(0), call.type(1), targetType(call)); }

Cell negate(const Call& call) {
    const basic::Digits number = stored(call.text(0));
    return basic::plainText(basic::scaled(!number.negative, number.whole, number.fraction, 0));
}

Cell length(const Call& call) { return std::int64_t(basic::len(basic::rtrim(call.text(0)))); }
Cell upper(const Call& call) { return basic::ucase(call.text(0)); }

int lengthArgument(const Call& call, int i, const char* function) {
    if (call.number(i) < 0)
        fail(kServerFailure, std::string("Invalid length parameter passed to the ") + function + " function.");
    return call.small(i);
}

Cell right(const Call& call) { return basic::right(call.text(0), lengthArgument(call, 1, "right")); }

/// A start before the first character takes from the length.
Cell substring(const Call& call) {
    int count = lengthArgument(call, 2, "substring");
    int start = call.small(1);
    if (start < 1) {
        count += start - 1;
        start = 1;
    }
    return count <= 0 ? std::string() : basic::mid(call.text(0), start, count);
}

Cell replace(const Call& call) {
    const std::string_view text = call.text(0);
    const std::string folded = basic::ucase(text);
    const std::string sought = basic::ucase(call.text(1));
    // Letters whose two cases differ in length have no common positions; then case counts.
    if (folded.size() != text.size() || sought.size() != call.text(1).size())
        return basic::replaceAll(text, call.text(1), call.text(2));
    if (sought.empty()) return std::string(text);
    std::string result;
    std::size_t at = 0;
    for (std::size_t found; (found = folded.find(sought, at)) != std::string::npos; at = found + sought.size()) {
        result += text.substr(at, found - at);
        result += call.text(2);
    }
    result += text.substr(at);
    return result;
}

Cell like(const Call& call) { return std::int64_t(matchesLike(call.text(0), call.text(1))); }
Cell isNumeric(const Call& call) { return std::int64_t(!call.isNull(0) && looksNumeric(call.text(0))); }

Cell nowCell(const Call&) { return std::int64_t(now()); }

// Aggregates keep their state as an object behind a pointer that SQLite holds for them.

struct SingleState {
    Cell cell;
    bool any = false;
};

template <class State> State* stateOf(sqlite3_context* context, bool create) {
    auto** slot = static_cast<State**>(sqlite3_aggregate_context(context, create ? sizeof(State*) : 0));
    if (!slot) return nullptr;
    if (!*slot && create) *slot = new State;
    return *slot;
}

void singleStep(sqlite3_context* context, int, sqlite3_value** values) {
    try {
        SingleState* state = stateOf<SingleState>(context, true);
        if (!state) return sqlite3_result_error_nomem(context);
        if (state->any)
            fail(kServerFailure, "Subquery returned more than 1 value. This is not permitted when the subquery follows "
                                 "=, !=, <, <= , >, >= or when the subquery is used as an expression.");
        state->any = true;
        state->cell = cellFrom(values[0]);
    } catch (...) {
        report(context);
    }
}

void singleEnd(sqlite3_context* context) {
    std::unique_ptr<SingleState> state(stateOf<SingleState>(context, false));
    if (state) setResult(context, state->cell);
}

void sumStep(sqlite3_context* context, int, sqlite3_value** values) {
    try {
        if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
        std::string* sum = stateOf<std::string>(context, true);
        if (!sum) return sqlite3_result_error_nomem(context);
        const std::string_view text = Call(context, values).text(0);
        *sum = sum->empty() ? std::string(text) : basic::plainText(basic::sum(stored(*sum), stored(text)));
    } catch (...) {
        report(context);
    }
}

void sumEnd(sqlite3_context* context) {
    std::unique_ptr<std::string> sum(stateOf<std::string>(context, false));
    if (sum) setResult(context, Cell(*sum));
}

int collateServer(void*, int aSize, const void* a, int bSize, const void* b) {
    return compareText({static_cast<const char*>(a), static_cast<std::size_t>(aSize)},
                       {static_cast<const char*>(b), static_cast<std::size_t>(bSize)});
}

int collateDecimal(void*, int aSize, const void* a, int bSize, const void* b) {
    return basic::compare(stored({static_cast<const char*>(a), static_cast<std::size_t>(aSize)}),
                          stored({static_cast<const char*>(b), static_cast<std::size_t>(bSize)}));
}

} // namespace

void registerFunctions(sqlite3* connection, Raised& raised) {
    struct Entry {
        const char* name;
        int arguments;
        void (*function)(sqlite3_context*, int, sqlite3_value**);
    };
    static const Entry kEntries[] = {
        {"ss_to", 5, strict<convertTo>},        {"ss_put", 5, strict<put>},         {"ss_negate", 1, strict<negate>},
        {"ss_len", 1, strict<length>},          {"ss_upper", 1, strict<upper>},     {"ss_right", 2, strict<right>},
        {"ss_substring", 3, strict<substring>}, {"ss_replace", 3, strict<replace>}, {"ss_like", 2, strict<like>},
        {"ss_isnumeric", 1, plain<isNumeric>},
    };
    constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    for (const Entry& entry : kEntries)
        sqlite3_create_function_v2(connection, entry.name, entry.arguments, kFlags, &raised, entry.function, nullptr,
                                   nullptr, nullptr);
    sqlite3_create_function_v2(connection, "ss_now", 0, SQLITE_UTF8, &raised, plain<nowCell>, nullptr, nullptr,
                               nullptr);
    sqlite3_create_function_v2(connection, "ss_single", 1, kFlags, &raised, nullptr, singleStep, singleEnd, nullptr);
    sqlite3_create_function_v2(connection, "ss_sum", 1, kFlags, &raised, nullptr, sumStep, sumEnd, nullptr);
    sqlite3_create_collation_v2(connection, "SERVER", SQLITE_UTF8, nullptr, collateServer, nullptr);
    sqlite3_create_collation_v2(connection, "DECIMAL", SQLITE_UTF8, nullptr, collateDecimal, nullptr);
}

} // namespace sandbox
