#include "tool/commands.h"
#include "tool/failure.h"
#include "tool/key_source.h"
#include "tool/library.h"
#include "tool/output.h"
#include "tool/registry_file.h"
#include "tool/text.h"
#include "tool/tree_text.h"

#include <cstdio>

namespace tool {

namespace {

// Where the library itself looks for a scope's file. It passes over a malformed one in silence.
void warnIfMalformed(const Library& library, bool allUsers) {
    const std::u16string path = library.registryPath(allUsers);
    const RegistryFile file = readRegistryFile(path);
    if (file.fault)
        printError("tarvo: warning: {}; what this file holds is not shown\n",
                   describeFault(path, *file.fault));
}

std::unique_ptr<KeySource> openBothScopes(const Library& library, const std::u16string& path) {
    warnIfMalformed(library, true);
    warnIfMalformed(library, false);
    return openMergedKey(library, path);
}

} // namespace

void showRegistry(const std::string& path, Scope scope, bool asJson) {
    const Library library;
    auto key = scope == Scope::all ? openBothScopes(library, toUtf16(path))
                                   : openScopeKey(library, scope == Scope::machine, toUtf16(path));
    const std::string text = asJson ? treeAsJson(std::move(key)) : treeAsText(std::move(key));
    printOut("{}", text);
}

bool verifyRegistryFile(const std::string& path) {
    const std::u16string filePath = toUtf16(path);
    const RegistryFile file = readRegistryFile(filePath);
    if (!file.isThere)
        throw Failure("cannot read " + path, RC_NOT_FOUND);
    if (file.fault) {
        printOut("{}\n", printable(describeFault(filePath, *file.fault)));
        return false;
    }
    printOut("{}: {}\n", printable(path), describeContent(file));
    return !file.isCutOff;
}

} // namespace tool
