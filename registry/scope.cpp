#include "registry/scope.h"

#include "core/environment.h"
#include "platform/file.h"
#include "platform/process.h"
#include "registry/registry_parser.h"
#include "tarvo/result.h"

#include <algorithm>
#include <memory>
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
};

Scope& scopeOf(bool allUsers) {
    static Scope machine;
    static Scope user;
    return allUsers ? machine : user;
}

platform::OpenedFile openWhenReaderMay(const std::u16string& path) {
    for (;;) {
        platform::OpenedFile opened = platform::File::openForReading(path);
        if (opened.error != platform::FileError::sharingViolation)
            return opened;
        platform::pauseFor(std::chrono::milliseconds(100));
    }
}

Result resultOfOpening(platform::FileError error) {
    switch (error) {
    case platform::FileError::notFound:
    case platform::FileError::pathNotFound:
        return RC_OK; // an empty scope
    case platform::FileError::accessDenied:
        return RC_ACCESS_DENIED;
    default:
        return RC_UNSPECIFIED;
    }
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

// The bytes of a file, as far as they have been read. Room for them isn't cleared before.
class FileBytes {
  public:
    explicit FileBytes(platform::File& file) : file_(file) {}

    std::string_view view() const { return {bytes_.get(), size_}; }
    bool atEnd() const { return atEnd_; }

    // Reads on until `size` bytes are there or the file ends. False on a failed read.
    bool readUpTo(std::size_t size) {
        auto bytes = std::make_unique_for_overwrite<char[]>(size);
        std::copy_n(bytes_.get(), size_, bytes.get());
        bytes_ = std::move(bytes);
        const auto read = file_.read({bytes_.get() + size_, size - size_});
        size_ += read.value_or(0);
        atEnd_ = size_ < size;
        return read.has_value();
    }

  private:
    platform::File& file_;
    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
    bool atEnd_ = false;
};

// Reads a file whole, or only its front if that shows the known id. Nothing on a failed read.
std::optional<FrontOfFile> readIfChanged(platform::File& file, std::u16string_view knownId,
                                         FileBytes& bytes) {
    constexpr std::size_t kFirstRead = 4096;
    FrontOfFile front = knownId.empty() ? FrontOfFile::changed : FrontOfFile::notSeen;
    for (std::size_t size = kFirstRead; !bytes.atEnd(); size *= 2) {
        if (front == FrontOfFile::changed) // one byte more than there should be shows the end
            size = std::max<std::size_t>(size, file.size().value_or(0) + 1);
        if (!bytes.readUpTo(size))
            return std::nullopt;
        if (front == FrontOfFile::notSeen)
            front = lookAtFront(bytes.view(), knownId);
        if (front == FrontOfFile::unchanged)
            return front;
    }
    return FrontOfFile::changed;
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
    platform::OpenedFile opened = openWhenReaderMay(path);
    if (opened.error != platform::FileError::none)
        return emptyTree(root, id, resultOfOpening(opened.error));

    FileBytes bytes(opened.file);
    const auto read = readIfChanged(opened.file, id, bytes);
    opened.file.close();
    if (!read)
        return emptyTree(root, id, RC_UNSPECIFIED);
    if (read == FrontOfFile::unchanged)
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

} // namespace TARVO
