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

// What the front of a file tells of its id.
enum class FrontOfFile { unchanged, changed, notSeen };

// The first element of a file is its registry tag, and that bears the id. Each tag is whole or not
// there at all, so what a part of the file shows stands for the whole of it.
FrontOfFile lookAtFront(std::string_view front, std::u16string_view knownId) {
    MarkupScanner scanner(front);
    MarkupTag tag;
    while (scanner.next(tag)) {
        if (!tag.isElement)
            continue;
        RegistryParser parser(TarvoRegistry::makeRoot(), std::u16string(knownId));
        const auto end = static_cast<std::size_t>(scanner.rest().data() - front.data());
        return parser.parse(front.substr(0, end)) == ParseOutcome::unchanged
                   ? FrontOfFile::unchanged
                   : FrontOfFile::changed;
    }
    return FrontOfFile::notSeen;
}

// Reads a file whole, or only its front if that shows the known id. Nothing on a failed read.
std::optional<FrontOfFile> readIfChanged(FileBytes& bytes, std::u16string_view knownId) {
    FrontOfFile front = knownId.empty() ? FrontOfFile::changed : FrontOfFile::notSeen;
    for (std::size_t size = 4096; front == FrontOfFile::notSeen && !bytes.atEnd(); size *= 2) {
        if (!bytes.readUpTo(size))
            return std::nullopt;
        front = lookAtFront(bytes.view(), knownId);
    }
    if (front != FrontOfFile::unchanged && !bytes.readAll())
        return std::nullopt;
    return front;
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

    FileBytes bytes(file);
    const auto front = readIfChanged(bytes, id);
    file.close();
    if (!front)
        return emptyTree(root, id, RC_UNSPECIFIED);
    if (front == FrontOfFile::unchanged)
        return RC_OK;
    if (bytes.view().empty())
        return emptyTree(root, id, RC_OK);

    auto newRoot = TarvoRegistry::makeRoot();
    RegistryParser parser(newRoot, id);
    if (parser.parse(bytes.view()) == ParseOutcome::complete) {
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

bool isMalformed(bool allUsers, platform::File& file) {
    Scope& scope = scopeOf(allUsers);
    std::u16string readId;
    {
        const std::lock_guard lock(scope.treeLock);
        readId = scope.id;
    }
    FileBytes bytes(file);
    if (!bytes.readUpTo(4096))
        return false;
    for (const std::u16string& known : {scope.writtenId, readId})
        if (lookAtFront(bytes.view(), known) == FrontOfFile::unchanged)
            return false;
    return bytes.readAll() && RegistryParser(TarvoRegistry::makeRoot(), {}).parse(bytes.view()) !=
                                  ParseOutcome::complete;
}

void noteWritten(bool allUsers, std::u16string_view id) {
    scopeOf(allUsers).writtenId = id;
}

} // namespace TARVO
