#include "common/Connection.h"

#include "basic/Conversion.h"

namespace goodsreq {
namespace {

/// The provider's number for a key that is taken already.
constexpr long kIntegrityViolation = -2147217873;
/// The server's own numbers: chosen as a deadlock's victim, waited too long for a lock; a row that is there already in
/// a unique index or under a unique constraint.
constexpr std::int32_t kDeadlockVictim = 1205;
constexpr std::int32_t kLockTimeout = 1222;
constexpr std::int32_t kTakenInIndex = 2601;
constexpr std::int32_t kTakenKey = 2627;

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

Collision Connection::collision(const automation::RunTimeError& error) const {
    bool known = false; // by the server's number, which says more than the provider's
    try {
        const automation::ObjectPtr errors = connection().get("Errors").objectPtr();
        const std::int32_t count = basic::cLng(errors->get("Count"));
        for (std::int32_t i = 0; i < count; ++i) {
            const automation::ObjectPtr one = errors->call("Item", i).objectPtr();
            // The list stays until the next error of the provider, while components have errors of their own.
            if (basic::cLng(one->get("Number")) != error.number()) continue;
            const std::int32_t number = basic::cLng(one->get("NativeError"));
            if (number == kDeadlockVictim || number == kLockTimeout) return Collision::lock;
            if (number == kTakenInIndex || number == kTakenKey) return Collision::key;
            known = known || number != 0;
        }
    } catch (...) {
        // A connection that cannot tell has not said that it was a collision.
    }
    return !known && error.number() == kIntegrityViolation ? Collision::key : Collision::none;
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
