#include "types/library_details.h"

#include "catalogue/names.h"

#include <utility>

namespace TARVO {

namespace {

// What a caller's string makes of the text is its own affair.
Result give(IVaskString* target, std::u16string_view text) {
    if (target == nullptr)
        return RC_NULL_POINTER;
    tarvo::setText(target, text);
    return RC_OK;
}

} // namespace

constinit const IVaskLibraryDetailsTable TarvoLibraryDetails::kTable = {
    .addReference = slot<TarvoLibraryDetails, &TarvoLibraryDetails::addReference>,
    .release = slot<TarvoLibraryDetails, &TarvoLibraryDetails::release>,
    .queryInterface = slot<TarvoLibraryDetails, &TarvoLibraryDetails::queryInterface>,
    .getLastError = slot<TarvoLibraryDetails, &TarvoLibraryDetails::getLastError>,
    .getName = slot<TarvoLibraryDetails, &TarvoLibraryDetails::getName>,
    .getUUID = slot<TarvoLibraryDetails, &TarvoLibraryDetails::getUUID>,
    .getVersion = slot<TarvoLibraryDetails, &TarvoLibraryDetails::getVersion>,
    .getDefinitionPath = slot<TarvoLibraryDetails, &TarvoLibraryDetails::getDefinitionPath>,
    .getLocation = slot<TarvoLibraryDetails, &TarvoLibraryDetails::getLocation>,
};

TarvoLibraryDetails::TarvoLibraryDetails(const UUID& uuid, std::u16string_view name,
                                         std::u16string_view version, std::u16string definitionPath,
                                         const TarvoRegistry& key)
    : ReadOnlyNamedVaskBaseImpl(name, std::u16string(name) + u" type library"), uuid_(uuid),
      name_(name), version_(version), definitionPath_(std::move(definitionPath)) {
    for (std::size_t i = 0; i < kLocationNames.size(); ++i)
        if (const NamedValue* value = findStringValue(key, kLocationNames[i]))
            locations_.emplace(static_cast<std::int32_t>(i), value->text());
    enterInterface(kIVaskLibraryDetailsId, &details_);
}

Result TarvoLibraryDetails::getName(IVaskString* name) {
    return give(name, name_);
}

Result TarvoLibraryDetails::getUUID(UUID* uuid) {
    if (uuid == nullptr)
        return RC_NULL_POINTER;
    *uuid = uuid_;
    return RC_OK;
}

Result TarvoLibraryDetails::getVersion(IVaskString* version) {
    return give(version, version_);
}

Result TarvoLibraryDetails::getDefinitionPath(IVaskString* path) {
    return give(path, definitionPath_);
}

Result TarvoLibraryDetails::getLocation(std::int32_t location, IVaskString* text) {
    if (text == nullptr)
        return RC_NULL_POINTER;
    const auto found = locations_.find(location);
    return found == locations_.end() ? RC_NOT_AVAILABLE : give(text, found->second);
}

const NamedValue* findStringValue(const TarvoRegistry& key, std::u16string_view name) {
    const NamedValue* value = key.values.find(name);
    return value != nullptr && value->type() == RegistryValueType::string ? value : nullptr;
}

} // namespace TARVO
