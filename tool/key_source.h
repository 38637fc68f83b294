// A key as the tool shows it, whether it comes from the merged registry, through the library, or
// from the file of one scope.
#pragma once

#include "registry/tree.h"
#include "tool/library.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tool {

struct ShownValue {
    std::string name;
    TARVO::RegistryValueType type = TARVO::RegistryValueType::empty;
    std::string text;         // of a string or uuid
    std::int32_t integer = 0; // of an integer
    bool allUsers = false;    // the scope that it comes from
};

class KeySource {
  public:
    KeySource() = default;
    KeySource(const KeySource&) = delete;
    KeySource& operator=(const KeySource&) = delete;
    virtual ~KeySource() = default;

    // In the order of their names, as the names of the sub-keys are.
    virtual std::vector<ShownValue> values() const = 0;
    virtual std::vector<std::u16string> subKeyNames() const = 0;

    virtual std::unique_ptr<KeySource> open(const std::u16string& subKey) const = 0;
};

// Both raise Failure where there is no such key. An empty path is the root; any other begins with a
// separator. The library must outlive the key.
std::unique_ptr<KeySource> openMergedKey(const Library& library, const std::u16string& path);
std::unique_ptr<KeySource> openScopeKey(const Library& library, bool allUsers,
                                        const std::u16string& path);

} // namespace tool
