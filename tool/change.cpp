#include "tarvo/uuid.hpp"
#include "tool/commands.h"
#include "tool/failure.h"
#include "tool/scope_writer.h"
#include "tool/text.h"
#include "tool/uuid_argument.h"

#include <charconv>

namespace tool {

namespace {

std::int32_t readInteger(const std::string& text) {
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        throw Failure("not a number from -2147483648 to 2147483647: " + text);
    return number;
}

} // namespace

void setRegistryValue(const ValuePlace& place, ValueType type, const std::string& text) {
    const Library library;
    const ScopeWriter writer(library, place.scope == Scope::machine);
    const KeyChange key = writer.key(place.path);
    switch (type) {
    case ValueType::string:
        key.setString(place.name, text);
        break;
    case ValueType::integer:
        key.setInteger(place.name, readInteger(text));
        break;
    case ValueType::uuid:
        key.setUuid(place.name, uuidArgument(text));
        break;
    case ValueType::empty:
        key.setEmpty(place.name);
        break;
    }
    writer.commit();
}

void deleteRegistryValue(const ValuePlace& place) {
    const Library library;
    const ScopeWriter writer(library, place.scope == Scope::machine);
    if (!writer.hasValue(place.path, place.name))
        throw Failure("there is no value " + place.name + " of " + place.path + " in this scope",
                      RC_NOT_FOUND);
    writer.deleteValue(place.path, place.name);
    writer.commit();
}

void deleteRegistryKey(const std::string& path, Scope scope) {
    if (path.empty() || path == "/" || path == "\\")
        throw Failure("the root can't be deleted, only the keys in it");
    const Library library;
    const ScopeWriter writer(library, scope == Scope::machine);
    if (!writer.hasKey(path))
        throw Failure("there is no key " + path + " in this scope", RC_NOT_FOUND);
    writer.deleteKey(path);
    writer.commit();
}

} // namespace tool
