#include "catalogue/com_details.h"

#include "catalogue/names.h"
#include "core/lower_case.h"
#include "registry/registry_key.h"

#include <algorithm>

namespace TARVO {

using platform::RegistryView;
using platform::SystemKey;

COMPMCRegistrationDetails::COMPMCRegistrationDetails(const UUID& uuid, const SystemKey& key,
                                                     ClassBuffer& buffer)
    : PMCRegistrationDetailsImpl(uuid) {
    buffer.texts.clear();
    buffer.categories.clear();
    readDescription(key, buffer);
    readNames(key, buffer);
    readThreadingModel(key, buffer);
    readCategories(key, buffer);
    texts_ = buffer.texts;
    categories_ = buffer.categories;
}

void COMPMCRegistrationDetails::addView(RegistryView view) noexcept {
    (view == RegistryView::view32 ? inView32_ : inView64_) = true;
}

// ---- reading the class ----

COMPMCRegistrationDetails::Text
COMPMCRegistrationDetails::keep(std::optional<std::u16string_view> read, ClassBuffer& buffer) {
    if (!read)
        return {};
    const Text kept{buffer.texts.size(), read->size()};
    buffer.texts.append(*read).push_back(u'\0'); // callers may look for the end of what they get
    return kept;
}

// COM classes of the first versions follow what the standard's version 1.2 says of components.
void COMPMCRegistrationDetails::readDescription(const SystemKey& key, ClassBuffer& buffer) {
    const SystemKey texts = key.open(u"VaskDescription");
    const auto read = [&](const char16_t* name) {
        return keep(readText(texts, name, buffer.value), buffer);
    };
    name_ = read(u"Name");
    description_ = read(u"Description");
    vaskVersion_ = read(u"VaskVersion");
    componentVersion_ = read(u"ComponentVersion");
    about_ = read(u"About");
    vendorURL_ = read(u"VendorURL");
    helpURL_ = read(u"HelpURL");
    const std::u16string_view version = vaskVersion_.in(buffer.texts);
    if (version == u"1.0" || version == u"1.1")
        vaskVersion_ = keep(u"1.2", buffer);
}

void COMPMCRegistrationDetails::readNames(const SystemKey& key, ClassBuffer& buffer) {
    const auto read = [&](const SystemKey& named) {
        return keep(readText(named, nullptr, buffer.value), buffer);
    };
    progId_ = read(key.open(u"ProgID"));
    versionIndependentProgId_ = read(key.open(u"VersionIndependentProgID"));
    if (name_.size == 0)
        name_ = read(key);
    if (name_.size == 0)
        name_ = keep(classText(uuid()).data(), buffer);
}

void COMPMCRegistrationDetails::readThreadingModel(const SystemKey& key, ClassBuffer& buffer) {
    const std::u16string model = lowerCase(
        readText(key.open(u"InprocServer32"), u"ThreadingModel", buffer.value).value_or(u""));
    if (model == u"apartment")
        flags_ |= TARVO_PMC_APARTMENT_THREADED;
    else if (model == u"single")
        usable_ = false;
}

void COMPMCRegistrationDetails::readCategories(const SystemKey& key, ClassBuffer& buffer) {
    const SystemKey implemented = key.open(u"Implemented Categories");
    if (!implemented)
        return;
    bool gated = false;
    bool enabled = false;
    std::vector<tarvo::UUID>& found = buffer.categories;
    platform::SubkeyNames names(implemented);
    while (const char16_t* name = names.next()) {
        const auto category = classIdentifier(name);
        if (!category || categories::kComponent == *category)
            continue;
        if (categories::kGatedA == *category || categories::kGatedB == *category)
            gated = true;
        else if (categories::kEnabling == *category)
            enabled = true;
        else
            found.emplace_back(*category);
    }
    if (gated && !enabled)
        usable_ = false;
    found.push_back(categories::kTarvoComponent);
    std::ranges::sort(found);
    found.erase(std::unique(found.begin(), found.end()), found.end());
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
