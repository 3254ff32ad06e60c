// A copy of the sample company for one test, and what stands in it.
#pragma once

#include "basic/Conversion.h"
#include "sandbox/database/Company.h"
#include "sandbox/suite/Query.h"
#include "sandbox/suite/StandIns.h"
#include "tests/support/TestFolder.h"

#include <string>
#include <vector>

using RowTexts = std::vector<std::vector<std::string>>;

using support::TestFolder;

/// What a query gives, as text; null is "".
inline RowTexts rowsOf(const automation::ObjectPtr& connection, const std::string& sql) {
    RowTexts rows;
    sandbox::Query query(connection, sql);
    const int columns = query.columns();
    for (; !query.atEnd(); query.next()) {
        std::vector<std::string>& row = rows.emplace_back();
        for (int column = 0; column < columns; ++column) row.push_back(basic::concatText(query.value(column)));
    }
    return rows;
}

class SampleCopy {
public:
    SampleCopy();
    RowTexts rows(const std::string& sql) const { return rowsOf(connection, sql); }
    std::string value(const std::string& sql) const {
        const RowTexts found = rows(sql);
        return found.empty() ? "no row" : found.front().front();
    }
    int number(const std::string& sql) const { return std::stoi(value(sql)); }

    automation::ObjectPtr connection;

private:
    TestFolder folder_;
};
