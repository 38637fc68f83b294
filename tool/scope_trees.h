// The trees of both scopes as they stand in their files, looked at together or one by one.
#pragma once

#include "registry/tree.h"
#include "tool/library.h"
#include "tool/scope.h"

#include <array>
#include <string>
#include <string_view>

namespace tool {

// Where the registrations of native components are, by identifier.
inline constexpr const char16_t* kComponents = u"components/pmcs";

class ScopeTrees {
  public:
    // Raises Failure unless both files are whole; one that isn't there yet is.
    explicit ScopeTrees(const Library& library);

    // The key at a path in one scope; null if there is none.
    const TARVO::TarvoRegistry* find(bool allUsers, const std::u16string& path) const;

    // Whether either scope has such a key or value; names of values are in lower case.
    bool hasKey(const std::u16string& path) const;
    bool hasValue(const std::u16string& path, std::u16string_view name) const;

  private:
    std::array<tarvo::Reference<TARVO::TarvoRegistry>, 2> roots_; // the user's, the machine's
};

} // namespace tool
