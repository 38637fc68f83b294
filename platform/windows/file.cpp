#include "platform/file.h"

#include "platform/windows/native_text.h"

#include <algorithm>

namespace TARVO::platform {
namespace {

// The system counts the bytes of one call in 32 bits.
constexpr std::size_t kLargestPiece = std::size_t{1} << 30;

FileError errorOf(DWORD code) {
    switch (code) {
    case ERROR_FILE_NOT_FOUND:
        return FileError::notFound;
    case ERROR_PATH_NOT_FOUND:
        return FileError::pathNotFound;
    case ERROR_ACCESS_DENIED:
        return FileError::accessDenied;
    case ERROR_SHARING_VIOLATION:
        return FileError::sharingViolation;
    case ERROR_FILE_EXISTS:
        return FileError::exists;
    default:
        return FileError::other;
    }
}

bool isAbsence(DWORD code) {
    switch (code) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME: // nothing can be called that
    case ERROR_BAD_PATHNAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
        return true;
    default:
        return false;
    }
}

HANDLE asHandle(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

// What identifies a file, whatever it is called.
std::optional<BY_HANDLE_FILE_INFORMATION> identityOf(std::u16string_view path) {
    // No access is asked for, so that nobody's hold on the file is in the way.
    const HANDLE handle = CreateFileW(nativeText(path).c_str(), 0,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    BY_HANDLE_FILE_INFORMATION information{};
    const bool known = GetFileInformationByHandle(handle, &information) != 0;
    CloseHandle(handle);
    return known ? std::optional{information} : std::nullopt;
}

} // namespace

struct FileAccess {
    static OpenedFile open(std::u16string_view path, DWORD access, DWORD sharing, DWORD disposition,
                           DWORD attributes) {
        const HANDLE handle = CreateFileW(nativeText(path).c_str(), access, sharing, nullptr,
                                          disposition, attributes, nullptr);
        if (handle == INVALID_HANDLE_VALUE) {
            return {File{}, errorOf(GetLastError())};
        }
        // Whether it is a file isn't asked: in a folder there is nothing else, and the answer takes
        // as long as the opening.
        return {File{reinterpret_cast<std::intptr_t>(handle)}, FileError::none};
    }
};

OpenedFile File::openForReading(std::u16string_view path) {
    return FileAccess::open(path, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN);
}

OpenedFile File::openExclusive(std::u16string_view path) {
    return FileAccess::open(path, GENERIC_READ | GENERIC_WRITE, 0, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL);
}

OpenedFile File::createExclusive(std::u16string_view path) {
    return FileAccess::open(path, GENERIC_READ | GENERIC_WRITE, 0, CREATE_NEW,
                            FILE_ATTRIBUTE_NORMAL);
}

void File::close() {
    if (handle_ != kClosed) {
        CloseHandle(asHandle(std::exchange(handle_, kClosed)));
    }
}

std::optional<std::size_t> File::read(std::span<char> buffer) {
    std::size_t done = 0;
    while (done < buffer.size()) {
        const auto wanted = static_cast<DWORD>(std::min(buffer.size() - done, kLargestPiece));
        DWORD count = 0;
        if (!ReadFile(asHandle(handle_), buffer.data() + done, wanted, &count, nullptr)) {
            return std::nullopt;
        }
        if (count == 0) {
            break;
        }
        done += count;
    }
    return done;
}

std::optional<std::size_t> File::write(std::span<const char> bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const auto wanted = static_cast<DWORD>(std::min(bytes.size() - done, kLargestPiece));
        DWORD count = 0;
        const bool written =
            WriteFile(asHandle(handle_), bytes.data() + done, wanted, &count, nullptr) != 0;
        done += count;
        if (!written && GetLastError() != ERROR_DISK_FULL) {
            return std::nullopt;
        }
        if (count < wanted) {
            break;
        }
    }
    return done;
}

std::optional<std::uint64_t> File::size() {
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(asHandle(handle_), &size)) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(size.QuadPart);
}

bool File::seekTo(std::uint64_t position) {
    LARGE_INTEGER distance{};
    distance.QuadPart = static_cast<LONGLONG>(position);
    return SetFilePointerEx(asHandle(handle_), distance, nullptr, FILE_BEGIN) != 0;
}

bool File::truncateHere() {
    return SetEndOfFile(asHandle(handle_)) != 0;
}

bool fileExists(std::u16string_view path) {
    return GetFileAttributesW(nativeText(path).c_str()) != INVALID_FILE_ATTRIBUTES ||
           !isAbsence(GetLastError());
}

bool copyFileOver(std::u16string_view from, std::u16string_view to) {
    const std::wstring target = nativeText(to);
    // The attributes go with the text, but the next copy is to go over this one.
    return CopyFileW(nativeText(from).c_str(), target.c_str(), FALSE) &&
           SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL);
}

bool removeFile(std::u16string_view path) {
    return DeleteFileW(nativeText(path).c_str()) != 0;
}

std::u16string longPath(std::u16string_view path) {
    // Wine puts the path into a buffer of its own, unasked whether it fits.
    constexpr std::size_t kWineBuffer = 1024;
    if (path.size() >= kWineBuffer)
        return std::u16string{path};
    const std::wstring name = nativeText(path);
    std::wstring longName(GetLongPathNameW(name.c_str(), nullptr, 0), L'\0');
    const DWORD length = longName.empty() ? 0
                                          : GetLongPathNameW(name.c_str(), longName.data(),
                                                             static_cast<DWORD>(longName.size()));
    if (length == 0 || length >= longName.size()) {
        return std::u16string{path};
    }
    return fromNativeText({longName.data(), length});
}

bool isSameFile(std::u16string_view one, std::u16string_view other) {
    const auto first = identityOf(one);
    const auto second = identityOf(other);
    return first && second && first->dwVolumeSerialNumber == second->dwVolumeSerialNumber &&
           first->nFileIndexHigh == second->nFileIndexHigh &&
           first->nFileIndexLow == second->nFileIndexLow;
}

} // namespace TARVO::platform
