// Saved state as values of C++: what a node can hold, and a view of a node through the
// IVaskPersistReader that a component gets in `load`.
#pragma once

#include "array.hpp"
#include "error.hpp"
#include "identifiers.h"
#include "persistence.h"
#include "reference.hpp"
#include "text.hpp"
#include "value.hpp"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tarvo {

enum class StateKind : std::uint32_t {
    real = TARVO_PERSIST_REAL,
    integer = TARVO_PERSIST_INTEGER,
    boolean = TARVO_PERSIST_BOOLEAN,
    string = TARVO_PERSIST_STRING,
    enumeration = TARVO_PERSIST_ENUMERATION,
    value = TARVO_PERSIST_VALUE,
    realArray = TARVO_PERSIST_REAL_ARRAY,
    integerArray = TARVO_PERSIST_INTEGER_ARRAY,
    booleanArray = TARVO_PERSIST_BOOLEAN_ARRAY,
    stringArray = TARVO_PERSIST_STRING_ARRAY,
    enumerationArray = TARVO_PERSIST_ENUMERATION_ARRAY,
    valueArray = TARVO_PERSIST_VALUE_ARRAY,
    byteArray = TARVO_PERSIST_BYTE_ARRAY,
};

// The number of an enumeration value, kept apart from other numbers.
enum class Enumeration : std::uint32_t {};

// A value of any kind: the kind is the place of the alternative.
using StateValue = std::variant<double, std::int32_t, bool, std::u16string, Enumeration, Value,
                                std::vector<double>, std::vector<std::int32_t>, std::vector<bool>,
                                std::vector<std::u16string>, std::vector<Enumeration>,
                                std::vector<Value>, std::vector<std::uint8_t>>;

inline StateKind kindOf(const StateValue& value) {
    return static_cast<StateKind>(value.index());
}

// A name as an argument: a literal or a string, which isn't copied.
//
//     const std::u16string first = u"first";
//     std::cout << tarvo::StateReader::share(reader).node(first).integer(u"pitch") << '\n';
class StateName : public ConstantString {
  public:
    StateName(const char16_t* name) noexcept : ConstantString(name) {}
    StateName(const std::u16string& name) noexcept : ConstantString(name) {}
};

// Names, and what is read for each when a loop comes to it.
//
//     const tarvo::StateEntries lengths({u"a", u"bb"},
//                                       [](const std::u16string& name) { return name.size(); });
//     for (const auto& [name, length] : lengths)
//         std::cout << tarvo::toUtf8(name) << " has " << length << '\n';
template <class Read>
class StateEntries {
  public:
    StateEntries(std::vector<std::u16string> names, Read read)
        : names_(std::move(names)), read_(std::move(read)) {}

    class Iterator {
      public:
        Iterator(const StateEntries& entries, std::size_t place) noexcept
            : entries_(&entries), place_(place) {}

        auto operator*() const {
            const std::u16string& name = entries_->names_[place_];
            return std::pair<const std::u16string&, decltype(entries_->read_(name))>(
                name, entries_->read_(name));
        }
        Iterator& operator++() noexcept {
            ++place_;
            return *this;
        }
        bool operator==(const Iterator& other) const noexcept { return place_ == other.place_; }

      private:
        const StateEntries* entries_;
        std::size_t place_;
    };

    Iterator begin() const noexcept { return Iterator(*this, 0); }
    Iterator end() const noexcept { return Iterator(*this, names_.size()); }

  private:
    std::vector<std::u16string> names_;
    Read read_;
};

// One node of saved state. A getter that fails raises Error: as a rule with RC_NOT_AVAILABLE if
// there is no such value, RC_BAD_DATA if it is of another kind. Used by one thread at a time.
//
//     const auto state = tarvo::StateReader::share(reader); // what a component's load is given
//     const double volume = state.real(u"volume");
//     for (const auto& [name, voice] : state.eachNode())
//         std::cout << tarvo::toUtf8(name) << voice.integer(u"pitch") << '\n';
class StateReader {
    using Table = IVaskPersistReaderTable;

  public:
    explicit StateReader(Reference<IVaskPersistReader> reader) noexcept
        : reader_(std::move(reader)) {}

    // Adds a reference of its own to a reader that is borrowed.
    static StateReader share(IVaskPersistReader* reader) noexcept {
        return StateReader(Reference<IVaskPersistReader>::share(reader));
    }

    IVaskPersistReader* get() const noexcept { return reader_.get(); }

    // The kind of a value; nothing if there is no such value.
    std::optional<StateKind> kind(StateName name) const {
        std::uint32_t kind = 0;
        const TarvoResult result = reader_->table->GetValueType(reader_->me, name.pair(), &kind);
        if (result == RC_NOT_AVAILABLE)
            return std::nullopt;
        tarvo::require(result, "GetValueType", *reader_);
        return static_cast<StateKind>(kind);
    }

