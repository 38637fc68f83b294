// The binding of a program to an installed library.
#include "tarvo/client.h"

#include "client/installation.h"
#include "client/named_library.h"
#include "client/version.h"
#include "platform/module.h"
#include "platform/text.h"
#include "tarvo/error.hpp"
#include "tarvo/text.hpp"

#include <string>
#include <string_view>

namespace TARVO {

namespace {

constinit TarvoEntryPoints entryPoints{};
constinit platform::ModuleHandle library = nullptr;

// Tells the caller, if it wants to know, and is the result.
bool fail(IVaskString* message, std::u16string_view text) {
    if (message != nullptr)
        tarvo::require(tarvo::setText(message, text), "set of the message");
    return false;
}

std::u16string number(int value) {
    const std::string digits = std::to_string(value);
    return {digits.begin(), digits.end()};
}

bool loadFile(const std::u16string& path, IVaskString* message) {
    platform::ModuleLoadError error;
    const platform::ModuleHandle module = platform::loadModule(path, &error);
    if (module != nullptr) {
        library = module;
        return true;
    }
    return fail(message,
                path + u" load error: " + (error.text.empty() ? u"unknown error" : error.text));
}

bool loadNewest(IVaskString* message) {
    const auto installation = newestInstallation();
    if (!installation)
        return fail(message, u"TARVO not found - please check for a valid TARVO installation");
    return loadFile(libraryPath(*installation), message);
}

// Looks functions up in the library and keeps the name of the first that is missing.
class Binder {
  public:
    template <class Function>
    void bind(Function*& function, const char* name, std::u16string_view nameInMessage = {}) {
        function = reinterpret_cast<Function*>(platform::findSymbol(library, name));
        if (function != nullptr || !missing_.empty())
            return;
        if (nameInMessage.empty())
            platform::appendUtf16(name, missing_);
        else
            missing_ = nameInMessage;
    }

    const std::u16string& missing() const { return missing_; }

  private:
    std::u16string missing_;
};

// All functions but the one that tells the version.
Binder bindAll(vaskGetDataClassFactoryFunction*& getDataClassFactory) {
    TarvoEntryPoints& to = entryPoints;
    Binder binder;
    binder.bind(to.vaskGenUUID, "vaskGenUUID");
    binder.bind(to.vaskUUIDFromString, "vaskUUIDFromString");
    binder.bind(to.vaskStringFromUUID, "vaskStringFromUUID");
    binder.bind(to.getTarvoLanguage, "getTarvoLanguage");
    binder.bind(to.getTarvoDataFolder, "getTarvoDataFolder");
    binder.bind(to.getTarvoFolder, "getTarvoFolder");
    binder.bind(to.getTarvoUserDataFolder, "getTarvoUserDataFolder");
    binder.bind(to.getErrorDescription, "getErrorDescription", u"vaskGetErrorDescription");
    binder.bind(to.vaskGetRegistryKey, "vaskGetRegistryKey");
    binder.bind(to.vaskGetRegistryWriter, "vaskGetRegistryWriter");
    binder.bind(to.vaskGetPMCEnumerator, "vaskGetPMCEnumerator");
    binder.bind(to.vaskGetLibraryEnumerator, "vaskGetLibraryEnumerator");
    binder.bind(to.tarvoCreatePMCInstance, "tarvoCreatePMCInstance");
    binder.bind(to.tarvoDepersistFromTransitionFormat, "tarvoDepersistFromTransitionFormat");
    binder.bind(to.tarvoDepersistPMCFromTransitionFormat, "tarvoDepersistPMCFromTransitionFormat");
    binder.bind(getDataClassFactory, "vaskGetDataClassFactory");
    return binder;
}

bool bindLoaded(IVaskString* message) {
    const std::u16string kNotFound = u" entry point not found in TARVO.dll";
    Binder version;
    version.bind(entryPoints.getTarvoVersion, "getTarvoVersion");
    vaskGetDataClassFactoryFunction* getDataClassFactory = nullptr;
    const Binder others = bindAll(getDataClassFactory);
    if (!version.missing().empty())
        return fail(message, version.missing() + kNotFound);
    if (!checkTarvoVersion(message))
        return false;
    if (!others.missing().empty())
        return fail(message, others.missing() + kNotFound);
    entryPoints.dataClassFactory = getDataClassFactory();
    return true;
}

} // namespace

bool loadNamedLibrary(const std::u16string& path, IVaskString* message) {
    return loadFile(path, message) && bindLoaded(message);
}

} // namespace TARVO

const TarvoEntryPoints* tarvoEntryPoints(void) {
    return &TARVO::entryPoints;
}

bool loadTarvoLibrary(IVaskString* message) {
    using namespace TARVO;
    return (library != nullptr || loadNewest(message)) && bindLoaded(message);
}

bool checkTarvoVersion(IVaskString* message) {
    using namespace TARVO;
    tarvo::String text;
    if (entryPoints.getTarvoVersion == nullptr || entryPoints.getTarvoVersion(text.pair()) != RC_OK)
        return true;
    const auto version = parseLibraryVersion(text.text());
    if (!version)
        return fail(message, u"Invalid version string");
    if (isNewEnough(*version))
        return true;
    const auto print = [](const LibraryVersion& which) {
        return number(which.major) + u"." + number(which.minor) + u"." + number(which.patch);
    };
    return fail(message, u"TARVO version (" + print(*version) +
                             u") is older than the version compiled for (" + print(kCompiledFor) +
                             u")");
}
