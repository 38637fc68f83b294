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

#include <chrono>
#include <mutex>

namespace TARVO {

namespace {

// A copy fails while somebody writes the file; nobody does so for long.
bool copyPatiently(const std::u16string& from, const std::u16string& to) {
    constexpr int kAttempts = 100;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        if (platform::copyFileOver(from, to))
            return true;
        platform::pauseFor(std::chrono::milliseconds(100));
    }
    return false;
}

// A malformed file can be what a commit left behind that was cut off. The commit won't go on from
// it, and the copy of the last good state must not be lost for it.
bool backUp(bool allUsers, const std::u16string& path) {
    if (!platform::fileExists(path) || isMalformed(allUsers, path))
        return true;
    return copyPatiently(path, path + u".backup");
}

// Whatever comes of the writing, nothing of a longer text before may stay behind the new one.
Result overwrite(platform::File& file, const std::string& text) {
    if (!file.seekToStart())
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
