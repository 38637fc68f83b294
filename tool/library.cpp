#include "tool/library.h"

#include "client/installation.h"
#include "client/named_library.h"
#include "platform/file.h"
#include "platform/module.h"
#include "tarvo/error.hpp"
#include "tarvo/text.hpp"
#include "tool/failure.h"
#include "tool/text.h"

#include <fmt/format.h>

namespace tool {

namespace {

const TarvoEntryPoints& bindBesideTool() {
    const std::u16string path = Library::pathBesideTool();
    tarvo::String message;
    if (!TARVO::loadNamedLibrary(path, message.pair()))
        throw Failure("the library beside this program can't be used: " + toUtf8(message.text()));
    return *tarvoEntryPoints();
}

const TarvoEntryPoints& bindNewest() {
    tarvo::String message;
    if (!loadTarvoLibrary(message.pair()))
        throw Failure(toUtf8(message.text()) + "; `tarvo setup check` tells what to do");
    return *tarvoEntryPoints();
}

const TarvoEntryPoints& bindAny() {
    if (TARVO::newestInstallation())
        return bindNewest();
    const std::u16string path = Library::pathBesideTool();
    if (!TARVO::platform::fileExists(path))
        throw Failure(fmt::format("TARVO not found: no installation is known, and there is no {}",
                                  toUtf8(path)));
    return bindBesideTool();
}

} // namespace

Library::Library() : Library(bindAny()) {}

Library Library::besideTool() {
    return Library(bindBesideTool());
}

std::u16string Library::pathBesideTool() {
    std::u16string path = TARVO::platform::ownModulePath();
    return path.erase(path.find_last_of(u"/\\") + 1).append(u"TARVO.dll");
}

std::string Library::text(TarvoResult (*function)(IVaskString*)) {
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
    return toUtf8(tarvo::textOfResult(code, *functions_.getErrorDescription));
}

void require(TarvoResult result, const std::string& attempt) {
    if (result != RC_OK)
        throw Failure(attempt, result);
}

} // namespace tool
