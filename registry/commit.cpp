// How changes reach the file: everything that can fail is done before the file is touched, and the
// state before is kept in a copy beside it. The exclusive hold on the file lasts from before it is
// read until it is written, so that no other commit can fall between.
#include "core/patience.h"
#include "core/uuid.h"
#include "registry/registry_edits.h"
#include "registry/registry_parser.h"
#include "registry/registry_text.h"
#include "registry/scope.h"

#include <algorithm>
#include <array>

namespace TARVO {

namespace {

// Whether a file is no state to be kept: a new one, or what is left of a commit that was killed or
// ran out of room.
bool isUnfinished(bool allUsers, platform::File& file) {
    constexpr std::size_t kTail = 4096;
    std::array<char, kTail> tail{};
    const std::uint64_t size = file.size().value_or(0);
    if (!file.seekTo(size - std::min<std::uint64_t>(size, kTail)))
        return false;
    const std::size_t read = file.read(tail).value_or(0);
    return isCutOff({tail.data(), read}) || (file.seekTo(0) && isMalformed(allUsers, file));
}

// Puts the backup aside before a damaged file takes its place. Nothing to do if there is none, or
// if it is no better.
bool keepAside(bool allUsers, const std::u16string& backup, const std::u16string& aside) {
    platform::OpenedFile opened = platform::File::openForReading(backup);
    if (!opened.file)
        return opened.error == platform::FileError::notFound;
    return isUnfinished(allUsers, opened.file) || platform::copyFileOver(backup, aside);
}

bool tryToBackUp(bool allUsers, const std::u16string& path) {
    platform::OpenedFile opened = platform::File::openForReading(path);
    if (!opened.file)
        return false;
    const std::u16string backup = path + kBackupSuffix;
    if (isUnfinished(allUsers, opened.file) &&
        !keepAside(allUsers, backup, path + kWholeBackupSuffix))
        return false;
    return platform::copyFileOver(path, backup);
}

// Whatever comes of the writing, nothing of a longer text before may stay behind the new one.
Result overwrite(platform::File& file, const std::string& text) {
    if (!file.seekTo(0))
        return RC_UNSPECIFIED;
    const auto written = file.write({text.data(), text.size()});
    const bool cut = file.truncateHere();
    return written == text.size() && cut ? RC_OK : RC_UNSPECIFIED;
}

} // namespace

bool RegistryEdits::backUp(const std::u16string& path) {
    return !platform::fileExists(path) ||
           tryPatiently([&] { return tryToBackUp(allUsers(), path); });
}

Result RegistryEdits::mergeInto(const std::u16string& path, const Addition& add) {
    platform::File file;
    if (const Result result = openRegistryExclusive(path, file); result != RC_OK)
        return result;
    return mergeInto(file, add);
}

// Reads the file as it is now, replays the changes on it and writes it under a new id.
Result RegistryEdits::mergeInto(platform::File& file, const Addition& add) {
    state_->beginEdition();
    auto root = TarvoRegistry::makeRoot(state_->edition);
    RegistryParser parser(root, {});
    FileBytes bytes(file);
    const auto outcome = parseFile(bytes, parser);
    if (!outcome)
        return RC_UNSPECIFIED;
    if (outcome != ParseOutcome::complete)
        return RC_BAD_REGISTRY_FILE;
    if (!workingRoot_)
        workingRoot_ = rootKeyWriter_->node();
    rootKeyWriter_->replayOn(root);
    add(*rootKeyWriter_);
    const UUIDText id(newUUID());
    const Result result = overwrite(file, registryText(*rootKeyWriter_->node(), id.view()));
    if (result == RC_OK)
        noteWritten(state_->allUsers, id.view());
    return result;
}

} // namespace TARVO
