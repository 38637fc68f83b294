#include "persistence/bag_item.h"

#include "persistence/source_reader.h"

#include <limits>
#include <type_traits>

namespace TARVO {

namespace {

using Table = IVaskPersistReaderTable;
using ArraySlot = decltype(Table::GetArrayReal);

[[noreturn]] void refuse() {
    throw vask_link_error(RC_BAD_DATA);
}

ArraySlot Table::*arraySlot(std::uint32_t kind) {
    switch (kind) {
    case TARVO_PERSIST_REAL_ARRAY:
        return &Table::GetArrayReal;
    case TARVO_PERSIST_INTEGER_ARRAY:
        return &Table::GetArrayInteger;
    case TARVO_PERSIST_BOOLEAN_ARRAY:
        return &Table::GetArrayBoolean;
    case TARVO_PERSIST_STRING_ARRAY:
        return &Table::GetArrayString;
    case TARVO_PERSIST_ENUMERATION_ARRAY:
        return &Table::GetArrayEnumeration;
    case TARVO_PERSIST_VALUE_ARRAY:
        return &Table::GetArrayValue;
    case TARVO_PERSIST_BYTE_ARRAY:
        return &Table::GetArrayByte;
    default:
        refuse();
    }
}

// An array of another kind that says only that the declared one is empty: nothing is taken from it,
// and the bag is asked for it without a place to put it.
bool standsForEmpty(std::uint32_t stored, std::uint32_t declared) {
    if (stored == TARVO_PERSIST_INTEGER_ARRAY)
        return declared == TARVO_PERSIST_REAL_ARRAY || declared == TARVO_PERSIST_BOOLEAN_ARRAY;
    return stored == TARVO_PERSIST_VALUE_ARRAY && declared != TARVO_PERSIST_BYTE_ARRAY;
}

} // namespace

VaskValueImpl BagItem::value() const {
    VaskValueImpl value;
    callReader(bag_, &Table::GetValue, name_, value.pair());
    return value;
}

bool BagItem::isEmptyValue() const {
    if (stored_ != TARVO_PERSIST_VALUE)
        return false;
    if (value().type() != TARVO_VALUE_EMPTY)
        refuse();
    return true;
}

double BagItem::real() const {
    if (stored_ == TARVO_PERSIST_REAL || stored_ == TARVO_PERSIST_INTEGER) {
        double number = 0;
        callReader(bag_, &Table::GetReal, name_, &number);
        return number;
    }
    if (stored_ != TARVO_PERSIST_VALUE)
        refuse();
    const VaskValueImpl held = value();
    switch (held.type()) {
    case TARVO_VALUE_INTEGER:
        return held.requireInteger();
    case TARVO_VALUE_REAL:
        return *held.real();
    case TARVO_VALUE_EMPTY:
        return std::numeric_limits<double>::quiet_NaN();
    default:
        refuse();
    }
}

std::int32_t BagItem::integer() const {
    if (stored_ == TARVO_PERSIST_INTEGER) {
        std::int32_t number = 0;
        callReader(bag_, &Table::GetInteger, name_, &number);
        return number;
    }
    if (stored_ != TARVO_PERSIST_VALUE)
        refuse();
    const VaskValueImpl held = value();
    if (held.type() != TARVO_VALUE_INTEGER)
        refuse();
    return held.requireInteger();
}

std::uint32_t BagItem::boolean() const {
    if (stored_ == TARVO_PERSIST_BOOLEAN) {
        std::uint32_t boolean = 0;
        callReader(bag_, &Table::GetBoolean, name_, &boolean);
        return boolean;
    }
    if (stored_ != TARVO_PERSIST_VALUE)
        return integer() != 0 ? 1 : 0;
    const VaskValueImpl held = value();
    if (held.type() == TARVO_VALUE_INTEGER)
        return held.requireInteger() != 0 ? 1 : 0;
    if (held.type() != TARVO_VALUE_BOOLEAN)
        refuse();
    return *held.boolean();
}

std::u16string BagItem::text() const {
    if (stored_ == TARVO_PERSIST_STRING) {
        tarvo::String text;
        callReader(bag_, &Table::GetString, name_, text.pair());
        return std::move(text.text());
    }
    if (stored_ != TARVO_PERSIST_VALUE)
        refuse();
    const VaskValueImpl held = value();
    if (held.type() == TARVO_VALUE_EMPTY)
        return {};
    if (held.type() != TARVO_VALUE_STRING)
        refuse();
    return std::u16string(*held.text());
}

std::uint32_t BagItem::enumeration() const {
    if (stored_ != TARVO_PERSIST_ENUMERATION)
        return static_cast<std::uint32_t>(integer());
    std::uint32_t number = 0;
    callReader(bag_, &Table::GetEnumeration, name_, &number);
    return number;
}

void BagItem::fillArray(std::uint32_t declared, IVaskArray* target) const {
    if (isEmptyValue())
        return;
    if (stored_ == declared)
        callReader(bag_, arraySlot(declared), name_, target);
    else if (standsForEmpty(stored_, declared))
        callReader(bag_, arraySlot(stored_), name_, static_cast<IVaskArray*>(nullptr));
    else
        refuse();
}

void BagItem::fillEnumerations(tarvo::ScalarArray<std::uint32_t>& target) const {
    if (stored_ != TARVO_PERSIST_INTEGER_ARRAY)
        return fillArray(TARVO_PERSIST_ENUMERATION_ARRAY, target.pair());
    tarvo::ScalarArray<std::int32_t> integers;
    callReader(bag_, &Table::GetArrayInteger, name_, integers.pair());
    target.elements().assign(integers.elements().begin(), integers.elements().end());
}

void BagItem::fillValues(tarvo::ObjectArray<VaskValueImpl>& target) const {
    const auto convert = [&](auto&& array, auto set) {
        callReader(bag_, arraySlot(stored_), name_, array.pair());
        target.resize(array.elements().size());
        for (std::size_t i = 0; i < array.elements().size(); ++i)
            set(target.elements()[i], array.elements()[i]);
    };
    using Value = VaskValueImpl;
    switch (stored_) {
    case TARVO_PERSIST_REAL_ARRAY:
        return convert(tarvo::ScalarArray<double>(),
                       [](Value& value, double real) { value.setReal(real); });
    case TARVO_PERSIST_INTEGER_ARRAY:
        return convert(tarvo::ScalarArray<std::int32_t>(),
                       [](Value& value, std::int32_t integer) { value.setInteger(integer); });
    case TARVO_PERSIST_BOOLEAN_ARRAY:
        return convert(tarvo::ScalarArray<std::uint32_t>(),
                       [](Value& value, std::uint32_t boolean) { value.setBoolean(boolean); });
    case TARVO_PERSIST_STRING_ARRAY:
        return convert(tarvo::StringArray(), [](Value& value, const tarvo::String& string) {
            value.setText(string.text());
        });
    case TARVO_PERSIST_ENUMERATION_ARRAY:
        return convert(tarvo::ScalarArray<std::uint32_t>(), [](Value& value, std::uint32_t number) {
            value.setInteger(static_cast<std::int32_t>(number));
        });
    default:
        return fillArray(TARVO_PERSIST_VALUE_ARRAY, target.pair());
    }
}

} // namespace TARVO
