#include "registry/registry_file.h"

#include "platform/process.h"
#include "tarvo/result.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace TARVO {

namespace {

using platform::File;
using platform::FileError;
using platform::OpenedFile;

OpenedFile openWhenShared(OpenedFile (*open)(std::u16string_view), const std::u16string& path) {
    for (;;) {
        OpenedFile opened = open(path);
        if (opened.error != FileError::sharingViolation)
            return opened;
        platform::pauseFor(std::chrono::milliseconds(100));
    }
}

Result resultOf(FileError error) {
    switch (error) {
    case FileError::none:
        return RC_OK;
    case FileError::accessDenied:
        return RC_ACCESS_DENIED;
    default:
        return RC_UNSPECIFIED;
    }
}

bool isMissing(FileError error) {
    return error == FileError::notFound || error == FileError::pathNotFound;
}

} // namespace

Result openRegistryShared(const std::u16string& path, File& file) {
    OpenedFile opened = openWhenShared(&File::openForReading, path);
    file = std::move(opened.file);
    return isMissing(opened.error) ? RC_OK : resultOf(opened.error);
}

Result openRegistryExclusive(const std::u16string& path, File& file) {
    for (;;) {
        OpenedFile opened = openWhenShared(&File::openExclusive, path);
        if (isMissing(opened.error))
            opened = openWhenShared(&File::createExclusive, path);
        if (opened.error == FileError::exists)
            continue; // another process was faster
        file = std::move(opened.file);
        return opened.error == FileError::pathNotFound ? RC_OK : resultOf(opened.error);
    }
}

bool isCutOff(std::string_view tail) {
    return tail.rfind("</registry") == std::string_view::npos;
}

bool FileBytes::readUpTo(std::size_t size) {
    auto bytes = std::make_unique_for_overwrite<char[]>(size);
    std::copy_n(bytes_.get(), size_, bytes.get());
    bytes_ = std::move(bytes);
    const auto read = file_.read({bytes_.get() + size_, size - size_});
    size_ += read.value_or(0);
    atEnd_ = size_ < size;
    return read.has_value();
}

// One byte more than the file should have shows its end.
bool FileBytes::readAll() {
    for (std::size_t size = file_.size().value_or(0) + 1; !atEnd_; size *= 2)
        if (!readUpTo(std::max(size, size_ + 1)))
            return false;
    return true;
}

} // namespace TARVO
