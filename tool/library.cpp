#include "tool/library.h"

#include "tarvo/result.hpp"
#include "tarvo/text.hpp"
#include "tool/failure.h"
#include "tool/text.h"

#include <fmt/format.h>

namespace tool {

Library::Library() : path_{platform::ownModulePath()} {
    path_.erase(path_.find_last_of(u"/\\") + 1).append(u"TARVO.dll");
    module_ = platform::loadModule(path_);
    if (module_ == nullptr)
        throw Failure(fmt::format("cannot load {}: the file is missing, or is no library for this "
                                  "system; install the tool and the library in one folder",
                                  toUtf8(path_)));
    bind(getTarvoFolder_, "getTarvoFolder");
    bind(getTarvoDataFolder_, "getTarvoDataFolder");
    bind(getTarvoUserDataFolder_, "getTarvoUserDataFolder");
    bind(getTarvoLanguage_, "getTarvoLanguage");
    bind(getTarvoVersion_, "getTarvoVersion");
    bind(getErrorDescription_, "getErrorDescription");
    bind(vaskGetRegistryKey_, "vaskGetRegistryKey");
    bind(vaskGetRegistryWriter_, "vaskGetRegistryWriter");
    bind(vaskGetPMCEnumerator_, "vaskGetPMCEnumerator");
    bind(vaskGetLibraryEnumerator_, "vaskGetLibraryEnumerator");
}

template <class Function>
void Library::bind(Function*& function, const char* name) {
    function = reinterpret_cast<Function*>(platform::findSymbol(module_, name));
    if (function == nullptr)
        throw Failure(fmt::format("{} has no function {}; is it another version than the tool?",
                                  toUtf8(path_), name));
}

std::string Library::text(TextFunction* function) const {
    tarvo::String text;
    require(function(text.pair()), "cannot ask the library about itself");
    return toUtf8(text.text());
}

std::u16string Library::registryPath(bool allUsers) const {
    const std::string folder = dataFolder(allUsers);
    if (folder.empty())
        throw Failure("cannot find the registry file", RC_NO_DATA_FOLDER);
    return toUtf16(folder + "registry.dat");
}

std::string Library::description(TarvoResult code) const {
    return toUtf8(tarvo::textOfResult(code, *getErrorDescription_));
}

void require(TarvoResult result, const std::string& attempt) {
    if (result != RC_OK)
        throw Failure(attempt, result);
}

} // namespace tool
