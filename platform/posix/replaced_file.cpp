#include "platform/posix/replaced_file.h"

#include "platform/posix/mode.h"
#include "platform/posix/uninterrupted.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace TARVO::platform {
namespace {

// More than a tick of the clock that files get their times from.
constexpr std::chrono::nanoseconds kTick = std::chrono::milliseconds{50};

bool isWritable(const std::string& path) {
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

bool isWritableIfThere(const std::string& path) {
    return isWritable(path) || errno == ENOENT;
}

std::string lockOf(const std::string& path) {
    return path + ".lock";
}

bool writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count =
            uninterrupted([&] { return write(descriptor, text.data(), text.size()); });
        if (count <= 0) {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool takeRightsOf(const std::string& path, int descriptor) {
    struct stat status;
    if (stat(path.c_str(), &status) != 0) {
        return errno == ENOENT;
    }
    if (status.st_uid != geteuid() && fchown(descriptor, status.st_uid, status.st_gid) != 0) {
        // Only a superuser can give a file back to its owner; for others it is theirs from now on.
        return errno == EPERM && fchmod(descriptor, status.st_mode & kFileMode) == 0;
    }
    return fchmod(descriptor, status.st_mode & kFileMode) == 0;
}

} // namespace

FileState::FileState(const std::string& path) {
    struct stat status;
    if (stat(path.c_str(), &status) != 0) {
        return;
    }
    const std::chrono::nanoseconds changed = std::chrono::seconds{status.st_ctim.tv_sec} +
                                             std::chrono::nanoseconds{status.st_ctim.tv_nsec};
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    size_ = status.st_size;
    device_ = status.st_dev;
    file_ = status.st_ino;
    changed_ = changed.count();
    isSettled_ = std::chrono::abs(now - changed) > kTick;
}

bool FileState::isStillThatOf(const FileState& now) const {
    return isSettled_ && size_ == now.size_ && device_ == now.device_ && file_ == now.file_ &&
           changed_ == now.changed_;
}

ReplacingLock::ReplacingLock(const std::string& path) {
    const std::string name = lockOf(path);
    descriptor_ = uninterrupted([&] {
        return open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NOFOLLOW, kFileMode);
    });
    if (descriptor_ >= 0 && uninterrupted([&] { return flock(descriptor_, LOCK_EX); }) != 0) {
        close(std::exchange(descriptor_, -1));
    }
}

ReplacingLock::~ReplacingLock() {
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

bool mayReplaceFile(const std::string& path) {
    return isWritable(path.substr(0, path.rfind('/'))) && isWritableIfThere(path) &&
           isWritableIfThere(lockOf(path));
}

bool replaceFile(const std::string& path, std::string_view text) {
    const std::string draft = path + ".new";
    unlink(draft.c_str()); // a process may have ended while it wrote one
    const int descriptor = uninterrupted(
        [&] { return open(draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kFileMode); });
    if (descriptor < 0) {
        return false;
    }
    // The text is on the disk before it bears the name, so that a crash of the system tears
    // nothing.
    const bool isWritten =
        takeRightsOf(path, descriptor) && writeAll(descriptor, text) && fsync(descriptor) == 0;
    close(descriptor);
    if (isWritten && std::rename(draft.c_str(), path.c_str()) == 0) {
        return true;
    }
    unlink(draft.c_str());
    return false;
}

} // namespace TARVO::platform