    double real(StateName name) const { return number(&Table::GetReal, name, "GetReal"); }
    std::int32_t integer(StateName name) const {
        return number(&Table::GetInteger, name, "GetInteger");
    }
    bool boolean(StateName name) const {
        return number(&Table::GetBoolean, name, "GetBoolean") != 0;
    }
    Enumeration enumeration(StateName name) const {
        return Enumeration{number(&Table::GetEnumeration, name, "GetEnumeration")};
    }
    std::u16string string(StateName name) const {
        String text;
        call(&Table::GetString, "GetString", name.pair(), text.pair());
        return std::move(text.text());
    }
    Value value(StateName name) const {
        Value value;
        call(&Table::GetValue, "GetValue", name.pair(), value.pair());
        return value;
    }

    std::vector<double> reals(StateName name) const {
        return numbers<double>(&Table::GetArrayReal, name, "GetArrayReal");
    }
    std::vector<std::int32_t> integers(StateName name) const {
        return numbers<std::int32_t>(&Table::GetArrayInteger, name, "GetArrayInteger");
    }
    std::vector<bool> booleans(StateName name) const {
        const auto stored =
            numbers<std::uint32_t>(&Table::GetArrayBoolean, name, "GetArrayBoolean");
        std::vector<bool> booleans;
        booleans.reserve(stored.size());
        for (const std::uint32_t boolean : stored)
            booleans.push_back(boolean != 0);
        return booleans;
    }
    std::vector<std::u16string> strings(StateName name) const {
        StringArray array;
        call(&Table::GetArrayString, "GetArrayString", name.pair(), array.pair());
        return takeTexts(array);
    }
    std::vector<Enumeration> enumerations(StateName name) const {
        return numbers<Enumeration>(&Table::GetArrayEnumeration, name, "GetArrayEnumeration");
    }
    std::vector<Value> values(StateName name) const {
        ValueArray array;
        call(&Table::GetArrayValue, "GetArrayValue", name.pair(), array.pair());
        return {std::make_move_iterator(array.elements().begin()),
                std::make_move_iterator(array.elements().end())};
    }
    std::vector<std::uint8_t> bytes(StateName name) const {
        return numbers<std::uint8_t>(&Table::GetArrayByte, name, "GetArrayByte");
    }

    // A value of whatever kind it is.
    StateValue any(const std::u16string& name) const {
        const auto found = kind(name);
        if (!found)
            throw Error(RC_NOT_AVAILABLE, "GetValueType");
        switch (*found) {
        case StateKind::real:
            return real(name);
        case StateKind::integer:
            return integer(name);
        case StateKind::boolean:
            return boolean(name);
        case StateKind::string:
            return string(name);
        case StateKind::enumeration:
            return enumeration(name);
        case StateKind::value:
            return value(name);
        case StateKind::realArray:
            return reals(name);
        case StateKind::integerArray:
            return integers(name);
        case StateKind::booleanArray:
            return booleans(name);
        case StateKind::stringArray:
            return strings(name);
        case StateKind::enumerationArray:
            return enumerations(name);
        case StateKind::valueArray:
            return values(name);
        case StateKind::byteArray:
            return bytes(name);
        }
        throw Error(RC_END_OF_DATA, "GetValueType");
    }

    StateReader node(StateName name) const {
        IVaskPersistReader* child = nullptr; // what a failing reader leaves here is no reference
        call(&Table::GetNode, "GetNode", name.pair(), &child);
        return StateReader(Reference<IVaskPersistReader>::adopt(child));
    }

    std::vector<std::u16string> valueNames() const {
        return names(&Table::ValueNames, "ValueNames");
    }
    std::vector<std::u16string> nodeNames() const { return names(&Table::NodeNames, "NodeNames"); }

    // To go through what is in the node, in no particular order: each entry is a name with a value
    // of any kind, or with a reader on a child node.
    auto eachValue() const {
        return StateEntries(valueNames(),
                            [node = *this](const std::u16string& name) { return node.any(name); });
    }
    auto eachNode() const {
        return StateEntries(nodeNames(),
                            [node = *this](const std::u16string& name) { return node.node(name); });
    }

  private:
    template <class Slot, class... Arguments>
    void call(Slot Table::*slot, const char* name, Arguments... arguments) const {
        tarvo::require((reader_->table->*slot)(reader_->me, arguments...), name, *reader_);
    }

    template <class Number>
    Number number(TarvoResult (*Table::*slot)(void*, IVaskString*, Number*), StateName& name,
                  const char* slotName) const {
        Number number{};
        call(slot, slotName, name.pair(), &number);
        return number;
    }

    template <class Number, class Slot>
    std::vector<Number> numbers(Slot Table::*slot, StateName& name, const char* slotName) const {
        ScalarArray<Number> array;
        call(slot, slotName, name.pair(), array.pair());
        return std::move(array.elements());
    }

    template <class Slot>
    std::vector<std::u16string> names(Slot Table::*slot, const char* slotName) const {
        StringArray array;
        call(slot, slotName, array.pair());
        return takeTexts(array);
    }

    Reference<IVaskPersistReader> reader_;
};

} // namespace tarvo
