#include "catalogue/pmc_enumerator.h"

#include "catalogue/names.h"
#include "core/raw_collection.h"
#include "registry/scope.h"
#include "tarvo/uuid.h"

#include <algorithm>
#include <span>

namespace TARVO {

using platform::SystemKey;

constinit const IVaskPMCEnumeratorTable TarvoPMCEnumerator::kTable = {
    .addReference = slot<TarvoPMCEnumerator, &TarvoPMCEnumerator::addReference>,
    .release = slot<TarvoPMCEnumerator, &TarvoPMCEnumerator::release>,
    .getPMCByUUID = slot<TarvoPMCEnumerator, &TarvoPMCEnumerator::getPMCByUUID>,
    .getPMCByProgId = slot<TarvoPMCEnumerator, &TarvoPMCEnumerator::getPMCByProgId>,
    .getPMCsInCategories = slot<TarvoPMCEnumerator, &TarvoPMCEnumerator::getPMCsInCategories>,
    .getAllPMCs = slot<TarvoPMCEnumerator, &TarvoPMCEnumerator::getAllPMCs>,
};

TarvoPMCEnumerator::TarvoPMCEnumerator(Reference<TarvoRegistryKey> rootKey)
    : TarvoBaseImpl(&kTable), rootKey_(std::move(rootKey)) {}

namespace {

template <class T>
Result give(Reference<T> found, IVaskPMCRegistrationDetails** details) {
    *details = found.detach()->details();
    return RC_OK;
}

// Gives the components in the order of their identifiers.
Result give(std::vector<FoundPMC> found, ITarvoCollection** pmcs) {
    std::ranges::sort(found, {}, &FoundPMC::uuid);
    auto collection = makeObject<TarvoRawCollection>(u"PMCs");
    collection->reserve(found.size());
    for (FoundPMC& pmc : found)
        collection->append(Reference<IVaskInterface>::adopt(
            reinterpret_cast<IVaskInterface*>(pmc.details.detach())));
    *pmcs = collection.detach()->collection();
    return RC_OK;
}

// Calls `use` with each name that is an identifier and stands for a key below `parent`, with that
// identifier and that key.
template <class Use>
void forEachKey(const TarvoRegistryKey& parent, const std::vector<std::u16string_view>& names,
                Use&& use) {
    std::u16string terminated;
    for (const std::u16string_view name : names) {
        terminated = name;
        UUID uuid{};
        if (vaskUUIDFromString(terminated.c_str(), &uuid) != RC_OK)
            continue;
        if (Reference<TarvoRegistryKey> key = parent.keyAt(terminated.c_str()))
            use(uuid, std::move(key));
    }
}

} // namespace

// ---- one component ----

Reference<TarvoPMCRegistrationDetails> TarvoPMCEnumerator::findNativePMC(const UUID& uuid) const {
    const auto pmcs = rootKey_->keyAt(kPMCsKey);
    auto key = pmcs ? pmcs->keyAt(UUIDText(uuid).terminated()) : nullptr;
    return key ? makeObject<TarvoPMCRegistrationDetails>(uuid, std::move(key)) : nullptr;
}

Result TarvoPMCEnumerator::getPMCByUUID(const UUID* uuid, IVaskPMCRegistrationDetails** details) {
    if (uuid == nullptr || details == nullptr)
        return RC_NULL_POINTER;
    *details = nullptr;
    if (auto native = findNativePMC(*uuid))
        return give(std::move(native), details);
    if (auto com = findCOMClass(*uuid, classBuffer_))
        return give(std::move(com), details);
    return RC_NOT_FOUND;
}

Result TarvoPMCEnumerator::getPMCByProgId(const char16_t* progId,
                                          IVaskPMCRegistrationDetails** details) {
    if (progId == nullptr || details == nullptr)
        return RC_NULL_POINTER;
    if (*progId == u'\0')
        return RC_INVALID_ARGUMENT;
    *details = nullptr;

    Result failure = RC_NOT_FOUND;
    if (const auto progIds = rootKey_->keyAt(kProgIDsKey)) {
        UUID uuid{};
        const Result result = progIds->getUUIDValue(progId, nullptr, &uuid);
        if (result != RC_OK)
            failure = result;
        else if (auto native = findNativePMC(uuid))
            return give(std::move(native), details);
    }
    if (const auto uuid = classOfProgId(progId, classBuffer_))
        if (auto com = findCOMClass(*uuid, classBuffer_))
            return give(std::move(com), details);
    return failure;
}

// ---- all components ----

std::vector<FoundPMC> TarvoPMCEnumerator::findNativePMCs() const {
    std::vector<FoundPMC> found;
    const auto pmcs = rootKey_->keyAt(kPMCsKey);
    if (!pmcs)
        return found;
    const auto names = pmcs->keyNames();
    found.reserve(names.size());
    forEachKey(*pmcs, names, [&](const UUID& uuid, auto key) {
        found.push_back(foundPMC(*makeObject<TarvoPMCRegistrationDetails>(uuid, std::move(key))));
    });
    return found;
}

// The type registry decides which categories make a COM class a component.
UUIDSet TarvoPMCEnumerator::markingCategories() const {
    UUIDSet marking;
    if (const auto types = rootKey_->keyAt(kTypeCategoriesKey))
        forEachKey(*types, types->keyNames(), [&](const UUID& category, const auto& key) {
            tarvo::UUID library;
            tarvo::String name;
            if (key->getUUIDValue(u"library", nullptr, &library) == RC_OK &&
                library == categories::kMarkingLibrary &&
                key->getStringValue(u"name", nullptr, name.pair()) == RC_OK)
                marking.insert(category);
        });
    return marking;
}

Result TarvoPMCEnumerator::getAllPMCs(ITarvoCollection** pmcs) {
    if (pmcs == nullptr)
        return RC_NULL_POINTER;
    std::vector<FoundPMC> found = findNativePMCs();
    const auto isMarked = [marking = markingCategories()](const SystemKey& implemented) {
        platform::SubkeyNames names(implemented);
        while (const char16_t* name = names.next())
            if (const auto category = classIdentifier(name))
                if (marking.contains(*category))
                    return true;
        return false;
    };
    findCOMClasses(u"Implemented Categories", isMarked, classBuffer_, found);
    return give(std::move(found), pmcs);
}

// ---- by category ----

// Both sides of the filing must agree: the category's list and the component's own.
std::vector<FoundPMC> TarvoPMCEnumerator::findNativePMCsIn(const UUIDText& category) const {
    const auto categories = rootKey_->keyAt(kCategoriesKey);
    const auto filed = categories ? categories->keyAt(category.terminated()) : nullptr;
    const auto pmcs = filed ? rootKey_->keyAt(kPMCsKey) : nullptr;
    std::vector<FoundPMC> found;
    if (pmcs)
        forEachKey(*pmcs, filed->valueNames(), [&](const UUID& uuid, auto key) {
            std::uint32_t type = 0;
            if (key->getValueType(category.terminated(), kOwnCategoriesKey, &type) == RC_OK)
                found.push_back(
                    foundPMC(*makeObject<TarvoPMCRegistrationDetails>(uuid, std::move(key))));
        });
    return found;
}

const std::vector<FoundPMC>& TarvoPMCEnumerator::pmcsInCategory(const UUID& category) {
    const auto known = categoryCache_.find(category);
    if (known != categoryCache_.end())
        return known->second;
    const UUIDText text(category);
    std::vector<FoundPMC> found = findNativePMCsIn(text);
    findCOMClasses(
        std::u16string(u"Implemented Categories\\").append(text),
        [](const SystemKey&) { return true; }, classBuffer_, found);
    return categoryCache_.emplace(category, std::move(found)).first->second;
}

Result TarvoPMCEnumerator::getPMCsInCategories(const UUID* categories, std::uint32_t count,
                                               ITarvoCollection** pmcs) {
    if (categories == nullptr || pmcs == nullptr)
        return RC_NULL_POINTER;
    std::map<tarvo::UUID, FoundPMC> merged;
    for (const UUID& category : std::span(categories, count))
        for (const FoundPMC& pmc : pmcsInCategory(category))
            merged.insert_or_assign(pmc.uuid, pmc);
    std::vector<FoundPMC> found;
    found.reserve(merged.size());
    for (auto& [uuid, pmc] : merged)
        found.push_back(std::move(pmc));
    return give(std::move(found), pmcs);
}

// ---- making an enumerator ----

namespace {

Result makeEnumerator(IVaskPMCEnumerator** enumerator) {
    if (enumerator == nullptr)
        return RC_NULL_POINTER;
    *enumerator = nullptr;
    Reference<TarvoRegistry> user;
    Reference<TarvoRegistry> allUsers;
    if (const Result result = loadScopes(nullptr, user, allUsers); result != RC_OK)
        return result;
    handOut(makeObject<TarvoPMCEnumerator>(
                makeObject<TarvoRegistryKey>(std::move(user), std::move(allUsers))),
            enumerator);
    return RC_OK;
}

} // namespace

} // namespace TARVO

TarvoResult vaskGetPMCEnumerator(IVaskPMCEnumerator** enumerator) {
    return TARVO::guardedCall([&] { return TARVO::makeEnumerator(enumerator); });
}
