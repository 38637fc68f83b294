#include "tool/component.h"

#include "tarvo/array.hpp"
#include "tarvo/collection.h"
#include "tarvo/component.hpp"
#include "tarvo/text.hpp"
#include "tool/failure.h"
#include "tool/output.h"
#include "tool/text.h"

#include <algorithm>

namespace tool {

namespace {

using Table = IVaskPMCRegistrationDetailsTable;

// What a registration lacks leaves the text empty, so the result doesn't matter.
std::string textOf(IVaskPMCRegistrationDetails& details, TarvoResult (*slot)(void*, IVaskString*)) {
    tarvo::String text;
    slot(details.me, text.pair());
    return toUtf8(text.text());
}

std::vector<std::string> categoriesOf(IVaskPMCRegistrationDetails& details) {
    tarvo::StringArray array;
    require(details.table->getCategories(details.me, array.pair()), "cannot read the categories");
    std::vector<std::string> categories;
    for (const tarvo::String& category : array.strings())
        categories.push_back(toUtf8(category.text()));
    return categories;
}

std::vector<ComponentLocation> locationsOf(IVaskPMCRegistrationDetails& details) {
    tarvo::ScalarArray<std::int32_t> numbers;
    require(details.table->getLocations(details.me, numbers.pair()), "cannot read the locations");
    std::vector<ComponentLocation> locations;
    for (const std::int32_t number : numbers.elements()) {
        ComponentLocation location;
        location.number = static_cast<std::uint32_t>(number);
        tarvo::String text;
        require(details.table->getLocation(details.me, location.number, text.pair()),
                "cannot read a location");
        location.text = toUtf8(text.text());
        std::uint32_t allUsers = 0;
        require(details.table->isLocationAllUsers(details.me, location.number, &allUsers),
                "cannot read a location");
        location.allUsers = allUsers != 0;
        locations.push_back(std::move(location));
    }
    return locations;
}

std::vector<Component> componentsIn(ITarvoCollection& collection) {
    std::uint32_t count = 0;
    require(collection.table->getCount(collection.me, &count), "cannot list the components");
    std::vector<Component> components;
    for (std::uint32_t i = 0; i < count; ++i) {
        tarvo::Reference<IVaskInterface> item;
        require(collection.table->getItem(collection.me, static_cast<std::int32_t>(i), item.out()),
                "cannot list the components");
        const auto details =
            tarvo::query<IVaskPMCRegistrationDetails>(item.get(), kIVaskPMCRegistrationDetailsId);
        if (!details)
            throw Failure("cannot describe a component", RC_NO_INTERFACE);
        components.push_back(describeComponent(*details));
    }
    return components;
}

} // namespace

bool Component::isCOMClass() const {
    return std::ranges::any_of(locations, [](const ComponentLocation& location) {
        return location.number == TARVO_LOCATION_COM32 || location.number == TARVO_LOCATION_COM64;
    });
}

Component describeComponent(IVaskPMCRegistrationDetails& details) {
    const Table& table = *details.table;
    Component component;
    require(table.getUUID(details.me, &component.uuid), "cannot read a component");
    component.name = textOf(details, table.getName);
    component.description = textOf(details, table.getDescription);
    component.vaskVersion = textOf(details, table.getVaskVersion);
    component.componentVersion = textOf(details, table.getComponentVersion);
    component.vendorURL = textOf(details, table.getVendorURL);
    component.helpURL = textOf(details, table.getHelpURL);
    component.about = textOf(details, table.getAbout);
    component.progId = textOf(details, table.getProgId);
    component.versionIndependentProgId = textOf(details, table.getVersionIndependentProgId);
    component.categories = categoriesOf(details);
    component.locations = locationsOf(details);
    if (table.getFlags(details.me, &component.flags) != RC_OK)
        component.flags = 0;
    return component;
}

Catalogue::Catalogue(const Library& library) {
    Progress::say("Looking for components");
    require(library.openEnumerator(enumerator_.out()), "cannot open the catalogue");
}

std::vector<Component> Catalogue::all() const {
    tarvo::Reference<ITarvoCollection> found;
    require(enumerator_->table->getAllPMCs(enumerator_->me, found.out()),
            "cannot list the components");
    return componentsIn(*found);
}

std::vector<Component> Catalogue::inCategory(const tarvo::UUID& category) const {
    tarvo::Reference<ITarvoCollection> found;
    require(enumerator_->table->getPMCsInCategories(enumerator_->me, &category, 1, found.out()),
            "cannot list the components");
    return componentsIn(*found);
}

Details Catalogue::find(const std::string& component) const {
    const std::u16string text = toUtf16(component);
    const auto uuid = tarvo::UUID::parse(text);
    Details details;
    require(uuid ? enumerator_->table->getPMCByUUID(enumerator_->me, &*uuid, details.out())
                 : enumerator_->table->getPMCByProgId(enumerator_->me, text.c_str(), details.out()),
            "cannot find the component " + component);
    return details;
}

} // namespace tool
