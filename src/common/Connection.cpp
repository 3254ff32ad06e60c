#include "common/Connection.h"

#include "automation/RunTimeError.h"

namespace goodsreq {

automation::Object& Connection::connection() const {
    if (!object_) automation::raise(automation::kObjectNotSet);
    return *object_;
}

Recordset Connection::execute(const std::string& statement) const {
    automation::Value result = connection().call("Execute", statement);
    return Recordset(result.isObject() ? result.objectPtr() : nullptr);
}

void Connection::beginTrans() const { connection().call("BeginTrans"); }

void Connection::commitTrans() const { connection().call("CommitTrans"); }

void Connection::rollbackTrans() const { connection().call("RollbackTrans"); }

Transaction::Transaction(const Connection& connection) : connection_(connection) {
    try {
        connection_.beginTrans();
    } catch (...) {
        rollbackQuietly();
        throw;
    }
}

Transaction::~Transaction() {
    if (!finished_) rollbackQuietly();
}

void Transaction::commit() {
    connection_.commitTrans();
    finished_ = true;
}

void Transaction::rollbackQuietly() noexcept {
    try {
        connection_.rollbackTrans();
    } catch (...) {
        // The error that led here is the one to report.
    }
}

} // namespace goodsreq
