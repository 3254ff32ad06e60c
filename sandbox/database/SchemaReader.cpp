#include "sandbox/database/SchemaReader.h"

#include "sandbox/database/Errors.h"
#include "sandbox/database/ExpressionWriter.h"
#include "sandbox/database/Parser.h"
#include "sandbox/database/Script.h"
#include "sandbox/database/Translator.h"

namespace sandbox {
namespace {

std::string quotedList(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names) list += (list.empty() ? "" : ", ") + quotedName(name);
    return list;
}

class Reader {
public:
    explicit Reader(SchemaText& into) : into_(into) {}

    void read(std::string_view statement) {
        Parser parser(tokenize(statement));
        parser.expect("create");
        if (parser.accept("table"))
            table(parser);
        else if (parser.accept("view"))
            view(parser);
        else if (parser.accept("procedure"))
            procedure(parser);
        else
            index(parser);
        parser.expectEnd();
    }

private:
    void table(Parser& parser) {
        Table table;
        table.name = parser.name();
        parser.expect("(");
        do {
            if (parser.accept("constraint"))
                table.keys.push_back(key(parser));
            else
                column(parser, table);
        } while (parser.accept(","));
        parser.expect(")");
        create(table);
        into_.schema.add(std::move(table));
    }

    static Key key(Parser& parser) {
        Key key;
        key.name = parser.name();
        key.primary = parser.accept("primary");
        parser.expect(key.primary ? "key" : "unique");
        key.columns = parser.names();
        return key;
    }

    static void column(Parser& parser, Table& table) {
        Column column;
        column.name = parser.name();
        column.type = parser.type();
        while (true) {
            if (parser.accept("identity")) {
                column.identity = true;
                parser.expect("(");
                const int first = parser.wholeNumber();
                parser.expect(",");
                if (first != 1 || parser.wholeNumber() != 1) parser.refuse();
                parser.expect(")");
            } else if (parser.accept("not")) {
                parser.expect("null");
                column.nullable = false;
            } else if (parser.accept("null")) {
                column.nullable = true;
            } else if (parser.accept("default")) {
                column.defaultValue = parser.expression();
            } else {
                break;
            }
        }
        table.columns.push_back(std::move(column));
    }

    void create(const Table& table) {
        std::string sql = "CREATE TABLE " + quotedName(table.name) + " (";
        bool identity = false;
        for (const Column& column : table.columns) {
            if (&column != &table.columns.front()) sql += ", ";
            sql += quotedName(column.name) + " ";
            if (column.identity) {
                identity = true;
                sql += "INTEGER PRIMARY KEY AUTOINCREMENT";
            } else {
                sql += storageDeclaration(column.type) + (column.nullable ? "" : " NOT NULL");
            }
        }
        for (const Key& key : table.keys) {
            for (const std::string& name : key.columns)
                if (!table.column(name))
                    fail(kSyntaxError, "Column name '" + name + "' does not exist in the target table.");
            if (identity && key.primary) continue;
            if (!key.primary && indexNulls(table, key)) continue;
            sql += std::string(", ") + (key.primary ? "PRIMARY KEY" : "UNIQUE") + " (" + quotedList(key.columns) + ")";
        }
        // Rows lie in the order of the primary key, as the server's clustered index keeps them.
        into_.creation.push_back(sql + (table.primaryKey() && !identity ? ") WITHOUT ROWID" : ")"));
        for (const Key& key : table.keys)
            if (!key.primary && indexNulls(table, key)) indexKey(table, key);
    }

    static bool indexNulls(const Table& table, const Key& key) {
        for (const std::string& name : key.columns)
            if (table.column(name)->nullable) return true;
        return false;
    }

    /// The server counts NULL as one value of a unique key; SQLite does not, so NULL stands there as a value that no
    /// column has.
    void indexKey(const Table& table, const Key& key) {
        std::string list;
        for (const std::string& name : key.columns) {
            const Column& column = *table.column(name);
            list += list.empty() ? "" : ", ";
            if (!column.nullable)
                list += quotedName(column.name);
            else
                list += ExpressionWriter::collated({"ifnull(" + quotedName(column.name) + ", x'00')", column.type});
        }
        into_.creation.push_back("CREATE UNIQUE INDEX " + quotedName(key.name) + " ON " + quotedName(table.name) +
                                 " (" + list + ")");
    }

    void index(Parser& parser) {
        parser.expect("index");
        const std::string name = parser.name();
        parser.expect("on");
        const std::string tableName = parser.name();
        const Table* table = into_.schema.table(tableName);
        if (!table || table->isView) fail(kSyntaxError, "Invalid object name '" + tableName + "'.");
        into_.creation.push_back("CREATE INDEX " + quotedName(name) + " ON " + quotedName(table->name) + " (" +
                                 quotedList(parser.names()) + ")");
    }

    void view(Parser& parser) {
        Table view;
        view.isView = true;
        view.name = parser.name();
        parser.expect("as");
        const auto body = parser.select();
        const Translation translation = Translator(into_.schema).query(*body, {});
        for (const OutputColumn& column : translation.columns)
            view.columns.push_back({column.name, column.type, true, false, nullptr});
        into_.creation.push_back("CREATE VIEW " + quotedName(view.name) + " AS " + translation.sql);
        into_.schema.add(std::move(view));
    }

    void procedure(Parser& parser) {
        Procedure procedure;
        procedure.name = parser.name();
        while (parser.peek().sort == Token::Sort::variable) {
            std::string name = parser.take().text;
            procedure.parameters.emplace_back(std::move(name), parser.type());
            if (!parser.accept(",")) break;
        }
        parser.expect("as");
        std::shared_ptr<const Select> body = parser.select();
        Variables variables;
        for (const auto& [name, type] : procedure.parameters) variables[name] = {"NULL", type};
        Translator(into_.schema).query(*body, variables);
        procedure.body = std::move(body);
        into_.schema.add(std::move(procedure));
    }

    SchemaText& into_;
};

} // namespace

SchemaText readSchema(std::string_view text) {
    SchemaText result;
    Reader reader(result);
    for (std::string_view statement : splitScript(text)) reader.read(statement);
    return result;
}

} // namespace sandbox
