#include "platform/console.h"
#include "tarvo/text.hpp"
#include "tool/component.h"
#include "tool/failure.h"
#include "tool/output.h"
#include "tool/pmc.h"
#include "tool/scope.h"
#include "tool/text.h"
#include "tool/uuid_argument.h"

#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace tool {

namespace {

using nlohmann::ordered_json;

const char* kindOf(const Component& component) {
    return component.isCOMClass() ? "COM" : "native";
}

std::vector<Component> componentsOf(const Catalogue& catalogue, const std::string& category) {
    if (category.empty())
        return catalogue.all();
    return catalogue.inCategory(uuidArgument(category));
}

ordered_json asJson(const Component& component) {
    ordered_json locations = ordered_json::object();
    for (const ComponentLocation& location : component.locations)
        locations[std::string(kLocationNames[location.number])] = {
            {"text", location.text}, {"scope", scopeName(location.allUsers)}};
    return {{"uuid", toUtf8(component.uuid.string())},
            {"kind", kindOf(component)},
            {"name", component.name},
            {"description", component.description},
            {"vaskVersion", component.vaskVersion},
            {"componentVersion", component.componentVersion},
            {"vendorURL", component.vendorURL},
            {"helpURL", component.helpURL},
            {"about", component.about},
            {"progId", component.progId},
            {"versionIndependentProgId", component.versionIndependentProgId},
            {"flags", component.flags},
            {"categories", component.categories},
            {"locations", locations}};
}

// Names take what the other columns leave of the terminal, and no more than the longest needs.
void printTable(const std::vector<Component>& components) {
    constexpr std::size_t kOthers = 2 + 6 + 2 + 7 + 2 + tarvo::UUID::kTextLength;
    constexpr std::size_t kLeast = 12;
    const std::size_t room = std::max(TARVO::platform::consoleWidth(), kOthers + kLeast) - kOthers;
    std::size_t longest = kLeast;
    for (const Component& component : components)
        longest = std::max(longest, component.name.size());
    const std::size_t width = std::min(room, longest);
    printOut("{:<{}}  {:<6}  {:<7}  {}\n", "NAME", width, "KIND", "SCOPE", "UUID");
    for (const Component& component : components)
        printOut("{:<{}}  {:<6}  {:<7}  {}\n", fitted(printable(component.name), width), width,
                 kindOf(component), scopeName(component.allUsers()),
                 toUtf8(component.uuid.string()));
}

void printField(const char* title, const std::string& text) {
    if (!text.empty())
        printOut("  {:<19} {}\n", title, printable(text));
}

std::string describeLocation(const ComponentLocation& location) {
    switch (location.number) {
    case TARVO_LOCATION_COM32:
        return fmt::format("a class of the 32-bit view, {} scope", scopeName(location.allUsers));
    case TARVO_LOCATION_COM64:
        return fmt::format("a class of the 64-bit view, {} scope", scopeName(location.allUsers));
    default:
        return fmt::format("{}  ({} scope)", printable(location.text),
                           scopeName(location.allUsers));
    }
}

// A category with the name that a registered type library gives it, if one does.
std::string describeCategory(const Library& library, const std::string& category) {
    tarvo::Reference<IVaskRegistryKey> key;
    tarvo::String name;
    const std::u16string path = u"/types/categories/" + toUtf16(category);
    if (library.openKey(path, key.out()) == RC_OK)
        key->table->getStringValue(key->me, u"name", nullptr, name.pair());
    return name.text().empty() ? category : category + "  " + toUtf8(name.text());
}

void printComponent(const Library& library, const Component& component) {
    printOut("{}\n", printable(component.name));
    printField("identifier", toUtf8(component.uuid.string()));
    printField("kind", component.isCOMClass() ? "COM class" : "native component");
    printField("description", component.description);
    printField("about", component.about);
    printField("version", component.componentVersion);
    printField("interface standard", component.vaskVersion);
    printField("vendor", component.vendorURL);
    printField("help", component.helpURL);
    printField("ProgID", component.progId);
    printField("version-independent", component.versionIndependentProgId);
    printField("flags", component.flags == TARVO_PMC_APARTMENT_THREADED
                            ? "1: bound to one single-threaded apartment"
                            : std::to_string(component.flags));
    for (const std::string& category : component.categories)
        printField("category", describeCategory(library, category));
    for (const ComponentLocation& location : component.locations)
        printOut("  {:<19} {}\n", kLocationNames[location.number], describeLocation(location));
}

} // namespace

void listComponents(const std::string& category, bool json) {
    const Library library;
    const std::vector<Component> components = componentsOf(Catalogue(library), category);
    if (json) {
        ordered_json list = ordered_json::array();
        for (const Component& component : components)
            list.push_back(asJson(component));
        printOut("{}\n", list.dump(2));
    } else if (components.empty()) {
        printOut("(no components)\n");
    } else {
        printTable(components);
    }
}

void showComponent(const std::string& name, bool json) {
    const Library library;
    const Component component = describeComponent(*Catalogue(library).find(name));
    if (json)
        printOut("{}\n", asJson(component).dump(2));
    else
        printComponent(library, component);
}

} // namespace tool
