#include "tarvo/uuid.hpp"
#include "tool/commands.h"
#include "tool/failure.h"
#include "tool/scope_writer.h"
#include "tool/text.h"

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

TarvoUUID readUuid(const std::string& text) {
    const auto uuid = tarvo::UUID::parse(toUtf16(text));
    if (!uuid)
        throw Failure("not an identifier like {01234567-89ab-cdef-0123-456789abcdef}: " + text);
    return *uuid;
}

} // namespace

void setRegistryValue(const Change& change, ValueType type, const std::string& text) {
    const Library library;
    const ScopeWriter writer(library, change.scope == Scope::machine);
    const KeyChange key = writer.key(change.path);
    switch (type) {
    case ValueType::string:
        key.setString(change.name, text);
        break;
    case ValueType::integer:
        key.setInteger(change.name, readInteger(text));
        break;
    case ValueType::uuid:
        key.setUuid(change.name, readUuid(text));
        break;
    case ValueType::empty:
        key.setEmpty(change.name);
        break;
    }
    writer.commit();
}

void deleteFromRegistry(const Change& change) {
    const Library library;
    const ScopeWriter writer(library, change.scope == Scope::machine);
    if (change.name.empty()) {
        if (!writer.hasKey(change.path))
            throw Failure("there is no key " + change.path + " in this scope", RC_NOT_FOUND);
        writer.deleteKey(change.path);
    } else {
        if (!writer.hasValue(change.path, change.name))
            throw Failure("there is no value " + change.name + " of " + change.path +
                              " in this scope",
                          RC_NOT_FOUND);
        writer.deleteValue(change.path, change.name);
    }
    writer.commit();
}

} // namespace tool
