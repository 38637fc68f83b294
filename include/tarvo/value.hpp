// The holder that stands behind an IVaskValue: one value of changing type, which others read and
// set through its pair and its owner directly.
#pragma once

#include "data.h"
#include "text.hpp"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace tarvo {

namespace detail {

// A value behind a pair: an IVaskValue, or a pair whose table begins like its table. The table is
// the derived class's; a copy keeps it and gets a pair on itself. A setter writes the field of its
// type alone, and the type says which one counts.
template <class Pair>
class BasicValue {
  public:
    Pair* pair() noexcept { return &pair_; }

    // One of TARVO_VALUE_STRING to TARVO_VALUE_EMPTY.
    std::uint32_t type() const noexcept { return type_; }

    // What the value holds; nothing if that is of another type. A text is valid until the value is
    // next changed. (Through the pair, other than here, an empty value reads as text and number.)
    std::optional<std::u16string_view> text() const noexcept {
        return ifType<std::u16string_view>(TARVO_VALUE_STRING, text_);
    }
    std::optional<std::int32_t> integer() const noexcept {
        return ifType(TARVO_VALUE_INTEGER, number_.integer);
    }
    std::optional<std::uint32_t> boolean() const noexcept {
        return ifType(TARVO_VALUE_BOOLEAN, number_.boolean);
    }
    std::optional<double> real() const noexcept { return ifType(TARVO_VALUE_REAL, number_.real); }

    void setText(std::u16string_view text) {
        text_ = text;
        type_ = TARVO_VALUE_STRING;
    }
    void setInteger(std::int32_t value) noexcept {
        number_.integer = value;
        type_ = TARVO_VALUE_INTEGER;
    }
    void setBoolean(std::uint32_t value) noexcept {
        number_.boolean = value;
        type_ = TARVO_VALUE_BOOLEAN;
    }
    void setReal(double value) noexcept {
        number_.real = value;
        type_ = TARVO_VALUE_REAL;
    }
    void setEmpty() noexcept { type_ = TARVO_VALUE_EMPTY; }

  protected:
    using Table = std::remove_pointer_t<decltype(Pair::table)>;

    explicit BasicValue(Table* table) noexcept : pair_{this, table} {}
    BasicValue(const BasicValue& other)
        : pair_{this, other.pair_.table}, number_(other.number_), text_(other.text_),
          type_(other.type_) {}
    BasicValue(BasicValue&& other) noexcept
        : pair_{this, other.pair_.table}, number_(other.number_), text_(std::move(other.text_)),
          type_(other.type_) {}
    BasicValue& operator=(const BasicValue& other) {
        text_ = other.text_;
        number_ = other.number_;
        type_ = other.type_;
        return *this;
    }
    BasicValue& operator=(BasicValue&& other) noexcept {
        text_ = std::move(other.text_);
        number_ = other.number_;
        type_ = other.type_;
        return *this;
    }
    ~BasicValue() = default;

    static std::uint32_t getValueType(void* me) { return of(me).type_; }

    static TarvoResult getStringValue(void* me, const char16_t** text, std::uint32_t* length) {
        const BasicValue& value = of(me);
        if (value.type_ == TARVO_VALUE_STRING) {
            getText(value.text_, text, length);
            return RC_OK;
        }
        const bool isEmpty = value.type_ == TARVO_VALUE_EMPTY;
        *text = isEmpty ? u"" : nullptr;
        *length = 0;
        return isEmpty ? RC_OK : RC_NOT_AVAILABLE;
    }

    static TarvoResult getIntegerValue(void* me, std::int32_t* value) {
        return give(of(me).integerOrEmpty(), value);
    }
    static TarvoResult getBooleanValue(void* me, std::uint32_t* value) {
        return give(of(me).boolean(), value);
    }
    static TarvoResult getRealValue(void* me, double* value) {
        return give(of(me).realOrEmpty(), value);
    }

