// The host's ADO connection by its members, and the scope of a transaction on it.
#pragma once

#include "automation/RunTimeError.h"
#include "common/Recordset.h"

namespace goodsreq {

/// How another session was quicker.
enum class Collision {
    none,
    key,  ///< it took the same key
    lock, ///< the server ended this transaction, or a wait in it, to let the other's go on
};

/// Shares the host's connection; never opens or closes it.
class Connection {
public:
    explicit Connection(automation::ObjectPtr object) : object_(std::move(object)) {}

    const automation::ObjectPtr& object() const { return object_; }
    /// Error 91 where the session has no connection; the provider's error where it is closed or refuses.
    Recordset execute(const std::string& statement) const;
    void beginTrans() const;
    void commitTrans() const;
    void rollbackTrans() const;
    /// What `error` says of it. To be asked before anything else is sent.
    Collision collision(const automation::RunTimeError& error) const;

private:
    automation::Object& connection() const;

    automation::ObjectPtr object_;
};

/// Rolls back at its end unless it is finished by then. Where beginning fails it rolls back too, so that a transaction
/// left open by an earlier failure does not refuse every save that follows.
class Transaction {
public:
    explicit Transaction(const Connection& connection);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    void commit();
    /// Whether commit() was called. Where it failed, the transaction may stand all the same.
    bool commitAsked() const { return commitAsked_; }
    /// Never fails; tells whether the server took everything back.
    bool rollback() noexcept;

private:
    Connection connection_;
    bool commitAsked_ = false;
    bool finished_ = false;
};

} // namespace goodsreq
