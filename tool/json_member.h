// The members of JSON that people write, with messages that tell where it isn't what it has to be.
#pragma once

#include "tool/failure.h"

#include <cstdint>
#include <fmt/format.h>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>

namespace tool {

// Raises Failure. `place` is a path of names in the file, empty for the whole file.
[[noreturn]] void failAt(const std::string& place, const std::string& reason);

// Names the file in a Failure about its content.
template <class Work>
void readingFrom(const std::string& file, Work&& work) {
    try {
        work();
    } catch (const Failure& failure) {
        throw Failure(file + ": " + failure.what(), failure.code());
    }
}

// A member of an object, of whatever type. Raises Failure if the object hasn't got it.
const nlohmann::json& member(const nlohmann::json& object, const char* name,
                             const std::string& place);

// The same for members that have to be of one type, which the messages name.
const nlohmann::json& objectMember(const nlohmann::json& object, const char* name,
                                   const std::string& place);
std::string textMember(const nlohmann::json& object, const char* name, const std::string& place);

// Whether the value is a whole number that the type, of up to 32 bits, can hold.
template <class Number>
bool isWhole(const nlohmann::json& value) {
    using Limits = std::numeric_limits<Number>;
    if (value.is_number_unsigned()) // every number that isn't negative is
        return value.get<std::uint64_t>() <= static_cast<std::uint64_t>(Limits::max());
    return value.is_number_integer() && value.get<std::int64_t>() >= std::int64_t{Limits::min()};
}

template <class Number>
Number integerMember(const nlohmann::json& object, const char* name, const std::string& place) {
    const nlohmann::json& value = member(object, name, place);
    if (!isWhole<Number>(value))
        failAt(place,
               fmt::format("\"{}\" is no number from {} to {}", name,
                           std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max()));
    return value.get<Number>();
}

} // namespace tool
