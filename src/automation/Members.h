// The table of members by which a class of our own answers late-bound calls.
#pragma once

#include "automation/Object.h"
#include "automation/RunTimeError.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <unordered_map>

namespace automation {

/// ASCII letters without case, as member names and ProgIDs compare.
struct NameLess {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const;
};
bool sameName(std::string_view a, std::string_view b);

/// For tables that are looked up at each call: names that are the same without case have the same hash.
struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const;
};
struct NameEqual {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const { return sameName(a, b); }
};

/// Maps names to what reads, writes or calls them on a `Self`. One static table serves all instances of a class.
template <class Self> class Members {
public:
    using Function = std::function<Value(Self&, Arguments)>;
    using Getter = std::function<Value(Self&)>;
    using Setter = std::function<void(Self&, const Value&)>;

    struct Entry {
        Function get;
        Function put;
        std::size_t fewest = 0;
        std::size_t most = 0;
    };

    Members& property(std::string name, Getter getter, Setter setter) {
        Entry entry;
        entry.get = [getter](Self& self, Arguments) { return getter(self); };
        if (setter)
            entry.put = [setter](Self& self, Arguments arguments) {
                setter(self, arguments.back().resolved());
                return Value();
            };
        entries_.emplace(std::move(name), std::move(entry));
        return *this;
    }
    Members& readOnly(std::string name, Getter getter) { return property(std::move(name), std::move(getter), nullptr); }

    /// A property with indexes before its value, as TextMatrix(row, column).
    Members& indexed(std::string name, std::size_t indexes, Function getter, Function setter) {
        entries_.emplace(std::move(name), Entry{std::move(getter), std::move(setter), indexes, indexes});
        return *this;
    }
    /// A method that takes between `fewest` and `most` arguments.
    Members& method(std::string name, std::size_t fewest, std::size_t most, Function function) {
        entries_.emplace(std::move(name), Entry{std::move(function), nullptr, fewest, most});
        return *this;
    }

    bool has(std::string_view name) const { return entries_.find(name) != entries_.end(); }

    Value invoke(Self& self, Access access, std::string_view name, Arguments arguments) const {
        auto found = entries_.find(name);
        if (found == entries_.end()) raise(kNoSuchMember);
        const Entry& entry = found->second;
        const bool assigns = access != Access::get;
        const Function& function = assigns ? entry.put : entry.get;
        if (!function) raise(kNoSuchMember);
        const std::size_t extra = assigns ? 1 : 0;
        if (arguments.size() < entry.fewest + extra || arguments.size() > entry.most + extra)
            raise(kWrongNumberOfArguments);
        return function(self, arguments);
    }

private:
    std::unordered_map<std::string, Entry, NameHash, NameEqual> entries_;
};

/// An object with the members of its class's one table, `static const Members<Self>& members()`, and behind them those
/// of `Base`, where it has any.
template <class Self, class Base = Object> class WithMembers : public Base {
public:
    using Base::Base;
    Value invoke(Access access, std::string_view member, Arguments arguments) override {
        if constexpr (!std::is_abstract_v<Base>)
            if (!Self::members().has(member)) return Base::invoke(access, member, arguments);
        return Self::members().invoke(static_cast<Self&>(*this), access, member, arguments);
    }
    bool has(std::string_view member) const override {
        if constexpr (!std::is_abstract_v<Base>)
            if (Base::has(member)) return true;
        return Self::members().has(member);
    }
};

} // namespace automation
