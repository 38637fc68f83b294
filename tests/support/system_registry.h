// The system registry seen directly, and a place in it for a test alone.
#pragma once

#include "platform/identifier.h"
#include "platform/system_registry.h"

#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace support {

using Bytes = std::vector<std::uint8_t>;

// The bytes of a text as they are stored, without a null character at the end.
inline Bytes bytesOf(std::u16string_view text) {
    const auto* const data = reinterpret_cast<const std::uint8_t*>(text.data());
    return {data, data + text.size() * sizeof(char16_t)};
}

// The same with one.
inline Bytes textBytes(std::u16string text) {
    return bytesOf({text.c_str(), text.size() + 1});
}

struct StoredValue {
    std::uint32_t type;
    Bytes bytes;
    bool operator==(const StoredValue&) const = default;
};

inline void PrintTo(const StoredValue& value, std::ostream* out) {
    *out << "type " << value.type << ':';
    for (const auto byte : value.bytes) {
        *out << ' ' << int{byte};
    }
}

// As a caller reads: first the size, then the bytes.
inline std::optional<StoredValue> storedValue(const TARVO::platform::SystemKey& key,
                                              const char16_t* name) {
    const auto found = key.findValue(name);
    if (!found) {
        return std::nullopt;
    }
    Bytes bytes(found->size);
    const auto read = key.readValue(name, std::as_writable_bytes(std::span{bytes}));
    return read ? std::optional{StoredValue{read->type, bytes}} : std::nullopt;
}

inline bool store(const TARVO::platform::SystemKey& key, const char16_t* name,
                  const StoredValue& value) {
    return key.setValue(name, value.type, std::as_bytes(std::span{value.bytes}));
}

inline std::vector<std::u16string> subkeysOf(const TARVO::platform::SystemKey& key) {
    std::vector<std::u16string> result;
    for (TARVO::platform::SubkeyNames names{key}; const char16_t* name = names.next();) {
        result.emplace_back(name);
    }
    return result;
}

// A key of the user's with a name of its own, gone with the object.
class ScratchKey {
  public:
    ScratchKey() : name_{TARVO::platform::classText(TARVO::platform::newIdentifier()).data()} {
        if (!forWriting()) {
            throw std::runtime_error("no key for a test in the system registry");
        }
    }
    ScratchKey(const ScratchKey&) = delete;
    ScratchKey& operator=(const ScratchKey&) = delete;
    ~ScratchKey() { software().deleteTree(name_.c_str()); }

    // Below HKEY_CURRENT_USER.
    std::u16string path() const { return u"Software\\" + name_; }

    TARVO::platform::SystemKey forReading() const {
        return TARVO::platform::SystemKey::open(TARVO::platform::RegistryRoot::currentUser,
                                                path().c_str());
    }
    TARVO::platform::SystemKey forWriting() const { return software().create(name_.c_str()); }

  private:
    static TARVO::platform::SystemKey software() {
        return TARVO::platform::SystemKey::openForWriting(
            TARVO::platform::RegistryRoot::currentUser, u"Software");
    }

    std::u16string name_;
};

} // namespace support
