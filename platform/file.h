// Files as the registry needs them: one reader among readers, or one writer alone, and the kinds of
// failure that its rules tell apart. The sharing modes are the lock between processes, so a refused
// open is an ordinary outcome and comes back as a value; only a lack of memory raises.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace TARVO::platform {

enum class FileError {
    none,
    notFound,         // the folder is there, the file isn't
    pathNotFound,     // the folder isn't there
    accessDenied,     // no right to it, or a folder bears the name
    sharingViolation, // held by somebody whose sharing mode excludes this one; worth another try
    exists,
    other, // on Linux a device, pipe or socket too, so that it is never waited for
};

struct OpenedFile;

// An open file and the hold on it; closed with the object. One thread at a time.
class File {
  public:
    // An existing file, to read it from front to back. Other readers are allowed, no writer.
    static OpenedFile openForReading(std::u16string_view path);

    // An existing file, to read and write it. Nobody else is allowed.
    static OpenedFile openExclusive(std::u16string_view path);

    // The same for a new file; `exists` if the name is taken. For a moment the new file may stand
    // there unheld: if somebody else takes hold of it then, the result is `sharingViolation` and
    // the file stays, empty.
    static OpenedFile createExclusive(std::u16string_view path);

    File() = default;
    File(File&& other) noexcept : handle_{std::exchange(other.handle_, kClosed)} {}
    File& operator=(File other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~File() { close(); }

    explicit operator bool() const { return handle_ != kClosed; }
    void close();

    // Reads from the current position. Gives the number of bytes read, fewer than asked for at the
    // end of the file alone and 0 behind it; nothing on failure.
    std::optional<std::size_t> read(std::span<char> buffer);

    // Writes at the current position. Gives the number of bytes written, fewer than passed if the
    // disk is full; nothing on another failure.
    std::optional<std::size_t> write(std::span<const char> bytes);

    std::optional<std::uint64_t> size();
    bool seekTo(std::uint64_t position);

    // Cuts the file at the current position.
    bool truncateHere();

  private:
    static constexpr std::intptr_t kClosed = -1;

    explicit File(std::intptr_t handle) : handle_{handle} {}

    std::intptr_t handle_ = kClosed; // the system's own handle or descriptor

    friend struct FileAccess; // makes files in the system's own way
};

// `file` is open exactly if `error` is `none`.
struct OpenedFile {
    File file;
    FileError error = FileError::none;
};

// Does anything bear this name? A folder counts, and so does what can't be told for want of rights.
bool fileExists(std::u16string_view path);

// Copies a file, over the target if there is one; a copy can be written, even of a source that
// can't. Fails while a writer holds the source or anybody holds the target, and for a target that
// is the source. After a failure the target may hold any part of the text.
bool copyFileOver(std::u16string_view from, std::u16string_view to);

// Removes a file, not a folder. False also if there was none.
bool removeFile(std::u16string_view path);

// The path with the long names of all its components, where the system has short ones beside them;
// as it is if it isn't there.
std::u16string longPath(std::u16string_view path);

// Are both there, and one and the same, however they are spelled?
bool isSameFile(std::u16string_view one, std::u16string_view other);

} // namespace TARVO::platform
