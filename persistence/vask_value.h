// The value of changing type that saved state holds, by itself and in arrays.
#pragma once

#include "tarvo/value.hpp"

#include <cstdint>
#include <stdexcept>

namespace TARVO {

class VaskValueImpl : public tarvo::Value {
  public:
    class InvalidVaskValueTypeException : public std::logic_error {
      public:
        InvalidVaskValueTypeException() : std::logic_error("unexpected data type") {}
    };

    // The integer, or the smallest one for an empty value. Raises InvalidVaskValueTypeException for
    // any other type.
    std::int32_t requireInteger() const {
        const auto held = integerOrEmpty();
        if (!held)
            throw InvalidVaskValueTypeException();
        return *held;
    }
};

} // namespace TARVO
