// Sharing modes are locks on the open file: a reader's is shared, a writer's is not. They bind only
// those who open through here, in this process and in others.
#include "platform/file.h"

#include "platform/posix/mode.h"
#include "platform/posix/path.h"
#include "platform/posix/uninterrupted.h"

#include <array>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TARVO::platform {
namespace {

FileError errorOf(int code) {
    switch (code) {
    case ENOENT:
        return FileError::notFound;
    case ENOTDIR:
        return FileError::pathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return FileError::accessDenied;
    case EWOULDBLOCK:
    case ETXTBSY:
        return FileError::sharingViolation;
    case EEXIST:
        return FileError::exists;
    default:
        return FileError::other;
    }
}

bool isAbsence(int code) {
    return code == ENOENT || code == ENOTDIR || code == ENAMETOOLONG;
}

int descriptorOf(std::intptr_t handle) {
    return static_cast<int>(handle);
}

int openPath(const char* path, int flags, mode_t mode = kFileMode) {
    // Not blocking: a pipe would have us wait for its other end.
    return uninterrupted(
        [=] { return open(path, flags | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, mode); });
}

std::optional<struct stat> statusOf(std::u16string_view path) {
    struct stat status;
    if (onPath(nativePath(path), [&](const char* name) { return stat(name, &status); }) != 0) {
        return std::nullopt;
    }
    return status;
}

bool isDanglingLink(const std::string& path) {
    struct stat status;
    return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode) &&
           stat(path.c_str(), &status) != 0;
}

} // namespace

struct FileAccess {
    // Takes the descriptor over and holds the file in the way asked for.
    static OpenedFile hold(int descriptor, int lock) {
        if (descriptor < 0) {
            return {File{}, errorOf(errno)};
        }
        File file{descriptor};
        struct stat status;
        if (fstat(descriptor, &status) != 0) {
            return {File{}, FileError::other};
        }
        if (!S_ISREG(status.st_mode)) {
            return {File{}, S_ISDIR(status.st_mode) ? FileError::accessDenied : FileError::other};
        }
        if (uninterrupted([=] { return flock(descriptor, lock | LOCK_NB); }) != 0) {
            return {File{}, errorOf(errno)};
        }
        return {std::move(file), FileError::none};
    }

    static OpenedFile openExisting(std::u16string_view path, int flags, int lock) {
        const auto open = [=](const char* name) {
            return openPath(name, flags);
        };
        return hold(onPath(nativePath(path), open), lock);
    }
};

OpenedFile File::openForReading(std::u16string_view path) {
    return FileAccess::openExisting(path, O_RDONLY, LOCK_SH);
}

OpenedFile File::openExclusive(std::u16string_view path) {
    return FileAccess::openExisting(path, O_RDWR, LOCK_EX);
}

OpenedFile File::createExclusive(std::u16string_view path) {
    const FoundPath place = findPath(nativePath(path));
    if (!place.folderFound) {
        return {File{}, FileError::pathNotFound};
    }
    if (isDanglingLink(place.path)) {
        // The name is taken, but by nothing that could be opened instead.
        return {File{}, FileError::other};
    }
    if (place.found) {
        return {File{}, FileError::exists};
    }
    return FileAccess::hold(openPath(place.path.c_str(), O_RDWR | O_CREAT | O_EXCL), LOCK_EX);
}

void File::close() {
    if (handle_ != kClosed) {
        ::close(descriptorOf(std::exchange(handle_, kClosed)));
    }
}

std::optional<std::size_t> File::read(std::span<char> buffer) {
    std::size_t done = 0;
    while (done < buffer.size()) {
        const ssize_t count = uninterrupted([&] {
            return ::read(descriptorOf(handle_), buffer.data() + done, buffer.size() - done);
        });
        if (count < 0) {
            return std::nullopt;
        }
        if (count == 0) {
            break;
        }
        done += static_cast<std::size_t>(count);
    }
    return done;
}

std::optional<std::size_t> File::write(std::span<const char> bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = uninterrupted([&] {
            return ::write(descriptorOf(handle_), bytes.data() + done, bytes.size() - done);
        });
        if (count < 0) {
            const bool isFull = errno == ENOSPC || errno == EDQUOT || errno == EFBIG;
            return isFull ? std::optional{done} : std::nullopt;
        }
        done += static_cast<std::size_t>(count);
    }
    return done;
}

std::optional<std::uint64_t> File::size() {
    struct stat status;
    if (fstat(descriptorOf(handle_), &status) != 0) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(status.st_size);
}

bool File::seekTo(std::uint64_t position) {
    return lseek(descriptorOf(handle_), static_cast<off_t>(position), SEEK_SET) >= 0;
}

bool File::truncateHere() {
    const int descriptor = descriptorOf(handle_);
    const off_t here = lseek(descriptor, 0, SEEK_CUR);
    return here >= 0 && uninterrupted([=] { return ftruncate(descriptor, here); }) == 0;
}

bool fileExists(std::u16string_view path) {
    return statusOf(path) || !isAbsence(errno);
}

bool copyFileOver(std::u16string_view from, std::u16string_view to) {
    File source = File::openForReading(from).file;
    const auto status = statusOf(from);
    if (!source || !status) {
        return false;
    }
    // Not emptied at the opening: it could be the source, and is then refused by its own lock. The
    // rights go with the text, or a copy could be read by more people than the source; but the next
    // copy is to go over this one.
    const std::string path = findPath(nativePath(to)).path;
    const mode_t mode = (status->st_mode & kFileMode) | S_IWUSR;
    File target = FileAccess::hold(openPath(path.c_str(), O_WRONLY | O_CREAT, mode), LOCK_EX).file;
    if (!target) {
        return false;
    }
    std::array<char, 16 * 1024> buffer;
    for (;;) {
        const auto count = source.read(buffer);
        if (!count) {
            return false;
        }
        if (*count == 0) {
            return target.truncateHere();
        }
        if (target.write({buffer.data(), *count}) != *count) {
            return false;
        }
    }
}

bool removeFile(std::u16string_view path) {
    return onPath(nativePath(path), [](const char* name) { return unlink(name); }) == 0;
}

std::u16string longPath(std::u16string_view path) {
    return std::u16string{path};
}

bool isSameFile(std::u16string_view one, std::u16string_view other) {
    const auto first = statusOf(one);
    const auto second = statusOf(other);
    return first && second && first->st_dev == second->st_dev && first->st_ino == second->st_ino;
}

} // namespace TARVO::platform
