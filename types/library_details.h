// One registered type library, as an enumerator found it. It keeps a copy of all that it tells, and
// so outlives the registry's state and the enumerator.
#pragma once

#include "core/object.h"
#include "registry/tree.h"
#include "tarvo/library.h"

#include <map>
#include <string>

namespace TARVO {

class TarvoLibraryDetails final : public ReadOnlyNamedVaskBaseImpl<TarvoLibraryDetails> {
  public:
    // `key` is the library's in one scope.
    TarvoLibraryDetails(const UUID& uuid, std::u16string_view name, std::u16string_view version,
                        std::u16string definitionPath, const TarvoRegistry& key);

    const UUID& uuid() const noexcept { return uuid_; }
    IVaskLibraryDetails* details() noexcept { return &details_; }

    Result getName(IVaskString* name);
    Result getUUID(UUID* uuid);
    Result getVersion(IVaskString* version);
    Result getDefinitionPath(IVaskString* path);
    Result getLocation(std::int32_t location, IVaskString* text);

  private:
    static const IVaskLibraryDetailsTable kTable;

    IVaskLibraryDetails details_{me(), &kTable};
    UUID uuid_;
    std::u16string name_;
    std::u16string version_;
    std::u16string definitionPath_;
    std::map<std::int32_t, std::u16string> locations_;
};

// A string value of a key; null if there is none of that name and type.
const NamedValue* findStringValue(const TarvoRegistry& key, std::u16string_view name);

} // namespace TARVO
