#include "catalogue/component_keys.h"

#include "catalogue/names.h"
#include "core/uuid.h"

namespace TARVO {

using platform::RegistryView;

namespace {

Reference<TarvoRegistryKeyWriter> makeKey(TarvoRegistryKeyWriter& above, std::u16string_view path) {
    Reference<TarvoRegistryKeyWriter> key;
    require(above.makeKey(path, key));
    return key;
}

void setText(TarvoRegistryKeyWriter& key, const char16_t* name, const std::u16string& text) {
    require(key.setStringValue(name, text.c_str()));
}

void setTextIfAny(TarvoRegistryKeyWriter& key, const char16_t* name, const std::u16string& text) {
    if (!text.empty())
        setText(key, name, text);
}

} // namespace

ComponentKeys::ComponentKeys(TarvoRegistryKeyWriter& root)
    : pmcs_(makeKey(root, kPMCsKey)), progIds_(makeKey(root, kProgIDsKey)),
      categories_(makeKey(root, kCategoriesKey)) {
    const auto names = categories_->keyNames();
    knownCategories_.assign(names.begin(), names.end());
}

// ---- removing ----

void ComponentKeys::remove(const UUID& uuid) {
    const UUIDText pmc(uuid);
    removeProgId(pmc.terminated(), kProgId);
    removeProgId(pmc.terminated(), kVersionIndependentProgId);
    pmcs_->deleteKey(pmc.terminated());
    removeFromCategories(pmc.terminated());
}

void ComponentKeys::removeProgId(const char16_t* pmc, const char16_t* value) {
    tarvo::String progId;
    if (pmcs_->getStringValue(value, pmc, progId.pair()) == RC_OK && !progId.text().empty())
        progIds_->deleteValue(nullptr, progId.text().c_str());
}

void ComponentKeys::removeFromCategories(const char16_t* pmc) {
    for (const std::u16string& category : knownCategories_)
        categories_->deleteValue(category.c_str(), pmc);
}

// ---- adding ----

void ComponentKeys::add(const PMCRegistrationRecord& record, ClassPublisher& publisher) {
    if (!record.isComplete())
        throw vask_link_error(RC_INCOMPLETE_REGISTRATION);
    const UUIDText name(record.uuid);
    addProgIds(record);
    removeFromCategories(name.terminated());

    const auto pmc = makeKey(*pmcs_, name.view());
    setText(*pmc, kName, record.name);
    setTextIfAny(*pmc, kDescription, record.description);
    setText(*pmc, kVaskVersion, record.vaskVersion);
    setTextIfAny(*pmc, kComponentVersion, record.componentVersion);
    setTextIfAny(*pmc, kVendorURL, record.vendorURL);
    setTextIfAny(*pmc, kHelpURL, record.helpURL);
    setTextIfAny(*pmc, kAbout, record.about);
    setTextIfAny(*pmc, kProgId, record.progId);
    setTextIfAny(*pmc, kVersionIndependentProgId, record.versionIndependentProgId);
    addCategories(record, *pmc);
    require(pmc->setIntegerValue(kFlags, static_cast<std::int32_t>(record.flags)));

    for (const auto& [location, text] : record.locations) {
        if (!isLocation(location) || isCOMLocation(location))
            throw vask_link_error(RC_INVALID_ARGUMENT);
        setText(*pmc, kLocationNames[static_cast<std::size_t>(location)], text);
        if (location == TARVO_LOCATION_INPROC32)
            publisher.publish(record, RegistryView::view32);
        if (location == TARVO_LOCATION_INPROC64)
            publisher.publish(record, RegistryView::view64);
    }
}

void ComponentKeys::addProgIds(const PMCRegistrationRecord& record) {
    const std::u16string& progId = record.progId;
    const std::u16string& versionIndependent = record.versionIndependentProgId;
    if (!progId.empty())
        require(progIds_->setUUIDValue(progId.c_str(), &record.uuid));
    if (!versionIndependent.empty() && versionIndependent != progId)
        require(progIds_->setUUIDValue(versionIndependent.c_str(), &record.uuid));
}

void ComponentKeys::addCategories(const PMCRegistrationRecord& record,
                                  TarvoRegistryKeyWriter& pmc) {
    const auto own = makeKey(pmc, kOwnCategoriesKey);
    for (const UUID& category : record.categories) {
        const UUIDText name(category);
        require(own->setEmptyValue(name.terminated()));
        const auto filed = makeKey(*categories_, name.view());
        require(filed->setEmptyValue(UUIDText(record.uuid).terminated()));
    }
}

} // namespace TARVO
