#include "writer/registry_writer.h"

#include "catalogue/pmc_registrar.h"
#include "platform/process.h"
#include "registry/scope.h"

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
    : TarvoBaseImpl(&kTable), keys_(allUsers, std::move(originalRoot)), components_(keys_),
      libraries_(allUsers) {}

Result TarvoRegistryWriter::createPMCRegistrar(IVaskPMCRegistrar** registrar) {
    if (registrar == nullptr)
        return RC_NULL_POINTER;
    handOut(
        makeObject<TarvoPMCRegistrar>(Reference<IVaskRegistryWriter>::share(pair()), components_),
        registrar);
    return RC_OK;
}

Result TarvoRegistryWriter::revert() {
    keys_.revert();
    components_.clear();
    return RC_OK;
}

Result TarvoRegistryWriter::commit() {
    static std::mutex commits; // of both scopes
    const std::lock_guard lock(commits);

    const std::u16string path = registryFilePath(keys_.allUsers());
    if (path.empty() || !keys_.backUp(path))
        return RC_NO_DATA_FOLDER;
    if (const Result result = libraries_.files().copyStaged(path); result != RC_OK)
        return result;
    const auto carryOut = [this](TarvoRegistryKeyWriter& root) {
        components_.carryOut(root);
    };
    if (const Result result = keys_.mergeInto(path, carryOut); result != RC_OK)
        return result;
    if (const Result result = libraries_.files().removeRetired(path); result != RC_OK)
        return result;
    components_.clear();
    libraries_.clear();
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
