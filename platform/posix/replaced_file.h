// Files that are never changed but replaced whole: who reads one gets all of an old text or all of
// a new one. Writers take turns by a lock on a second file beside it, because a lock on the file
// itself would go with it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace TARVO::platform {

// Tells whether a file is still the one that was read.
class FileState {
  public:
    FileState() = default;

    // Of what is at the path now.
    explicit FileState(const std::string& path);

    bool exists() const { return size_ >= 0; }

    // Is that the same text for certain? Never if the file was young when this was made: it could
    // have been replaced within one tick of the file system's clock.
    bool isStillThatOf(const FileState& now) const;

  private:
    std::int64_t size_ = -1;
    std::uint64_t device_ = 0;
    std::uint64_t file_ = 0;
    std::int64_t changed_ = 0; // nanoseconds
    bool isSettled_ = true;
};

// Holds the lock that writers of this file take, and waits for it. False if it can't be had.
class ReplacingLock {
  public:
    explicit ReplacingLock(const std::string& path);
    ReplacingLock(const ReplacingLock&) = delete;
    ReplacingLock& operator=(const ReplacingLock&) = delete;
    ~ReplacingLock();

    explicit operator bool() const { return descriptor_ >= 0; }

  private:
    int descriptor_;
};

// May this process replace the file, or make it?
bool mayReplaceFile(const std::string& path);

// The caller holds the lock. The owner and the rights of the file stay, as far as that is allowed.
// On failure the file is as it was.
bool replaceFile(const std::string& path, std::string_view text);

} // namespace TARVO::platform
