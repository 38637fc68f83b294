#include "registry/scope.h"

#include "core/environment.h"
#include "registry/registry_file.h"
#include "registry/registry_parser.h"
#include "tarvo/result.h"

#include <mutex>
#include <optional>
#include <utility>

namespace TARVO {

namespace {

// A scope's state for the life of the process. The tree's lock is taken before the path's.
struct Scope {
    std::mutex treeLock;
    tarvo::Reference<TarvoRegistry> root = TarvoRegistry::makeRoot();
    std::u16string id;

    std::mutex pathLock;
    std::u16string path;

    std::u16string writtenId; // by a commit; under the lock of all commits
};

Scope& scopeOf(bool allUsers) {
    static Scope machine;
    static Scope user;
    return allUsers ? machine : user;
}

Result emptyTree(tarvo::Reference<TarvoRegistry>& root, std::u16string& id, Result result) {
    root = TarvoRegistry::makeRoot();
    id.clear();
    return result;
}

} // namespace

std::u16string registryFilePath(bool allUsers) {
    Scope& scope = scopeOf(allUsers);
    const std::lock_guard lock(scope.pathLock);
    if (scope.path.empty()) {
        std::u16string folder = dataFolder(allUsers);
        if (!folder.empty())
            scope.path = std::move(folder.append(u"registry.dat"));
    }
    return scope.path;
}

Result refreshTree(const std::u16string& path, tarvo::Reference<TarvoRegistry>& root,
                   std::u16string& id) {
    if (path.empty())
        return emptyTree(root, id, RC_OK);
    platform::File file;
    if (const Result result = openRegistryShared(path, file); result != RC_OK || !file)
        return emptyTree(root, id, result);

    auto newRoot = TarvoRegistry::makeRoot();
    RegistryParser parser(newRoot, id);
    FileBytes bytes(file);
    const auto outcome = parseFile(bytes, parser);
    if (!outcome)
        return emptyTree(root, id, RC_UNSPECIFIED);
    if (outcome == ParseOutcome::complete) {
        root = std::move(newRoot);
        id = parser.idSeen() ? parser.id() : std::u16string();
    }
    return RC_OK;
}

Result loadScope(bool allUsers, const char16_t* path, tarvo::Reference<TarvoRegistry>& node) {
    node = nullptr;
    Scope& scope = scopeOf(allUsers);
    const std::lock_guard lock(scope.treeLock);
    const Result result = refreshTree(registryFilePath(allUsers), scope.root, scope.id);
    if (result == RC_OK)
        node = tarvo::Reference<TarvoRegistry>::share(findKey(scope.root.get(), path));
    return result;
}

Result loadScopes(const char16_t* path, tarvo::Reference<TarvoRegistry>& user,
                  tarvo::Reference<TarvoRegistry>& allUsers) {
    const Result result = loadScope(true, path, allUsers);
    return result == RC_OK ? loadScope(false, path, user) : result;
}

bool isMalformed(bool allUsers, platform::File& file) {
    Scope& scope = scopeOf(allUsers);
    std::u16string readId;
    {
        const std::lock_guard lock(scope.treeLock);
        readId = scope.id;
    }
    RegistryParser parser(TarvoRegistry::makeRoot(), {});
    FileBytes bytes(file);
    auto outcome = parsePiece(bytes, parser);
    const std::u16string& id = parser.id();
    if (!id.empty() && (id == scope.writtenId || id == readId))
        return false;
    if (outcome == ParseOutcome::complete)
        outcome = parseFile(bytes, parser);
    return outcome == ParseOutcome::malformed;
}

void noteWritten(bool allUsers, std::u16string_view id) {
    scopeOf(allUsers).writtenId = id;
}

} // namespace TARVO
