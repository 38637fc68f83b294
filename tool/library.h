// TARVO.dll as the tool uses it: bound by the client, as by any other program, and once for the
// whole process.
#pragma once

#include "tarvo/client.h"

#include <string>

namespace tool {

class Library {
  public:
    // The library that programs find. Where no installation is known to them yet, the one beside
    // the tool, so that a copy that was just unpacked works. Raises Failure if neither is there or
    // if it can't serve.
    Library();

    // The one beside the tool, whatever is installed.
    static Library besideTool();
    static std::u16string pathBesideTool();

    std::string version() const { return text(functions_.getTarvoVersion); }
    std::string language() const { return text(functions_.getTarvoLanguage); }
    std::string folder() const { return text(functions_.getTarvoFolder); }

    // Empty if it can't be had.
    std::string dataFolder(bool allUsers) const {
        return text(allUsers ? functions_.getTarvoDataFolder : functions_.getTarvoUserDataFolder);
    }

    // The file of a scope; raises Failure if its folder can't be had.
    std::u16string registryPath(bool allUsers) const;

    // A key of the merged registry.
    TarvoResult openKey(const std::u16string& path, IVaskRegistryKey** key) const {
        return functions_.vaskGetRegistryKey(path.c_str(), key);
    }

    TarvoResult openWriter(bool allUsers, IVaskRegistryWriter** writer) const {
        return functions_.vaskGetRegistryWriter(allUsers ? 1 : 0, writer);
    }

    TarvoResult openEnumerator(IVaskPMCEnumerator** enumerator) const {
        return functions_.vaskGetPMCEnumerator(enumerator);
    }

    TarvoResult openLibraryEnumerator(IVaskLibraryEnumerator** enumerator) const {
        return functions_.vaskGetLibraryEnumerator(enumerator);
    }

    // The text of a result code in the installation's language.
    std::string description(TarvoResult code) const;

  private:
    explicit Library(const TarvoEntryPoints& bound) : functions_{bound} {}

    static std::string text(TarvoResult (*function)(IVaskString*));

    const TarvoEntryPoints& functions_;
};

// Raises Failure for a result other than RC_OK.
void require(TarvoResult result, const std::string& attempt);

} // namespace tool
