#include "common/Connection.h"

#include "basic/Conversion.h"

namespace goodsreq {
namespace {

/// The provider's number for a key that is taken already.
constexpr long kIntegrityViolation = -2147217873;
/// The server's own numbers: chosen as a deadlock's victim, waited too long for a lock.
constexpr std::int32_t kDeadlockVictim = 1205;
constexpr std::int32_t kLockTimeout = 1222;

} // namespace

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

bool Connection::collided(const automation::RunTimeError& error) const {
    if (error.number() == kIntegrityViolation) return true;
    try {
        const automation::ObjectPtr errors = connection().get("Errors").objectPtr();
        const std::int32_t count = basic::cLng(errors->get("Count"));
        for (std::int32_t i = 0; i < count; ++i) {
            const automation::ObjectPtr one = errors->call("Item", i).objectPtr();
            // The list stays until the next error of the provider, while components have errors of their own.
            if (basic::cLng(one->get("Number")) != error.number()) continue;
            const std::int32_t number = basic::cLng(one->get("NativeError"));
            if (number == kDeadlockVictim || number == kLockTimeout) return true;
        }
    } catch (...) {
        // A connection that cannot tell has not said that it was a collision.
    }
    return false;
}

Transaction::Transaction(const Connection& connection) : connection_(connection) {
    try {
        connection_.beginTrans();
    } catch (...) {
        rollback();
        throw;
    }
}

Transaction::~Transaction() {
    if (!finished_) rollback();
}

void Transaction::commit() {
    commitAsked_ = true;
    connection_.commitTrans();
    finished_ = true;
}

bool Transaction::rollback() noexcept {
    finished_ = true;
    try {
        connection_.rollbackTrans();
        return true;
    } catch (...) {
        return false; // The error that led here is the one to report.
    }
}

} // namespace goodsreq
