#include "catalogue/com_classes.h"

namespace TARVO {

using platform::RegistryRoot;
using platform::RegistryView;
using platform::SubkeyNames;
using platform::SystemKey;

namespace {

// Null if the class can't be used.
Reference<COMPMCRegistrationDetails> readClass(const UUID& uuid, const SystemKey& key,
                                               ValueBuffer& buffer) {
    auto details = makeObject<COMPMCRegistrationDetails>(uuid, key, buffer);
    return details->isUsable() ? details : nullptr;
}

} // namespace

std::optional<UUID> classOfProgId(const char16_t* progId, ValueBuffer& buffer) {
    for (const RegistryView view : kRegistryViews) {
        const SystemKey key = SystemKey::open(RegistryRoot::classesRoot, progId, view);
        std::u16string text;
        readText(key.open(u"CLSID", view), nullptr, buffer, text);
        if (const auto uuid = text.empty() ? std::nullopt : classIdentifier(text.c_str()))
            return uuid;
    }
    return std::nullopt;
}

Reference<COMPMCRegistrationDetails> findCOMClass(const UUID& uuid, ValueBuffer& buffer) {
    std::u16string path = u"CLSID\\";
    path.append(classText(uuid).data());
    Reference<COMPMCRegistrationDetails> details;
    for (const RegistryView view : kRegistryViews) {
        const SystemKey key = SystemKey::open(RegistryRoot::classesRoot, path.c_str(), view);
        if (!key)
            continue;
        if (!details)
            details = readClass(uuid, key, buffer);
        if (details)
            details->addView(view);
    }
    return details;
}

void findCOMClasses(const IsWanted& isWanted, const UUIDSet& hidden, ValueBuffer& buffer,
                    std::vector<FoundPMC>& found) {
    std::unordered_map<tarvo::UUID, Reference<COMPMCRegistrationDetails>, UUIDHash> seen;
    const auto take = [&](const SystemKey& classes, const char16_t* name, RegistryView view) {
        const auto uuid = classIdentifier(name);
        if (!uuid || !isWanted(classes, name, view) || hidden.contains(*uuid))
            return;
        if (const auto known = seen.find(*uuid); known != seen.end())
            return known->second->addView(view);
        const SystemKey key = classes.open(name, view);
        const auto details = key ? readClass(*uuid, key, buffer) : nullptr;
        if (!details)
            return;
        details->addView(view);
        seen.emplace(*uuid, details);
        found.push_back(foundPMC(*details));
    };
    for (const RegistryView view : kRegistryViews) {
        const SystemKey classes = SystemKey::open(RegistryRoot::classesRoot, u"CLSID", view);
        SubkeyNames names(classes);
        while (const char16_t* name = names.next())
            take(classes, name, view);
    }
}

bool implementsAnyOf(const UUIDSet& wanted, const SystemKey& classes, const char16_t* name,
                     RegistryView view) {
    const SystemKey implemented =
        classes.open(std::u16string(name).append(u"\\Implemented Categories").c_str(), view);
    SubkeyNames names(implemented);
    while (const char16_t* category = names.next())
        if (const auto uuid = classIdentifier(category); uuid && wanted.contains(*uuid))
            return true;
    return false;
}

} // namespace TARVO
