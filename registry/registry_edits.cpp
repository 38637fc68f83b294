#include "registry/registry_edits.h"

#include "registry/writer_names.h"

namespace TARVO {

RegistryEdits::RegistryEdits(bool allUsers, Reference<TarvoRegistry> originalRoot)
    : originalRoot_(std::move(originalRoot)), state_(std::make_shared<EditState>(allUsers)) {
    makeRootKeyWriter();
}

void RegistryEdits::makeRootKeyWriter() {
    rootKeyWriter_ = makeObject<TarvoRegistryKeyWriter>(state_, originalRoot_, nullptr);
}

Reference<TarvoRegistry> RegistryEdits::shownRoot() const {
    return workingRoot_ ? workingRoot_ : rootKeyWriter_->node();
}

// A null path is the root where a path isn't required.
Result RegistryEdits::getKeyWriter(const char16_t* path, IVaskRegistryKeyWriter** key) {
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

Result RegistryEdits::getKey(const char16_t* path, IVaskRegistryKey** key) {
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

Result RegistryEdits::deleteKey(const char16_t* path) {
    if (path == nullptr)
        return RC_NULL_POINTER;
    std::u16string_view below = path;
    if (const Result result = takeAbsolutePath(below); result != RC_OK)
        return result;
    return below.empty() ? Result{RC_ACCESS_DENIED} : rootKeyWriter_->deleteKey(below.data());
}

Result RegistryEdits::deleteValue(const char16_t* path, const char16_t* name) {
    if (path == nullptr)
        return RC_NULL_POINTER;
    std::u16string_view below = path;
    if (const Result result = takeAbsolutePath(below); result != RC_OK)
        return result;
    return rootKeyWriter_->deleteValue(below.data(), name);
}

void RegistryEdits::revert() {
    makeRootKeyWriter();
    workingRoot_ = nullptr;
}

} // namespace TARVO
