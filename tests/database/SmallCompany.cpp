#include "tests/database/SmallCompany.h"

#include "basic/Format.h"
#include "basic/Numbers.h"

namespace database_test {

ConnectionPtr smallCompany(const std::string& path) {
    auto connection = sandbox::createCompany(path, schemaText());
    sandbox::runScript(*connection, sandbox::readTextFile(PROJECT_DIR "/tests/database/company.sql"));
    return connection;
}

std::string shown(const Value& value) {
    if (value.isNull()) return "NULL";
    if (value.isText()) return "'" + *value.as<std::string>() + "'";
    if (auto* v = value.as<bool>()) return *v ? "True" : "False";
    if (auto* v = value.as<std::int16_t>()) return "small " + std::to_string(*v);
    if (auto* v = value.as<std::int32_t>()) return std::to_string(*v);
    if (auto* v = value.as<double>()) return "double " + basic::numberText(*v);
    if (auto* v = value.as<automation::Currency>()) return "money " + std::to_string(v->tenThousandths);
    if (auto* v = value.as<automation::Decimal>()) return "decimal " + v->text;
    if (value.as<automation::Date>()) return basic::format(value, "\\#yyyy/mm/dd hh:nn:ss\\#");
    return "?";
}

std::string rows(sandbox::Connection& connection, const std::string& statement) {
    const sandbox::Outcome outcome = connection.database().execute(statement);
    std::string text;
    for (std::size_t row = 0; row < outcome.rows.size(); ++row) {
        if (!text.empty()) text += "|";
        const auto values = outcome.rows[row];
        for (std::size_t i = 0; i < values.size(); ++i) text += (i ? "," : "") + shown(values[i]);
    }
    return text;
}

} // namespace database_test