    // What can't be stored leaves the value as it was.
    static TarvoResult setStringValue(void* me, const char16_t* text, std::uint32_t length) {
        BasicValue& value = of(me);
        const TarvoResult result = assignText(value.text_, text, length);
        if (result == RC_OK)
            value.type_ = TARVO_VALUE_STRING;
        return result;
    }
    static TarvoResult setIntegerValue(void* me, std::int32_t value) {
        of(me).setInteger(value);
        return RC_OK;
    }
    static TarvoResult setBooleanValue(void* me, std::uint32_t value) {
        of(me).setBoolean(value);
        return RC_OK;
    }
    static TarvoResult setRealValue(void* me, double value) {
        of(me).setReal(value);
        return RC_OK;
    }
    static TarvoResult setEmptyValue(void* me) {
        of(me).setEmpty();
        return RC_OK;
    }

    // As the pair's own slots read it.
    std::optional<std::int32_t> integerOrEmpty() const noexcept {
        return type_ == TARVO_VALUE_EMPTY ? std::numeric_limits<std::int32_t>::min() : integer();
    }
    std::optional<double> realOrEmpty() const noexcept {
        return type_ == TARVO_VALUE_EMPTY ? std::numeric_limits<double>::quiet_NaN() : real();
    }

  private:
    static BasicValue& of(void* me) noexcept { return *static_cast<BasicValue*>(me); }

    template <class Held>
    std::optional<Held> ifType(std::uint32_t type, Held held) const noexcept {
        return type_ == type ? std::optional<Held>(held) : std::nullopt;
    }

    template <class Held>
    static TarvoResult give(std::optional<Held> held, Held* out) noexcept {
        if (!held)
            return RC_NOT_AVAILABLE;
        *out = *held;
        return RC_OK;
    }

    Pair pair_;
    union {
        std::int32_t integer;
        std::uint32_t boolean;
        double real;
    } number_ = {.integer = 0};
    std::u16string text_;
    std::uint32_t type_ = TARVO_VALUE_EMPTY;
};

} // namespace detail

// Gives a value to a value reference, by the one setter of its type; the result is that setter's.
template <class Pair>
TarvoResult setValue(IVaskValue* target, const detail::BasicValue<Pair>& value) {
    if (const auto text = value.text())
        return target->table->setStringValue(target->me, text->data(),
                                             static_cast<std::uint32_t>(text->size()));
    if (const auto integer = value.integer())
        return target->table->setIntegerValue(target->me, *integer);
    if (const auto boolean = value.boolean())
        return target->table->setBooleanValue(target->me, *boolean);
    if (const auto real = value.real())
        return target->table->setRealValue(target->me, *real);
    return target->table->setEmpty(target->me);
}

// A value of its own, empty when it is new, for slots that take an IVaskValue. A text that others
// set and that can't be stored leaves it empty.
//
//     tarvo::ConstantString name(u"tuning");
//     tarvo::Value tuning;
//     if (reader->table->GetValue(reader->me, name.pair(), tuning.pair()) == RC_OK && tuning.real())
//         std::cout << *tuning.real() << '\n';
class Value : public detail::BasicValue<IVaskValue> {
  public:
    Value() noexcept : BasicValue(&kTable) {}

  private:
    static TarvoResult setStringOrEmpty(void* me, const char16_t* text, std::uint32_t length) {
        const TarvoResult result = setStringValue(me, text, length);
        return result == RC_OK ? result : (setEmptyValue(me), result);
    }

    static constexpr IVaskValueTable kTable = {
        .getValueType = &Value::getValueType,
        .getStringValue = &Value::getStringValue,
        .getIntegerValue = &Value::getIntegerValue,
        .getBooleanValue = &Value::getBooleanValue,
        .getRealValue = &Value::getRealValue,
        .setStringValue = &Value::setStringOrEmpty,
        .setIntegerValue = &Value::setIntegerValue,
        .setBooleanValue = &Value::setBooleanValue,
        .setRealValue = &Value::setRealValue,
        .setEmpty = &Value::setEmptyValue,
    };
};

} // namespace tarvo
