#include "sandbox/database/Recordset.h"

#include "basic/Conversion.h"
#include "basic/Text.h"
#include "sandbox/database/Errors.h"
#include "sandbox/database/Fields.h"

namespace sandbox {

using automation::Arguments;
using automation::Value;

namespace {

bool isGiven(Arguments arguments, std::size_t i) { return i < arguments.size() && !arguments[i].isMissing(); }

std::int32_t choice(const Value& value, std::int32_t lowest, std::int32_t highest) {
    const std::int32_t number = basic::cLng(value);
    if (number == -1) return lowest; // "unspecified"
    if (number < lowest || number > highest) fail(kWrongArguments);
    return number;
}

} // namespace

void Recordset::wantOpen() const {
    if (!open_) fail(kObjectClosed);
}

Database& Recordset::database() const {
    if (!connection_ || !connection_->isOpen()) fail(kConnectionUnusable);
    return connection_->database();
}

const std::vector<OutputColumn>& Recordset::columns() const {
    wantOpen();
    return *data_.columns;
}

std::size_t Recordset::indexOf(const Value& nameOrPosition) const {
    const auto& list = columns();
    if (nameOrPosition.isText()) {
        const std::string& name = *nameOrPosition.as<std::string>();
        for (std::size_t i = 0; i < list.size(); ++i)
            if (automation::sameName(list[i].name, name)) return i;
        fail(kItemNotFound);
    }
    const std::int32_t position = basic::cLng(nameOrPosition);
    if (position < 0 || static_cast<std::size_t>(position) >= list.size()) fail(kItemNotFound);
    return static_cast<std::size_t>(position);
}

bool Recordset::atEnd() const {
    wantOpen();
    return position_ >= static_cast<std::ptrdiff_t>(data_.rows.size());
}

bool Recordset::atBegin() const {
    wantOpen();
    return position_ < 0 || data_.rows.empty();
}

Value Recordset::value(std::size_t index) const {
    wantOpen();
    if (index >= columns().size()) fail(kItemNotFound);
    if (editing_ != Editing::none && pending_[index]) return *pending_[index];
    if (editing_ == Editing::adding) return automation::Null{};
    if (atEnd() || atBegin()) fail(kNoCurrentRecord);
    return data_.rows[static_cast<std::size_t>(position_)][index];
}

void Recordset::setConnection(const Value& value) {
    if (value.isText()) {
        auto connection = std::make_shared<Connection>();
        connection->open(*value.as<std::string>());
        connection_ = std::move(connection);
        return;
    }
    if (!value.isObject()) fail(kWrongArguments);
    connection_ = std::dynamic_pointer_cast<Connection>(value.objectPtr());
    if (!connection_) fail(kWrongArguments);
}

void Recordset::open(Arguments arguments) {
    if (open_) fail(kObjectOpen);
    if (isGiven(arguments, 0)) source_ = basic::cStr(arguments[0]);
    if (isGiven(arguments, 1)) setConnection(arguments[1]);
    if (isGiven(arguments, 2)) cursor_ = choice(arguments[2], kForwardOnly, kStatic);
    if (isGiven(arguments, 3)) lock_ = choice(arguments[3], kReadOnlyLock, kBatch);
    constexpr std::int32_t kTable = 2;
    if (isGiven(arguments, 4) && basic::cLng(arguments[4]) == kTable) source_ = "select * from " + source_;
    run();
}

Database& Recordset::idleDatabase() const {
    database();
    return connection_->idleDatabase();
}

void Recordset::run() { adopt(idleDatabase().execute(source_), connection_, source_); }

Recordset::~Recordset() {
    open_ = false;
    tellWhetherRead();
}

/// Rows are read ahead here; whoever counts on that would occupy a real server's connection.
void Recordset::tellWhetherRead() {
    const bool occupies = open_ && cursor_ == kForwardOnly && lock_ == kReadOnlyLock && connection_ &&
                          !connection_->readsAtOnce() &&
                          position_ < static_cast<std::ptrdiff_t>(data_.rows.size());
    if (occupies == occupies_) return;
    occupies_ = occupies;
    connection_->occupy(occupies ? 1 : -1);
}

void Recordset::adopt(Outcome outcome, std::shared_ptr<Connection> connection, std::string source) {
    open_ = false;
    tellWhetherRead();
    open_ = outcome.isQuery;
    data_ = std::move(outcome);
    connection_ = std::move(connection);
    source_ = std::move(source);
    position_ = 0;
    editing_ = Editing::none;
    pending_.clear();
    tellWhetherRead();
}

void Recordset::close() {
    wantOpen();
    if (editing_ != Editing::none) fail(kNotAllowedHere);
    open_ = false;
    tellWhetherRead();
    data_ = {};
}

void Recordset::moveTo(std::ptrdiff_t position) {
    wantOpen();
    // Leaving a row that is being edited writes it.
    if (editing_ != Editing::none) update();
    position_ = position;
    tellWhetherRead();
}

Value Recordset::getString(Arguments arguments) {
    wantOpen();
    constexpr std::int32_t kClipText = 2;
    if (isGiven(arguments, 0) && basic::cLng(arguments[0]) != kClipText) fail(kWrongArguments);
    const std::int32_t most = isGiven(arguments, 1) ? basic::cLng(arguments[1]) : -1;
    const std::string column = isGiven(arguments, 2) ? basic::cStr(arguments[2]) : "\t";
    const std::string row = isGiven(arguments, 3) ? basic::cStr(arguments[3]) : "\r";
    const std::string null = isGiven(arguments, 4) ? basic::cStr(arguments[4]) : "";
    if (atEnd() || atBegin()) fail(kNoCurrentRecord);
    std::string text;
    for (std::int32_t taken = 0; !atEnd() && (most < 0 || taken < most); ++taken, ++position_) {
        const std::span<const Value> values = std::as_const(data_.rows)[static_cast<std::size_t>(position_)];
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (i) text += column;
            text += values[i].isNull() ? null : basic::cStr(values[i]);
        }
        text += row;
    }
    tellWhetherRead();
    return text;
}

