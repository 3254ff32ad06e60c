#include "sandbox/database/Connection.h"

#include "basic/Conversion.h"
#include "basic/Text.h"
#include "sandbox/database/Errors.h"
#include "sandbox/database/Recordset.h"

namespace sandbox {
namespace {

using automation::Arguments;
using automation::Value;

/// The value after `name` in "name=value" pairs with ";" between them; "" where it is not among them.
std::string partOf(const std::string& connectionString, std::string_view name) {
    std::size_t begin = 0;
    while (begin < connectionString.size()) {
        const std::size_t end = std::min(connectionString.find(';', begin), connectionString.size());
        const std::string pair = connectionString.substr(begin, end - begin);
        const std::size_t equals = pair.find('=');
        if (equals != std::string::npos && automation::sameName(basic::trim(pair.substr(0, equals)), name))
            return basic::trim(pair.substr(equals + 1));
        begin = end + 1;
    }
    return {};
}

std::string dataSource(const std::string& connectionString) {
    if (connectionString.find('=') == std::string::npos) return connectionString;
    std::string path = partOf(connectionString, "data source");
    if (path.empty()) fail(kServerFailure, "The connection string names no data source.");
    return path;
}

std::string& lastOpenedPath() {
    static std::string path;
    return path;
}

/// The provider's errors of the last statement: one, or none.
class ProviderErrors : public automation::Object {
public:
    explicit ProviderErrors(int nativeError) : nativeError_(nativeError) {}
    Value invoke(automation::Access access, std::string_view member, Arguments arguments) override {
        static const auto members = [] {
            automation::Members<ProviderErrors> m;
            m.readOnly("Count", [](ProviderErrors& self) { return Value(std::int32_t{self.nativeError_ != 0}); });
            m.method("Item", 1, 1, [](ProviderErrors& self, Arguments a) -> Value {
                if (self.nativeError_ == 0 || basic::cLng(a[0]) != 0) fail(kItemNotFound);
                return std::make_shared<ProviderErrors>(self.nativeError_);
            });
            m.readOnly("NativeError", [](ProviderErrors& self) { return Value(std::int32_t{self.nativeError_}); });
            m.readOnly("Number", [](ProviderErrors& self) {
                return Value(
                    static_cast<std::int32_t>(self.nativeError_ == 2627 ? kConstraintViolated : kServerFailure));
            });
            return m;
        }();
        return members.invoke(*this, access, member, arguments);
    }
    bool has(std::string_view) const override { return true; }
    std::string className() const override { return "Errors"; }

private:
    int nativeError_;
};

} // namespace

Database& Connection::database() {
    if (!database_) fail(kObjectClosed);
    return *database_;
}

Database& Connection::idleDatabase() {
    Database& found = database();
    if (beingRead_ == 0) return found;
    if (found.inTransaction())
        fail(kServerFailure, "Cannot create new connection because in manual or distributed transaction mode.");
    ++moreConnections_;
    return found;
}

void Connection::open(const std::string& connectionString) {
    if (database_) fail(kObjectOpen);
    const std::string path = dataSource(connectionString);
    auto database = Database::open(path);
    if (const std::string file = partOf(connectionString, "trace"); !file.empty()) trace_ = traceFileSink(file);
    database->trace(trace_);
    database->failOn(failOn_);
    database_ = std::move(database);
    connectionString_ = connectionString;
    lastOpenedPath() = path;
}

const std::string& Connection::lastOpened() { return lastOpenedPath(); }

void Connection::close() {
    if (database().inTransaction()) fail(kInTransaction);
    database_.reset();
}

void Connection::trace(TraceSink sink) {
    trace_ = std::move(sink);
    if (database_) database_->trace(trace_);
}

void Connection::failOn(std::function<bool(std::string_view)> predicate) {
    failOn_ = std::move(predicate);
    if (database_) database_->failOn(failOn_);
}

Value Connection::execute(Arguments arguments) {
    Outcome outcome = idleDatabase().execute(basic::cStr(arguments[0]));
    if (arguments.size() > 1 && arguments[1].isReference())
        arguments[1].resolved() = static_cast<std::int32_t>(outcome.isQuery ? -1 : outcome.affected);
    auto records = std::make_shared<Recordset>();
    records->adopt(std::move(outcome), shared_from_this());
    return records;
}

const automation::Members<Connection>& Connection::members() {
    static const auto table = [] {
        automation::Members<Connection> m;
        m.method("Open", 0, 4, [](Connection& self, Arguments arguments) {
            const bool given = !arguments.empty() && !arguments[0].isMissing();
            self.open(given ? basic::cStr(arguments[0]) : self.connectionString_);
            return Value();
        });
        m.method("Close", 0, 0, [](Connection& self, Arguments) {
            self.close();
            return Value();
        });
        m.method("Execute", 1, 3, [](Connection& self, Arguments arguments) { return self.execute(arguments); });
        m.method("BeginTrans", 0, 0, [](Connection& self, Arguments) {
            if (self.beingRead_ > 0) fail(kServerFailure, "Cannot start transaction while in firehose mode.");
            self.database().begin();
            return Value(std::int32_t(1));
        });
        m.method("CommitTrans", 0, 0, [](Connection& self, Arguments) {
            self.database().commit();
            return Value();
        });
        m.method("RollbackTrans", 0, 0, [](Connection& self, Arguments) {
            self.database().rollback();
            return Value();
        });
        m.readOnly("Errors", [](Connection& self) {
            return Value(std::make_shared<ProviderErrors>(self.isOpen() ? self.database().nativeError() : 0));
        });
        m.readOnly("State", [](Connection& self) { return Value(std::int32_t(self.isOpen() ? 1 : 0)); });
        return m;
    }();
    return table;
}

} // namespace sandbox
