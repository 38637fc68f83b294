// TARVO.dll as the tool uses it: loaded from the tool's own folder, its functions bound by name.
#pragma once

#include "platform/module.h"
#include "tarvo/base.h"
#include "tarvo/catalogue.h"
#include "tarvo/environment.h"
#include "tarvo/error.h"
#include "tarvo/library.h"
#include "tarvo/registry.h"
#include "tarvo/registry_writer.h"

#include <string>

namespace tool {

// Objects of the library must not outlive it.
class Library {
  public:
    Library(); // raises Failure if the library isn't there or isn't whole
    ~Library() { platform::freeModule(module_); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    const std::u16string& path() const { return path_; }

    std::string version() const { return text(getTarvoVersion_); }
    std::string language() const { return text(getTarvoLanguage_); }
    std::string folder() const { return text(getTarvoFolder_); }

    // Empty if it can't be had.
    std::string dataFolder(bool allUsers) const {
        return text(allUsers ? getTarvoDataFolder_ : getTarvoUserDataFolder_);
    }

    // The file of a scope; raises Failure if its folder can't be had.
    std::u16string registryPath(bool allUsers) const;

    // A key of the merged registry.
    TarvoResult openKey(const std::u16string& path, IVaskRegistryKey** key) const {
        return vaskGetRegistryKey_(path.c_str(), key);
    }

    TarvoResult openWriter(bool allUsers, IVaskRegistryWriter** writer) const {
        return vaskGetRegistryWriter_(allUsers ? 1 : 0, writer);
    }

    TarvoResult openEnumerator(IVaskPMCEnumerator** enumerator) const {
        return vaskGetPMCEnumerator_(enumerator);
    }

    TarvoResult openLibraryEnumerator(IVaskLibraryEnumerator** enumerator) const {
        return vaskGetLibraryEnumerator_(enumerator);
    }

    // The text of a result code in the installation's language.
    std::string description(TarvoResult code) const;

  private:
    using TextFunction = TarvoResult(IVaskString*);

    template <class Function>
    void bind(Function*& function, const char* name);
    std::string text(TextFunction* function) const;

    std::u16string path_;
    platform::ModuleHandle module_ = nullptr;
    getTarvoFolderFunction* getTarvoFolder_ = nullptr;
    getTarvoDataFolderFunction* getTarvoDataFolder_ = nullptr;
    getTarvoUserDataFolderFunction* getTarvoUserDataFolder_ = nullptr;
    getTarvoLanguageFunction* getTarvoLanguage_ = nullptr;
    getTarvoVersionFunction* getTarvoVersion_ = nullptr;
    getErrorDescriptionFunction* getErrorDescription_ = nullptr;
    vaskGetRegistryKeyFunction* vaskGetRegistryKey_ = nullptr;
    vaskGetRegistryWriterFunction* vaskGetRegistryWriter_ = nullptr;
    vaskGetPMCEnumeratorFunction* vaskGetPMCEnumerator_ = nullptr;
    vaskGetLibraryEnumeratorFunction* vaskGetLibraryEnumerator_ = nullptr;
};

// Raises Failure for a result other than RC_OK.
void require(TarvoResult result, const std::string& attempt);

} // namespace tool