automation::Array Recordset::elements() { return Fields(shared_from_this()).elements(); }

void Recordset::addOpening(automation::Members<Recordset>& m) {
    m.method("Open", 0, 5, [](Recordset& self, Arguments arguments) {
        self.open(arguments);
        return Value();
    });
    m.method("Close", 0, 0, [](Recordset& self, Arguments) {
        self.close();
        return Value();
    });
    m.method("Requery", 0, 1, [](Recordset& self, Arguments) {
        self.wantOpen();
        self.run();
        return Value();
    });
    m.readOnly("State", [](Recordset& self) { return Value(std::int32_t(self.open_ ? 1 : 0)); });
    m.property(
        "Source", [](Recordset& self) { return Value(self.source_); },
        [](Recordset& self, const Value& value) {
            if (self.open_) fail(kObjectOpen);
            self.source_ = basic::cStr(value);
        });
    m.property(
        "ActiveConnection",
        [](Recordset& self) { return self.connection_ ? Value(self.connection_) : Value(automation::ObjectPtr()); },
        [](Recordset& self, const Value& value) {
            if (self.open_) fail(kObjectOpen);
            self.setConnection(value);
        });
    m.property(
        "CursorType", [](Recordset& self) { return Value(self.cursor_); },
        [](Recordset& self, const Value& value) {
            if (self.open_) fail(kObjectOpen);
            self.cursor_ = choice(value, kForwardOnly, kStatic);
        });
    m.property(
        "LockType", [](Recordset& self) { return Value(self.lock_); },
        [](Recordset& self, const Value& value) {
            if (self.open_) fail(kObjectOpen);
            self.lock_ = choice(value, kReadOnlyLock, kBatch);
        });
    // All rows are read at once wherever the cursor is asked to be.
    m.property(
        "CursorLocation", [](Recordset&) { return Value(std::int32_t(2)); },
        [](Recordset&, const Value& value) { choice(value, 2, 3); });
}

void Recordset::addMoving(automation::Members<Recordset>& m) {
    m.readOnly("EOF", [](Recordset& self) { return Value(self.atEnd()); });
    m.readOnly("BOF", [](Recordset& self) { return Value(self.atBegin()); });
    m.readOnly("RecordCount", [](Recordset& self) {
        self.wantOpen();
        const bool counted = self.cursor_ == kKeyset || self.cursor_ == kStatic;
        return Value(counted ? static_cast<std::int32_t>(self.data_.rows.size()) : std::int32_t(-1));
    });
    auto backward = [](Recordset& self) {
        self.wantOpen();
        if (self.cursor_ == kForwardOnly) fail(kCannotScrollBack);
    };
    m.method("MoveFirst", 0, 0, [](Recordset& self, Arguments) {
        self.wantOpen();
        if (self.data_.rows.empty()) fail(kNoCurrentRecord);
        self.moveTo(0);
        return Value();
    });
    m.method("MoveNext", 0, 0, [](Recordset& self, Arguments) {
        if (self.atEnd()) fail(kNoCurrentRecord);
        self.moveTo(self.position_ + 1);
        return Value();
    });
    m.method("MovePrevious", 0, 0, [backward](Recordset& self, Arguments) {
        backward(self);
        if (self.atBegin()) fail(kNoCurrentRecord);
        self.moveTo(self.position_ - 1);
        return Value();
    });
    m.method("MoveLast", 0, 0, [backward](Recordset& self, Arguments) {
        backward(self);
        if (self.data_.rows.empty()) fail(kNoCurrentRecord);
        self.moveTo(static_cast<std::ptrdiff_t>(self.data_.rows.size()) - 1);
        return Value();
    });
    m.method("GetString", 0, 5, [](Recordset& self, Arguments arguments) { return self.getString(arguments); });
    m.method("Fields", 0, 1, [](Recordset& self, Arguments arguments) {
        auto fields = std::make_shared<Fields>(self.shared_from_this());
        return arguments.empty() ? Value(fields) : Value(fields->item(arguments[0]));
    });
    // rs("name") is the field; assigning to it sets its value.
    m.indexed(
        "", 1,
        [](Recordset& self, Arguments arguments) { return Value(Fields(self.shared_from_this()).item(arguments[0])); },
        [](Recordset& self, Arguments arguments) {
            self.setValue(self.indexOf(arguments[0]), arguments[1].resolved());
            return Value();
        });
    m.indexed(
        "Collect", 1, [](Recordset& self, Arguments arguments) { return self.value(self.indexOf(arguments[0])); },
        [](Recordset& self, Arguments arguments) {
            self.setValue(self.indexOf(arguments[0]), arguments[1].resolved());
            return Value();
        });
}

const automation::Members<Recordset>& Recordset::members() {
    static const auto table = [] {
        automation::Members<Recordset> m;
        addOpening(m);
        addMoving(m);
        addEditing(m);
        return m;
    }();
    return table;
}

Value Recordset::invoke(automation::Access access, std::string_view member, Arguments arguments) {
    return members().invoke(*this, access, member, arguments);
}

bool Recordset::has(std::string_view member) const { return members().has(member); }

} // namespace sandbox
