// Changes to one scope through the library: recorded first, then brought into the file by one
// commit.
#pragma once

#include "tarvo/reference.hpp"
#include "tarvo/registrar.h"
#include "tarvo/registry_writer.h"
#include "tarvo/uuid.hpp"
#include "tool/library.h"
#include "tool/scope.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tool {

// Whether a registry file can keep a text: it has no way of telling the characters below 9.
bool isKept(std::string_view text);

// A key to change.
class KeyChange {
  public:
    explicit KeyChange(tarvo::Reference<IVaskRegistryKeyWriter> key) : key_(std::move(key)) {}

    KeyChange subKey(const std::string& path) const; // made if it isn't there
    void setString(const std::string& name, const std::string& text) const;
    void setInteger(const std::string& name, std::int32_t number) const;
    void setUuid(const std::string& name, const TarvoUUID& uuid) const;
    void setEmpty(const std::string& name) const;

  private:
    tarvo::Reference<IVaskRegistryKeyWriter> key_;
};

// Everything raises Failure where the library refuses it. The library must outlive the writer.
class ScopeWriter {
  public:
    ScopeWriter(const Library& library, bool allUsers);

    // The key at a path from the root, made if it isn't there.
    KeyChange key(const std::string& path) const;

    void deleteKey(const std::string& path) const;
    void deleteValue(const std::string& path, const std::string& name) const;

    // A component's registration: made through a registrar, told of, and removed whole.
    tarvo::Reference<IVaskPMCRegistrar> createRegistrar() const;
    bool hasComponent(const tarvo::UUID& component) const;
    bool hasLocation(const tarvo::UUID& component, const std::string& location) const;
    void removeComponent(const tarvo::UUID& component) const;

    // Removes a location of a component; with the last one it goes as a whole.
    void removeLocation(const tarvo::UUID& component, std::int32_t location) const;

    // Tells whether there is such a key or value in the scope.
    bool hasKey(const std::string& path) const { return find(path) != nullptr; }
    bool hasValue(const std::string& path, const std::string& name) const;

    // What a string value holds; empty if there is none.
    std::string text(const std::string& path, const std::string& name) const;

    // For what has no function here.
    IVaskRegistryWriter& get() const { return *writer_; }

    void commit() const;

  private:
    // Null if there is no such key.
    tarvo::Reference<IVaskRegistryKey> find(const std::string& path) const;

    tarvo::Reference<IVaskRegistryWriter> writer_;
    std::string scopeName_;
};

} // namespace tool
