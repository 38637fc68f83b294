// The members of JSON that people write, with messages that tell where it isn't what it has to be.
#pragma once

#include <cstdint>
#include <fmt/format.h>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace tool {

// Where something stands in the file. Only a message needs the whole path, so places lead to those
// around them, which must outlive them; a path for each would take time with the square of the
// depth.
class Place {
  public:
    Place() = default; // the whole file
    Place(const Place& around, std::string name) : around_(&around), name_(std::move(name)) {}

    std::string path() const; // "/a/b", printable; empty for the whole file

  private:
    const Place* around_ = nullptr;
    std::string name_;
};

// Raises Failure.
[[noreturn]] void failAt(const Place& place, const std::string& reason);

// A member of an object, of whatever type. Raises Failure if the object hasn't got it.
const nlohmann::json& member(const nlohmann::json& object, const char* name, const Place& place);

// The same for members that have to be of one type, which the messages name.
const nlohmann::json& objectMember(const nlohmann::json& object, const char* name,
                                   const Place& place);
std::string textMember(const nlohmann::json& object, const char* name, const Place& place);

// Whether the value is a whole number that the type, of up to 32 bits, can hold.
template <class Number>
bool isWhole(const nlohmann::json& value) {
    using Limits = std::numeric_limits<Number>;
    if (value.is_number_unsigned()) // every number that isn't negative is
        return value.get<std::uint64_t>() <= static_cast<std::uint64_t>(Limits::max());
    return value.is_number_integer() && value.get<std::int64_t>() >= std::int64_t{Limits::min()};
}

template <class Number>
Number integerMember(const nlohmann::json& object, const char* name, const Place& place) {
    const nlohmann::json& value = member(object, name, place);
    if (!isWhole<Number>(value))
        failAt(place,
               fmt::format("\"{}\" is no number from {} to {}", name,
                           std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max()));
    return value.get<Number>();
}

} // namespace tool
