#include "catalogue/native_details.h"

namespace TARVO {

TarvoPMCRegistrationDetails::TarvoPMCRegistrationDetails(const UUID& uuid,
                                                         Reference<TarvoRegistryKey> key)
    : PMCRegistrationDetailsImpl(uuid), key_(std::move(key)) {}

Result TarvoPMCRegistrationDetails::getProgId(IVaskString* progId) {
    if (progId == nullptr)
        return RC_NULL_POINTER;
    if (read(kProgId, progId) != RC_OK)
        read(kVersionIndependentProgId, progId);
    return RC_OK;
}

// An item that can't be set is the caller's own affair.
Result TarvoPMCRegistrationDetails::getCategories(IVaskArray* categories) {
    if (categories == nullptr)
        return RC_NULL_POINTER;
    std::vector<std::u16string_view> names;
    if (const auto filed = key_->keyAt(kOwnCategoriesKey))
        names = filed->valueNames();
    std::erase_if(names, [](std::u16string_view name) { return !isUUIDText(name); });

    void* elements = nullptr;
    const Result result = categories->table->resize(
        categories->me, static_cast<std::uint32_t>(names.size()), &elements);
    if (result != RC_OK || elements == nullptr)
        return result;
    auto* const* strings = static_cast<IVaskString**>(elements);
    for (std::size_t i = 0; i < names.size(); ++i)
        if (strings[i] != nullptr)
            tarvo::setText(strings[i], names[i]);
    return RC_OK;
}

Result TarvoPMCRegistrationDetails::isInCategory(const UUID* category, std::uint32_t* result) {
    if (category == nullptr || result == nullptr)
        return RC_NULL_POINTER;
    std::uint32_t type = 0;
    const UUIDText name(*category);
    *result = key_->getValueType(name.terminated(), kOwnCategoriesKey, &type) == RC_OK;
    return RC_OK;
}

Result TarvoPMCRegistrationDetails::getLocations(IVaskArray* locations) {
    if (locations == nullptr)
        return RC_NULL_POINTER;
    std::vector<std::int32_t> numbers;
    for (std::size_t i = 0; i < kLocationNames.size(); ++i)
        if (key_->hasText(kLocationNames[i]))
            numbers.push_back(static_cast<std::int32_t>(i));
    giveLocations(numbers, locations);
    return RC_OK;
}

Result TarvoPMCRegistrationDetails::getLocation(std::uint32_t location, IVaskString* text) {
    if (text == nullptr)
        return RC_NULL_POINTER;
    return location < kLocationNames.size() ? read(kLocationNames[location], text) : RC_NOT_FOUND;
}

Result TarvoPMCRegistrationDetails::isLocationAllUsers(std::uint32_t location,
                                                       std::uint32_t* result) {
    if (result == nullptr)
        return RC_NULL_POINTER;
    return location < kLocationNames.size()
               ? key_->isAllUsersValue(kLocationNames[location], result)
               : RC_NOT_FOUND;
}

Result TarvoPMCRegistrationDetails::getFlags(std::uint32_t* flags) {
    if (flags == nullptr)
        return RC_NULL_POINTER;
    std::int32_t value = 0;
    const Result result = key_->getIntegerValue(kFlags, nullptr, &value);
    *flags = static_cast<std::uint32_t>(value);
    return result == RC_NOT_FOUND ? RC_OK : result;
}

} // namespace TARVO
