// A writer's commit: the one moment at which anything reaches the file. Everything that can fail is
// done before the file is touched, and the state before is kept in a copy beside it. The exclusive
// hold on the file lasts from before it is read until it is written, so that no other commit can
// fall between.
#include "core/uuid.h"
#include "platform/process.h"
#include "registry/registry_parser.h"
#include "registry/registry_text.h"
#include "registry/registry_writer.h"
#include "registry/scope.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <mutex>

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

// The copy of the last good state is not given up for such a file.
bool tryToBackUp(bool allUsers, const std::u16string& path) {
    platform::OpenedFile opened = platform::File::openForReading(path);
    return opened.file &&
           (isUnfinished(allUsers, opened.file) || platform::copyFileOver(path, path + u".backup"));
}

// An attempt fails while somebody writes the file, and nobody does so for long.
bool backUp(bool allUsers, const std::u16string& path) {
    if (!platform::fileExists(path))
        return true;
    constexpr int kAttempts = 100;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        if (tryToBackUp(allUsers, path))
            return true;
        platform::pauseFor(std::chrono::milliseconds(100));
    }
    return false;
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

Result TarvoRegistryWriter::commit() {
    static std::mutex commits; // of both scopes
    const std::lock_guard lock(commits);

    const std::u16string path = registryFilePath(state_->allUsers);
    if (path.empty() || !backUp(state_->allUsers, path))
        return RC_NO_DATA_FOLDER;
    if (const Result result = stageLibraryFiles(); result != RC_OK)
        return result;
    {
        platform::File file;
        if (const Result result = openRegistryExclusive(path, file); result != RC_OK)
            return result;
        if (const Result result = mergeInto(file); result != RC_OK)
            return result;
    }
    retireLibraryFiles();
    emptyTables();
    return RC_OK;
}

// Reads the file as it is now, replays the changes on it and writes it under a new id.
Result TarvoRegistryWriter::mergeInto(platform::File& file) {
    FileBytes bytes(file);
    if (!bytes.readAll())
        return RC_UNSPECIFIED;
    state_->beginEdition();
    auto root = TarvoRegistry::makeRoot(state_->edition);
    if (RegistryParser(root, {}).parse(bytes.view()) != ParseOutcome::complete)
        return RC_BAD_REGISTRY_FILE;
    if (!workingRoot_)
        workingRoot_ = rootKeyWriter_->node();
    rootKeyWriter_->replayOn(root);
    if (const Result result = registerPMCs(); result != RC_OK)
        return result;
    const UUIDText id(newUUID());
    const Result result = overwrite(file, registryText(*rootKeyWriter_->node(), id.view()));
    if (result == RC_OK)
        noteWritten(state_->allUsers, id.view());
    return result;
}

// ---- the places of components and type libraries in a commit ----

Result TarvoRegistryWriter::stageLibraryFiles() {
    return RC_OK;
}
Result TarvoRegistryWriter::registerPMCs() {
    return RC_OK;
}
void TarvoRegistryWriter::retireLibraryFiles() {}
void TarvoRegistryWriter::emptyTables() {}

Result TarvoRegistryWriter::createPMCRegistrar(IVaskPMCRegistrar** registrar) {
    if (registrar == nullptr)
        return RC_NULL_POINTER;
    *registrar = nullptr;
    return RC_UNSPECIFIED;
}
Result TarvoRegistryWriter::unregisterPMC(const UUID*) {
    return RC_UNSPECIFIED;
}
Result TarvoRegistryWriter::unregisterPMCLocation(const UUID*, std::int32_t) {
    return RC_UNSPECIFIED;
}
Result TarvoRegistryWriter::registerLibrary(const char16_t*) {
    return RC_UNSPECIFIED;
}
Result TarvoRegistryWriter::unregisterLibrary(const UUID*) {
    return RC_UNSPECIFIED;
}
Result TarvoRegistryWriter::setLibraryLocation(const UUID*, std::uint32_t, const char16_t*) {
    return RC_UNSPECIFIED;
}
Result TarvoRegistryWriter::removeLibraryLocation(const UUID*, std::uint32_t) {
    return RC_UNSPECIFIED;
}

} // namespace TARVO
