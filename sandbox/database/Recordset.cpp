#include "sandbox/database/Recordset.h"

#include "basic/Conversion.h"
#include "basic/Text.h"
#include "sandbox/database/Errors.h"
#include "sandbox/database/Fields.h"

namespace sandbox {

using automation::Arguments;
using automation::Value;

namespace {

std::int32_t choice(const Value& value, std::int32_t lowest, std::int32_t highest) {
    const std::int32_t number = basic::cLng(value);
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
    return position_ >= data_.rows.size();
}

Value Recordset::value(std::size_t index) const {
    wantOpen();
    if (index >= columns().size()) fail(kItemNotFound);
    if (editing_ != Editing::none && pending_[index]) return *pending_[index];
    if (editing_ == Editing::adding) return automation::Null{};
    if (atEnd()) fail(kNoCurrentRecord);
    return data_.rows[position_][index];
}

void Recordset::open(Arguments arguments) {
    if (open_) fail(kObjectOpen);
    const std::string source = basic::cStr(arguments[0]);
    const Value& on = arguments[1].resolved();
    connection_ = on.isObject() ? std::dynamic_pointer_cast<Connection>(on.objectPtr()) : nullptr;
    if (!connection_) fail(kWrongArguments);
    cursor_ = choice(arguments[2], kForwardOnly, kStatic);
    lock_ = choice(arguments[3], kReadOnlyLock, kBatch);
    adopt(idleDatabase().execute(source), connection_);
}

Database& Recordset::idleDatabase() const {
    database();
    return connection_->idleDatabase();
}

Recordset::~Recordset() {
    open_ = false;
    tellWhetherRead();
}

/// Rows are read ahead here; whoever counts on that would occupy a real server's connection.
void Recordset::tellWhetherRead() {
    const bool occupies =
        open_ && cursor_ == kForwardOnly && lock_ == kReadOnlyLock && connection_ && position_ < data_.rows.size();
    if (occupies == occupies_) return;
    occupies_ = occupies;
    connection_->occupy(occupies ? 1 : -1);
}

void Recordset::adopt(Outcome outcome, std::shared_ptr<Connection> connection) {
    open_ = false;
    tellWhetherRead();
    open_ = outcome.isQuery;
    data_ = std::move(outcome);
    connection_ = std::move(connection);
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

void Recordset::moveNext() {
    // Leaving a row that is being edited writes it.
    if (editing_ != Editing::none) update();
    ++position_;
    tellWhetherRead();
}

Value Recordset::getString(Arguments arguments) {
    constexpr std::int32_t kClipText = 2;
    if (basic::cLng(arguments[0]) != kClipText || basic::cLng(arguments[1]) != -1) fail(kWrongArguments);
    const std::string column = basic::cStr(arguments[2]), row = basic::cStr(arguments[3]);
    const std::string null = basic::cStr(arguments[4]);
    if (atEnd()) fail(kNoCurrentRecord);
    std::string text;
    for (; !atEnd(); ++position_) {
        const std::vector<Value>& values = data_.rows[position_];
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (i) text += column;
            text += values[i].isNull() ? null : basic::cStr(values[i]);
        }
        text += row;
    }
    tellWhetherRead();
    return text;
}

const automation::Members<Recordset>& Recordset::members() {
    static const auto table = [] {
        automation::Members<Recordset> m;
        m.method("Open", 4, 4, [](Recordset& self, Arguments arguments) {
            self.open(arguments);
            return Value();
        });
        m.method("Close", 0, 0, [](Recordset& self, Arguments) {
            self.close();
            return Value();
        });
        m.readOnly("State", [](Recordset& self) { return Value(std::int32_t(self.open_ ? 1 : 0)); });
        m.readOnly("EOF", [](Recordset& self) { return Value(self.atEnd()); });
        m.readOnly("RecordCount", [](Recordset& self) {
            self.wantOpen();
            const bool counted = self.cursor_ == kKeyset || self.cursor_ == kStatic;
            return Value(counted ? static_cast<std::int32_t>(self.data_.rows.size()) : std::int32_t(-1));
        });
        m.method("MoveNext", 0, 0, [](Recordset& self, Arguments) {
            if (self.atEnd()) fail(kNoCurrentRecord);
            self.moveNext();
            return Value();
        });
        m.method("GetString", 5, 5, [](Recordset& self, Arguments arguments) { return self.getString(arguments); });
        m.method("Fields", 0, 1, [](Recordset& self, Arguments arguments) {
            auto fields = std::make_shared<Fields>(self.shared_from_this());
            return arguments.empty() ? Value(fields) : Value(fields->item(arguments[0]));
        });
        addEditing(m);
        return m;
    }();
    return table;
}

} // namespace sandbox
