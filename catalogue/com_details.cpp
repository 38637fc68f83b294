#include "catalogue/com_details.h"

#include "catalogue/names.h"
#include "core/lower_case.h"
#include "platform/text.h"
#include "registry/registry_key.h"

#include <algorithm>

namespace TARVO {

using platform::RegistryView;
using platform::SystemKey;

COMPMCRegistrationDetails::COMPMCRegistrationDetails(const UUID& uuid, const SystemKey& key,
                                                     ValueBuffer& buffer)
    : PMCRegistrationDetailsImpl(uuid) {
    readDescription(key, buffer);
    readNames(key, buffer);
    readThreadingModel(key, buffer);
    readCategories(key);
}

void COMPMCRegistrationDetails::addView(RegistryView view) noexcept {
    (view == RegistryView::view32 ? inView32_ : inView64_) = true;
}

// ---- reading the class ----

// COM classes of the first versions follow what the standard's version 1.2 says of components.
void COMPMCRegistrationDetails::readDescription(const SystemKey& key, ValueBuffer& buffer) {
    const SystemKey texts = key.open(u"VaskDescription");
    readText(texts, u"Name", buffer, name_);
    readText(texts, u"Description", buffer, description_);
    readText(texts, u"VaskVersion", buffer, vaskVersion_);
    readText(texts, u"ComponentVersion", buffer, componentVersion_);
    readText(texts, u"About", buffer, about_);
    readText(texts, u"VendorURL", buffer, vendorURL_);
    readText(texts, u"HelpURL", buffer, helpURL_);
    if (vaskVersion_ == u"1.0" || vaskVersion_ == u"1.1")
        vaskVersion_ = u"1.2";
}

void COMPMCRegistrationDetails::readNames(const SystemKey& key, ValueBuffer& buffer) {
    readText(key.open(u"ProgID"), nullptr, buffer, progId_);
    readText(key.open(u"VersionIndependentProgID"), nullptr, buffer, versionIndependentProgId_);
    if (name_.empty())
        readText(key, nullptr, buffer, name_);
    if (name_.empty())
        name_ = classText(uuid()).data();
}

void COMPMCRegistrationDetails::readThreadingModel(const SystemKey& key, ValueBuffer& buffer) {
    std::u16string model;
    readText(key.open(u"InprocServer32"), u"ThreadingModel", buffer, model);
    model = lowerCase(model);
    if (model == u"apartment")
        flags_ |= TARVO_PMC_APARTMENT_THREADED;
    else if (model == u"single")
        usable_ = false;
}

namespace {

bool isText(const char16_t* name, const tarvo::UUID& category) {
    return platform::equalWithoutCase(name, category.text().data());
}

} // namespace

void COMPMCRegistrationDetails::readCategories(const SystemKey& key) {
    const SystemKey implemented = key.open(u"Implemented Categories");
    if (!implemented)
        return;
    bool gated = false;
    bool enabled = false;
    platform::SubkeyNames names(implemented);
    while (const char16_t* name = names.next()) {
        if (isText(name, categories::kComponent))
            continue;
        if (isText(name, categories::kGatedA) || isText(name, categories::kGatedB))
            gated = true;
        else if (isText(name, categories::kEnabling))
            enabled = true;
        else if (const auto category = classIdentifier(name))
            categories_.emplace_back(*category);
    }
    if (gated && !enabled)
        usable_ = false;
    categories_.push_back(categories::kTarvoComponent);
    std::ranges::sort(categories_);
    categories_.erase(std::unique(categories_.begin(), categories_.end()), categories_.end());
}

// ---- answering ----

Result COMPMCRegistrationDetails::getProgId(IVaskString* progId) {
    const Result result = give(progId_, progId);
    return result == RC_OK || progId == nullptr ? result : give(versionIndependentProgId_, progId);
}

Result COMPMCRegistrationDetails::getCategories(IVaskArray* categories) {
    if (categories == nullptr)
        return RC_NULL_POINTER;
    std::vector<std::u16string> texts;
    for (const tarvo::UUID& category : categories_)
        texts.push_back(category.string());
    return giveNames({texts.begin(), texts.end()}, categories);
}

Result COMPMCRegistrationDetails::isInCategory(const UUID* category, std::uint32_t* result) {
    if (category == nullptr || result == nullptr)
        return RC_NULL_POINTER;
    *result = std::ranges::binary_search(categories_, tarvo::UUID(*category));
    return RC_OK;
}

Result COMPMCRegistrationDetails::getLocations(IVaskArray* locations) {
    if (locations == nullptr)
        return RC_NULL_POINTER;
    std::vector<std::int32_t> numbers;
    if (inView32_)
        numbers.push_back(TARVO_LOCATION_COM32);
    if (inView64_)
        numbers.push_back(TARVO_LOCATION_COM64);
    giveLocations(numbers, locations);
    return RC_OK;
}

Result COMPMCRegistrationDetails::getLocation(std::uint32_t location, IVaskString* text) {
    if (text == nullptr)
        return RC_NULL_POINTER;
    const bool isThere = (location == TARVO_LOCATION_COM32 && inView32_) ||
                         (location == TARVO_LOCATION_COM64 && inView64_);
    return isThere ? give(UUIDText(uuid()).view(), text) : RC_NOT_FOUND;
}

Result COMPMCRegistrationDetails::isLocationAllUsers(std::uint32_t location,
                                                     std::uint32_t* result) {
    if (result == nullptr)
        return RC_NULL_POINTER;
    const RegistryView view = location == TARVO_LOCATION_COM32   ? RegistryView::view32
                              : location == TARVO_LOCATION_COM64 ? RegistryView::view64
                                                                 : RegistryView::either;
    std::u16string path = u"Software\\Classes\\CLSID\\";
    path.append(classText(uuid()).data());
    *result = !SystemKey::open(platform::RegistryRoot::currentUser, path.c_str(), view);
    return RC_OK;
}

Result COMPMCRegistrationDetails::getFlags(std::uint32_t* flags) {
    if (flags == nullptr)
        return RC_NULL_POINTER;
    *flags = flags_;
    return RC_OK;
}

} // namespace TARVO
