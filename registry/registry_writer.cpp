#include "registry/registry_writer.h"

#include "platform/process.h"
#include "registry/scope.h"
#include "registry/writer_names.h"

#include <mutex>

namespace TARVO {

constinit const IVaskRegistryWriterTable TarvoRegistryWriter::kTable = {
    .addReference = slot<TarvoRegistryWriter, &TarvoRegistryWriter::addReference>,
    .release = slot<TarvoRegistryWriter, &TarvoRegistryWriter::release>,
    .getKeyWriter = slot<TarvoRegistryWriter, &TarvoRegistryWriter::getKeyWriter>,
    .getKey = slot<TarvoRegistryWriter, &TarvoRegistryWriter::getKey>,
    .deleteKey = slot<TarvoRegistryWriter, &TarvoRegistryWriter::deleteKey>,
    .deleteValue = slot<TarvoRegistryWriter, &TarvoRegistryWriter::deleteValue>,
    .createPMCRegistrar = slot<TarvoRegistryWriter, &TarvoRegistryWriter::createPMCRegistrar>,
    .unregisterPMC = slot<TarvoRegistryWriter, &TarvoRegistryWriter::unregisterPMC>,
    .unregisterPMCLocation = slot<TarvoRegistryWriter, &TarvoRegistryWriter::unregisterPMCLocation>,
    .revert = slot<TarvoRegistryWriter, &TarvoRegistryWriter::revert>,
    .commit = slot<TarvoRegistryWriter, &TarvoRegistryWriter::commit>,
    .registerLibrary = slot<TarvoRegistryWriter, &TarvoRegistryWriter::registerLibrary>,
    .unregisterLibrary = slot<TarvoRegistryWriter, &TarvoRegistryWriter::unregisterLibrary>,
    .setLibraryLocation = slot<TarvoRegistryWriter, &TarvoRegistryWriter::setLibraryLocation>,
    .removeLibraryLocation = slot<TarvoRegistryWriter, &TarvoRegistryWriter::removeLibraryLocation>,
};

TarvoRegistryWriter::TarvoRegistryWriter(bool allUsers, Reference<TarvoRegistry> originalRoot)
    : TarvoBaseImpl(&kTable), originalRoot_(std::move(originalRoot)),
      state_(std::make_shared<EditState>(allUsers)) {
    makeRootKeyWriter();
}

void TarvoRegistryWriter::makeRootKeyWriter() {
    rootKeyWriter_ = makeObject<TarvoRegistryKeyWriter>(state_, originalRoot_, nullptr);
}

Reference<TarvoRegistry> TarvoRegistryWriter::shownRoot() const {
    return workingRoot_ ? workingRoot_ : rootKeyWriter_->node();
}

// A null path is the root where a path isn't required.
Result TarvoRegistryWriter::getKeyWriter(const char16_t* path, IVaskRegistryKeyWriter** key) {
    if (key == nullptr)
        return RC_NULL_POINTER;
    *key = nullptr;
    std::u16string_view below = path == nullptr ? u"" : path;
    if (const Result result = takeAbsolutePath(below); result != RC_OK)
        return result;
    if (!below.empty())
        return rootKeyWriter_->createKey(below.data(), key);
    handOut(rootKeyWriter_, key);
    return RC_OK;
}

Result TarvoRegistryWriter::getKey(const char16_t* path, IVaskRegistryKey** key) {
    if (key == nullptr)
        return RC_NULL_POINTER;
    *key = nullptr;
    std::u16string_view below = path == nullptr ? u"" : path;
    if (const Result result = takeAbsolutePath(below); result != RC_OK)
        return result;
    state_->beginEdition(); // the key shows the state of now, whatever is changed later
    const Reference<TarvoRegistry> root = shownRoot();
    auto node = Reference<TarvoRegistry>::share(
        findKey(root.get(), below.empty() ? nullptr : below.data()));
    if (!node)
        return RC_NOT_FOUND;
    if (state_->allUsers)
        giveKey(nullptr, std::move(node), key);
    else
        giveKey(std::move(node), nullptr, key);
    return RC_OK;
}

Result TarvoRegistryWriter::deleteKey(const char16_t* path) {
    if (path == nullptr)
        return RC_NULL_POINTER;
    std::u16string_view below = path;
    if (const Result result = takeAbsolutePath(below); result != RC_OK)
        return result;
    return below.empty() ? Result{RC_ACCESS_DENIED} : rootKeyWriter_->deleteKey(below.data());
}

Result TarvoRegistryWriter::deleteValue(const char16_t* path, const char16_t* name) {
    if (path == nullptr)
        return RC_NULL_POINTER;
    std::u16string_view below = path;
    if (const Result result = takeAbsolutePath(below); result != RC_OK)
        return result;
    return rootKeyWriter_->deleteValue(below.data(), name);
}

Result TarvoRegistryWriter::revert() {
    makeRootKeyWriter();
    workingRoot_ = nullptr;
    return RC_OK;
}

namespace {

// Proves that the file can be written, and makes it if it is missing. One thread at a time tries.
Result openOnce(bool allUsers) {
    static std::mutex creation;
    const std::lock_guard lock(creation);
    platform::File file;
    return openRegistryExclusive(registryFilePath(allUsers), file);
}

Result makeWriter(bool allUsers, IVaskRegistryWriter** writer) {
    if (writer == nullptr)
        return RC_NULL_POINTER;
    *writer = nullptr;
    if (allUsers && !platform::isElevated())
        return RC_ACCESS_DENIED;
    if (allUsers)
        if (const Result result = openOnce(allUsers); result != RC_OK)
            return result;
    Reference<TarvoRegistry> root;
    if (const Result result = loadScope(allUsers, nullptr, root); result != RC_OK)
        return result;
    handOut(makeObject<TarvoRegistryWriter>(allUsers, std::move(root)), writer);
    return RC_OK;
}

} // namespace

} // namespace TARVO

TarvoResult vaskGetRegistryWriter(uint8_t allUsers, IVaskRegistryWriter** writer) {
    return TARVO::guardedCall([&] { return TARVO::makeWriter(allUsers != 0, writer); });
}
