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

// The first piece is small, since it is all that an unchanged file is read of. The others are as
// big as stays in a fast cache. An element that is longer is tried again with twice the bytes each
// time.
bool FileBytes::readOn() {
    constexpr std::size_t kFirstPiece = 4096;
    constexpr std::size_t kPiece = 64 * 1024;
    const std::string_view kept = view();
    const std::size_t size = capacity_ == 0 ? kFirstPiece : std::max(kPiece, 2 * kept.size());
    if (size > capacity_) {
        auto bytes = std::make_unique_for_overwrite<char[]>(size);
        std::ranges::copy(kept, bytes.get());
        bytes_ = std::move(bytes);
        capacity_ = size;
    } else {
        std::ranges::copy(kept, bytes_.get());
    }
    begin_ = 0;
    end_ = kept.size();
    const auto read = file_.read({bytes_.get() + end_, size - end_});
    end_ += read.value_or(0);
    atEnd_ = end_ < size;
    return read.has_value();
}

bool FileBytes::readAll() {
    while (!atEnd_)
        if (!readOn())
            return false;
    return true;
}

std::optional<ParseOutcome> parsePiece(FileBytes& bytes, RegistryParser& parser) {
    if (!bytes.readOn())
        return std::nullopt;
    const std::size_t taken = parser.taken();
    const ParseOutcome outcome = parser.parse(bytes.view());
    bytes.drop(parser.taken() - taken);
    return outcome;
}

std::optional<ParseOutcome> parseFile(FileBytes& bytes, RegistryParser& parser) {
    std::optional outcome = ParseOutcome::complete;
    while (outcome == ParseOutcome::complete && !bytes.atEnd())
        outcome = parsePiece(bytes, parser);
    return outcome;
}

} // namespace TARVO
